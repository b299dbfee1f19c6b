#pragma once

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

/// Where the name of a picture leads, as a person typed it into a spreadsheet: a bare file name, a relative or absolute
/// path, a file URL, a path with backslashes.
namespace quorvel::PictureLocation {

/// The first existing location, of whatever kind of file; nothing when there is none. White space around the name is
/// dropped. `folders` are searched in order for relative names, each by the whole path and then by the last component
/// alone, so that a spreadsheet from another machine works with its pictures lying flat in one folder.
std::optional<std::filesystem::path> find(std::string_view name, const std::vector<std::filesystem::path>& folders);

}  // namespace quorvel::PictureLocation
