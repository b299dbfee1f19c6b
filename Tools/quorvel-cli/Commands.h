#pragma once

#include "Options.h"

#include <expected>
#include <string>

/// The commands, one file for each. Nothing is printed here.
namespace quorvel::CommandLine {

/// What goes to standard output, or the sentence of a failure.
using Result = std::expected<std::string, std::string>;

Result sampleCommand(const Options& options);
Result sheetsCommand(const Options& options);
Result imagesCommand(const Options& options);
Result ttsCommand(const Options& options);
Result calibrationCommand(const Options& options);
Result tableCommand(const Options& options);
Result worksheetsCommand(const Options& options);
Result cardsCommand(const Options& options);

}  // namespace quorvel::CommandLine
