#include "FolderExport.h"

#include "OutputFolder.h"
#include "ProgressBar.h"

#include <vector>

namespace quorvel::CommandLine {
namespace {

/// All that must not be swept away, each picture included.
std::vector<std::filesystem::path> allNeeded(const Options& options, const DeckSource& source, const DeckInput& input) {
    auto files = source.needed;
    if (options.existing == Existing::replace)
        for (const std::string& name : input.pictureNames())
            if (auto file = input.renderer.assets->resolve(name)) files.push_back(std::move(*file));
    return files;
}

}  // namespace

Result runFolderExport(const Options& options, const DeckSource& source, OwnFiles& own, const FolderExport& job) {
    const auto input = DeckInput::readForExport(options, source);
    if (!input) return std::unexpected(input.error());
    auto folder = own ? OutputFolder::refresh(options.output)
                      : OutputFolder::make(options.output, options.existing, allNeeded(options, source, *input));
    if (!folder) return std::unexpected(folder.error());

    std::expected<ExportWork::Outcome, FileFailure> outcome;
    {
        ProgressBar bar(job.busyText, options.talk);
        outcome = job.work(*input, folder->sink(), bar.function());
    }
    if (!outcome) return std::unexpected(outcome.error().description());
    if (const auto finished = folder->finish(own); !finished) return std::unexpected(finished.error());
    return ExportWork::notice(*outcome, options.output);
}

}  // namespace quorvel::CommandLine
