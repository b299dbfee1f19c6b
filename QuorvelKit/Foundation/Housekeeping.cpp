#include "Foundation/Housekeeping.h"

#include <algorithm>
#include <string>
#include <utility>

namespace quorvel::Housekeeping {

namespace {

/// The path with "." and ".." resolved and without a slash at its end, the root's own aside.
std::string standardised(const std::filesystem::path& path) {
    std::string text = path.lexically_normal().generic_string();
    while (text.size() > 1 && text.ends_with('/')) text.pop_back();
    return text;
}

}  // namespace

std::vector<std::int64_t> evictions(const std::vector<std::int64_t>& keys, const std::set<std::int64_t>& visible,
                                    const std::unordered_map<std::int64_t, std::int64_t>& use, std::size_t limit) {
    if (keys.size() <= limit) return {};
    std::vector<std::pair<std::int64_t, std::int64_t>> candidates;  // last use, key
    for (const std::int64_t key : keys) {
        if (visible.contains(key)) continue;
        const auto found = use.find(key);
        candidates.emplace_back(found == use.end() ? 0 : found->second, key);
    }
    std::sort(candidates.begin(), candidates.end());
    candidates.resize(std::min(candidates.size(), keys.size() - limit));

    std::vector<std::int64_t> result;
    result.reserve(candidates.size());
    for (const auto& [lastUse, key] : candidates) result.push_back(key);
    return result;
}

bool isInside(std::string_view path, const std::filesystem::path& folder) {
    const std::string inner = standardised(path);
    std::string outer = standardised(folder);
    if (inner == outer) return true;
    if (!outer.ends_with('/')) outer += '/';
    return inner.starts_with(outer);
}

}  // namespace quorvel::Housekeeping
