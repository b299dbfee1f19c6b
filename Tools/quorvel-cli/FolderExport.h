#pragma once

#include "Commands.h"
#include "DeckInput.h"
#include "Printing/ExportWork.h"

#include <functional>
#include <string>
#include <string_view>

namespace quorvel::CommandLine {

/// What tells one export into a folder from another.
struct FolderExport {
    std::string busyText;          ///< shown while it works
    std::string_view whatIsSaved;  ///< "card images", for the notice
    std::function<std::expected<ExportWork::Outcome, FileFailure>(const DeckInput&, const ExportWork::Sink&,
                                                                  const ExportWork::Progress&)>
        work;
};

/// Reads the deck, fills a new folder, puts it in its place and says what was saved.
Result runFolderExport(const Options& options, const FolderExport& job);

}  // namespace quorvel::CommandLine
