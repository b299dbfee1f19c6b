#pragma once

#include "Library/FileIdentity.h"

#include <cstddef>
#include <filesystem>
#include <optional>

/// Where a file or folder may have gone that is no longer at its path.
namespace quorvel::NearbySearch {

/// How far away a file is looked for: a step leads into a subfolder or out to the parent.
inline constexpr std::size_t mostSteps = 3;

/// What one search may cost, so that the three of a deck together hold the main thread less than 8 ms. The unit is one
/// entry of a folder that is read; looking at an entry more closely and opening a folder cost a multiple.
inline constexpr std::size_t lookCost = 10;
inline constexpr std::size_t openCost = 60;
inline constexpr std::size_t mostCost = 6'000;
inline constexpr std::size_t mostCostOfOneFolder = mostCost / 2;  ///< but for the file's own

struct Result {
    std::optional<std::filesystem::path> path;  ///< where the file is
    std::size_t cost = 0;                       ///< at most `mostCost` and one folder's opening
};

/// Looks for the file that was at `path`, an absolute one: in its folder, then in subfolders and the parent, and so on,
/// the nearest first. When the folder is gone as well, the search starts at the nearest one that is still there, and
/// first tries whether the lost folder only has another name. Links are never followed and other file systems never
/// entered. Hidden folders, the trash among them, and names of backups are passed over: what lies there was put aside.
/// Without a time of birth nothing is looked for, since the number of an inode alone may mean another file by now.
Result find(const std::filesystem::path& path, const FileIdentity& identity);

}  // namespace quorvel::NearbySearch
