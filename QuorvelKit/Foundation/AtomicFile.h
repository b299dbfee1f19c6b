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
/// The new file has the permissions of the one it replaces, access control list included, and its owner and group as
/// far as this user may give them away; where the group can't be kept, its rights shrink to those of everyone. Set-id
/// bits go, as they do when a file is written in place. A symbolic link stays and the file that it leads to is
/// replaced. What isn't a regular file is never replaced (EISDIR, EINVAL), nor is a file that this user may not write.
///
/// Safe from any thread. It blocks until the disk has the bytes, so it has no place on a thread that draws.
std::expected<void, FileFailure> write(const std::filesystem::path& path, std::string_view bytes);

/// Removes the neighbours that writes left in `folder` when they were cut off by a crash. One that somebody is still
/// writing stays, whichever thread or process that is: it is locked from its first moment to its last. Only regular
/// files with exactly a neighbour's name go; no link in the folder is followed, and what can't be removed stays.
/// Call it where the program starts to use a folder. Safe from any thread.
void sweep(const std::filesystem::path& folder);

}  // namespace quorvel::AtomicFile
