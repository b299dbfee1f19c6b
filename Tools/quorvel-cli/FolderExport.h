#pragma once

#include "Commands.h"
#include "DeckInput.h"
#include "Printing/ExportWork.h"

#include <functional>
#include <string>

namespace quorvel::CommandLine {

/// What tells one export into a folder from another.
struct FolderExport {
    std::string busyText;  ///< shown while it works
    std::function<std::expected<ExportWork::Outcome, FileFailure>(const DeckInput&, const ExportWork::Sink&,
                                                                  const ExportWork::Progress&)>
        work;
};

/// Reads the deck, fills a new folder, puts it in its place, or its files into those of `own`, and says what was saved.
Result runFolderExport(const Options& options, const DeckSource& source, OwnFiles& own, const FolderExport& job);

}  // namespace quorvel::CommandLine
