#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quorvel {

/// Tells whether a spreadsheet has changed: the modification time in seconds since 1970 as a decimal number with all
/// nine digits of its nanoseconds, "-", the size in bytes: "1779000000.123456789-2048". Links are followed. Nothing
/// when the attributes can't be read, because nothing is there or the way there is barred; the contents need not be
/// readable. Any thread.
std::optional<std::string> fileStamp(const std::filesystem::path& url);

}  // namespace quorvel
