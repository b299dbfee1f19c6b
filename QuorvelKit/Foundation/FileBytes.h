#pragma once

#include "Foundation/FileFailure.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <limits>
#include <string>
#include <string_view>

namespace quorvel::FileBytes {

/// The whole of a regular file (symbolic links are followed). A folder, FIFO, socket or device fails at once with
/// EISDIR or EINVAL and never blocks; a file larger than `limit` fails with EFBIG before anything is allocated.
std::expected<std::string, FileFailure> read(const std::filesystem::path& path,
                                             std::uint64_t limit = std::numeric_limits<std::uint64_t>::max());

/// Makes the file at `path`, or empties the one that is there, and writes `bytes`. Quick and not atomic: what was
/// written before a failure stays. For files that can be made again, in a folder of their own.
std::expected<void, FileFailure> write(const std::filesystem::path& path, std::string_view bytes);

/// Whether `path` names a regular file, links followed.
bool isRegularFile(const std::filesystem::path& path);

}  // namespace quorvel::FileBytes
