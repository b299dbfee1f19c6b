#include "FolderExport.h"

#include "OutputFolder.h"
#include "ProgressBar.h"
#include "Wording.h"

#include <vector>

namespace quorvel::CommandLine {
namespace {

/// All that the export reads, each picture included.
std::vector<std::filesystem::path> allFilesRead(const Options& options, const DeckInput& input) {
    auto files = filesRead(options);
    if (options.existing == Existing::replace)
        for (const std::string& name : input.pictureNames())
            if (auto file = input.renderer.assets->resolve(name)) files.push_back(std::move(*file));
    return files;
}

}  // namespace

Result runFolderExport(const Options& options, const FolderExport& job) {
    const auto input = DeckInput::readForExport(options);
    if (!input) return std::unexpected(input.error());
    auto folder = OutputFolder::make(options.output, options.existing, allFilesRead(options, *input));
    if (!folder) return std::unexpected(folder.error());

    std::expected<ExportWork::Outcome, FileFailure> outcome;
    {
        ProgressBar bar(job.busyText, options.talk);
        outcome = job.work(*input, folder->sink(), bar.function());
    }
    if (!outcome) return std::unexpected(outcome.error().description());
    if (const auto finished = folder->finish(); !finished) return std::unexpected(finished.error());
    return "Saved " + std::to_string(outcome->count) + " " + std::string(job.whatIsSaved) + " to " +
           quotedName(options.output) + ".\n";
}

}  // namespace quorvel::CommandLine
