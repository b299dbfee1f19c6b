#pragma once

#include "Options.h"
#include "Printing/ExportWork.h"

#include <expected>
#include <filesystem>
#include <optional>
#include <set>
#include <span>
#include <string>

namespace quorvel::CommandLine {

/// The names of the files that a run of the program has put into its output folder and that are still its own; nothing
/// before it has put the folder there.
using OwnFiles = std::optional<std::set<std::string>>;

/// A folder that appears whole or not at all: it is filled under a hidden name beside its place and renamed at the end.
/// Until `finish`, and when that fails, what stands in its place is untouched; what was made is removed with this
/// object or by a signal. Failures are sentences.
class OutputFolder {
public:
    /// `target` may be missing or empty; a folder that isn't empty is replaced whole when `existing` says so, unless it
    /// holds one of `needed`, the current folder or the user's home, which must never be swept away by a mistyped name.
    static std::expected<OutputFolder, std::string> make(const std::filesystem::path& target, Existing existing,
                                                         std::span<const std::filesystem::path> needed);

    /// For a folder that this run has made: what is in it and isn't the run's own is left alone. Each file is replaced
    /// whole, in the moment after all are made. Where the folder has gone, it is made again.
    static std::expected<OutputFolder, std::string> refresh(const std::filesystem::path& target);

    OutputFolder(OutputFolder&& other) noexcept;
    OutputFolder& operator=(OutputFolder&&) = delete;
    ~OutputFolder();

    /// Where to put files meanwhile.
    const std::filesystem::path& path() const { return folder_; }

    /// Writes files into it.
    ExportWork::Sink sink() const;

    /// Puts the folder in its place, or its files into those of `own`, which then says what there is.
    std::expected<void, std::string> finish(OwnFiles& own);

private:
    enum class Manner { appear, refresh };

    OutputFolder() = default;

    static std::expected<OutputFolder, std::string> begin(const std::filesystem::path& target);
    std::expected<void, std::string> makeHidden();
    std::expected<void, std::string> putInPlace(OwnFiles& own);
    std::expected<void, std::string> putFilesInto(std::set<std::string>& own);
    std::expected<void, std::string> removeHidden();

    std::filesystem::path target_;  ///< absolute, links resolved
    std::filesystem::path hidden_;  ///< beside the target; empty once there is nothing to remove
    std::filesystem::path folder_;  ///< within it
    Existing existing_ = Existing::keep;
    Manner manner_ = Manner::appear;
};

}  // namespace quorvel::CommandLine
