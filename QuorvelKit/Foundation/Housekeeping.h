#pragma once

#include <cstdint>
#include <filesystem>
#include <set>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quorvel::Housekeeping {

/// Which of `keys` to drop so that at most `limit` stay: the least recently used first (`use`, 0 when absent), the
/// lower key first among equals, never one that is `visible`.
std::vector<std::int64_t> evictions(const std::vector<std::int64_t>& keys, const std::set<std::int64_t>& visible,
                                    const std::unordered_map<std::int64_t, std::int64_t>& use, std::size_t limit);

/// Whether `path` is `folder` or lies below it, "." and ".." resolved as text.
bool isInside(std::string_view path, const std::filesystem::path& folder);

}  // namespace quorvel::Housekeeping
