#pragma once

#include "Options.h"
#include "Printing/ExportWork.h"

#include <expected>
#include <filesystem>
#include <span>
#include <string>

namespace quorvel::CommandLine {

/// A folder that appears whole or not at all: it is filled under a hidden name beside its place and renamed at the end.
/// Until `finish`, and when that fails, what stands in its place is untouched; what was made is removed with this
/// object or by a signal. Failures are sentences.
class OutputFolder {
public:
    /// `target` may be missing or empty; a folder that isn't empty is replaced whole when `existing` says so, unless it
    /// holds one of `needed`, the current folder or the user's home, which must never be swept away by a mistyped name.
    static std::expected<OutputFolder, std::string> make(const std::filesystem::path& target, Existing existing,
                                                         std::span<const std::filesystem::path> needed);
    OutputFolder(OutputFolder&& other) noexcept;
    OutputFolder& operator=(OutputFolder&&) = delete;
    ~OutputFolder();

    /// Where to put files meanwhile.
    const std::filesystem::path& path() const { return folder_; }

    /// Writes files into it.
    ExportWork::Sink sink() const;

    /// Puts the folder in its place.
    std::expected<void, std::string> finish();

private:
    OutputFolder() = default;

    std::filesystem::path target_;  ///< absolute, links resolved
    std::filesystem::path hidden_;  ///< beside the target; empty once there is nothing to remove
    std::filesystem::path folder_;  ///< within it
    Existing existing_ = Existing::keep;
};

}  // namespace quorvel::CommandLine
