#pragma once

#include "Foundation/EnumText.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::CommandLine {

/// "a", "a or b", "a, b or c".
std::string enumeration(const std::vector<std::string_view>& texts, std::string_view conjunction);

/// The names of an enumeration's cases.
template <class E>
std::vector<std::string_view> namesOf() {
    std::vector<std::string_view> names;
    names.reserve(EnumText<E>::cases.size());
    for (const auto& [each, name] : EnumText<E>::cases) names.push_back(name);
    return names;
}

/// The sentence for the exception that is being handled.
std::string unforeseen();

/// The last component of a path in typographic quotes, as sentences name a file; the whole path where it has none.
std::string quotedName(const std::filesystem::path& path);

}  // namespace quorvel::CommandLine
