#pragma once

#include "Foundation/FileFailure.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <limits>
#include <string>

namespace quorvel::FileBytes {

/// The whole of a regular file (symbolic links are followed). A folder, FIFO, socket or device fails at once with
/// EISDIR or EINVAL and never blocks; a file larger than `limit` fails with EFBIG before anything is allocated.
std::expected<std::string, FileFailure> read(const std::filesystem::path& path,
                                             std::uint64_t limit = std::numeric_limits<std::uint64_t>::max());

/// Whether `path` names a regular file, links followed.
bool isRegularFile(const std::filesystem::path& path);

}  // namespace quorvel::FileBytes
