#pragma once

#include "Foundation/FileFailure.h"

#include <expected>
#include <filesystem>
#include <string_view>

namespace quorvel::AtomicFile {

/// Replaces the file at `path` by `bytes`, so that after a crash at any moment either the old file or the new one is
/// there, whole. Writes a neighbour, checks every count, syncs it, renames it, and syncs the folder. A sync that
/// failed, an interrupted one included, is never tried again: the kernel may have dropped the pages, so a second
/// "success" would mean nothing. On failure the old file stays and the neighbour is removed; only when the last step
/// fails, the sync of the folder, is the new file in place without being certain to outlive a crash.
///
/// The new file has the permissions of the one it replaces. A symbolic link stays and the file that it leads to is
/// replaced. What isn't a regular file is never replaced (EISDIR, EINVAL), nor is a file that this user may not write.
std::expected<void, FileFailure> write(const std::filesystem::path& path, std::string_view bytes);

}  // namespace quorvel::AtomicFile
