#pragma once

#include "Printing/ExportWork.h"

#include <expected>
#include <filesystem>
#include <span>
#include <string>

namespace quorvel::CommandLine {

/// Whether a file may be made at `target`, asked before the work begins: its folder is there, nothing but a file stands
/// in its place, and that file is none of `needed`, which the command reads. Fails with a sentence.
std::expected<void, std::string> checkOutputFile(const std::filesystem::path& target,
                                                 std::span<const std::filesystem::path> needed);

/// Writes every file to `target`, whatever its name.
ExportWork::Sink fileSink(std::filesystem::path target);

}  // namespace quorvel::CommandLine
