#pragma once

#include "DeckSource.h"
#include "Options.h"
#include "OutputFolder.h"

#include <expected>
#include <string>

/// The commands, one file for each. What goes to standard output is left to the caller.
namespace quorvel::CommandLine {

/// What goes to standard output, or the sentence of a failure.
using Result = std::expected<std::string, std::string>;

Result sampleCommand(const Options& options);
Result calibrationCommand(const Options& options);
Result tableCommand(const Options& options);
Result worksheetsCommand(const Options& options);
Result cardsCommand(const Options& options);
Result decksCommand(const Options& options);

/// An export of a deck to options.output; gives the notice that says what was saved. `own` tells what the same run has
/// put there before, and is brought up to date.
using Export = Result (*)(const Options& options, const DeckSource& source, OwnFiles& own);

Result sheetsExport(const Options& options, const DeckSource& source, OwnFiles& own);
Result imagesExport(const Options& options, const DeckSource& source, OwnFiles& own);
Result ttsExport(const Options& options, const DeckSource& source, OwnFiles& own);

/// Finds the deck and exports it, once or after each save.
Result exportCommand(const Options& options, Export make);

}  // namespace quorvel::CommandLine
