#include "Pictures/PictureLocation.h"

#include "Foundation/Text.h"

#include <algorithm>
#include <cstdlib>
#include <pwd.h>
#include <string>
#include <system_error>
#include <unistd.h>

namespace quorvel::PictureLocation {
namespace {

std::optional<std::filesystem::path> ifExists(std::filesystem::path path) {
    std::error_code failure;
    if (!std::filesystem::exists(path, failure)) return std::nullopt;
    return path;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::optional<std::string> percentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            decoded += text[i];
            continue;
        }
        const int high = i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        const int low = i + 2 < text.size() ? hexDigit(text[i + 2]) : -1;
        if (high < 0 || low < 0) return std::nullopt;
        decoded += char(high * 16 + low);
        i += 2;
    }
    return decoded;
}

/// The path of a file URL, whatever its host; nothing when a percent sign stands for no byte.
std::optional<std::string> pathOfFileURL(std::string_view url) {
    url.remove_prefix(std::string_view("file://").size());
    url = url.substr(0, url.find_first_of("?#"));
    const std::size_t slash = url.find('/');
    return percentDecoded(slash == url.npos ? std::string_view() : url.substr(slash));
}

std::optional<std::string> homeOf(const std::string& user) {
    if (user.empty()) {
        const char* home = std::getenv("HOME");
        if (home && *home) return home;
    }
    passwd entry{};
    passwd* found = nullptr;
    std::string buffer(16 * 1024, '\0');
    const int failed = user.empty() ? getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found)
                                    : getpwnam_r(user.c_str(), &entry, buffer.data(), buffer.size(), &found);
    if (failed || !found || !found->pw_dir) return std::nullopt;
    return found->pw_dir;
}

/// "~" and "~user" at the start become that home; a user that doesn't exist leaves the text as it is.
std::string withTildeExpanded(std::string_view text) {
    if (!text.starts_with('~')) return std::string(text);
    const std::size_t end = std::min(text.find('/'), text.size());
    const auto home = homeOf(std::string(text.substr(1, end - 1)));
    return home ? *home + std::string(text.substr(end)) : std::string(text);
}

}  // namespace

std::optional<std::filesystem::path> find(std::string_view name, const std::vector<std::filesystem::path>& folders) {
    const std::string_view trimmed = Text::trimWhitespaceAndNewlines(name);
    if (trimmed.empty() || trimmed.contains('\0')) return std::nullopt;
    if (trimmed.starts_with("file://"))
        if (const auto path = pathOfFileURL(trimmed)) {
            if (path->empty() || path->contains('\0')) return std::nullopt;
            return ifExists(*path);
        }
    const std::string expanded = withTildeExpanded(trimmed);
    if (expanded.starts_with('/')) return ifExists(expanded);

    const std::string relative = Text::replaceAll(trimmed, "\\", "/");
    const std::string_view whole =
        std::string_view(relative).substr(std::min(relative.find_first_not_of('/'), relative.size()));
    for (const std::filesystem::path& folder : folders)
        for (const std::string_view part : {whole, Text::lastPathComponent(relative)})
            if (auto found = ifExists(folder / part)) return found;
    return std::nullopt;
}

}  // namespace quorvel::PictureLocation
