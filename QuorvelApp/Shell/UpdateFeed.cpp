#include "Shell/UpdateFeed.h"

#include "Foundation/JSONReader.h"
#include "Foundation/Text.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace quorvel::UpdateFeed {

namespace {

constexpr std::string_view https = "https://";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// An https address with a host, in printable ASCII, without a name or password before the host.
bool isDownload(std::string_view text) {
    if (!text.starts_with(https) || text.size() > downloadLimit) return false;
    if (!std::ranges::all_of(text, [](char c) { return c > ' ' && c < '\x7F' && c != '\\'; })) return false;
    const std::string_view rest = text.substr(https.size());
    const std::string_view host = rest.substr(0, rest.find_first_of("/?#"));
    return !host.empty() && !host.starts_with(':') && host.find('@') == std::string_view::npos;
}

/// What could make a text look like something else than it says: control characters, and marks that turn its direction.
bool isHidden(char32_t scalar) {
    if (scalar == U'\t' || scalar == U'\n') return false;
    return scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0) || (scalar >= 0x202A && scalar <= 0x202E) ||
           (scalar >= 0x2066 && scalar <= 0x2069);
}

std::string plainText(std::string_view text) {
    std::string plain;
    for (std::size_t offset = 0; offset < text.size();)
        if (const char32_t scalar = Text::nextScalar(text, offset); !isHidden(scalar))
            Text::appendScalar(plain, scalar);
    return plain;
}

std::unexpected<JSONFailure> must(std::string_view key, std::string reason) {
    return std::unexpected(JSONFailure{std::string(key), std::move(reason)});
}

std::expected<Release, JSONFailure> releaseFromJSON(const JSON& json) {
    Release release;
    std::string minimumSystem;
    JSONReader reader(json);
    reader.read("version", release.version);
    reader.readIfPresent("notes", release.notes);
    reader.read("download", release.download);
    reader.readIfPresent("system", release.system);
    reader.readIfPresent("minimumSystem", minimumSystem);
    auto read = reader.finish(std::move(release));
    if (!read) return read;

    if (!VersionNumber::parse(read->version)) return must("version", "must be a version number");
    if (read->notes.size() > notesLimit) return must("notes", "is too long");
    if (!isDownload(read->download)) return must("download", "must be an https address");
    if (!minimumSystem.empty()) {
        read->minimumSystem = VersionNumber::parse(minimumSystem);
        if (!read->minimumSystem) return must("minimumSystem", "must be a version number");
    }
    read->notes = plainText(read->notes);
    return read;
}

/// The numbers that a kernel's version begins with.
VersionNumber kernelNumber(std::string_view text) {
    const auto end = std::ranges::find_if_not(text, [](char c) { return isDigit(c) || c == '.'; });
    std::string_view numbers(text.begin(), end);
    while (numbers.ends_with('.')) numbers.remove_suffix(1);
    return VersionNumber::parse(numbers).value_or(VersionNumber{});
}

bool runsOn(const Release& release, const System& system) {
    if (!release.system.empty() && release.system != system.kernel) return false;
    return !release.minimumSystem || *release.minimumSystem <= kernelNumber(system.kernelVersion);
}

VersionNumber number(const Release& release) {
    return VersionNumber::parse(release.version).value_or(VersionNumber{});
}

}  // namespace

std::optional<VersionNumber> VersionNumber::parse(std::string_view text) {
    constexpr std::size_t mostDigits = 9;
    VersionNumber number;
    for (std::size_t part = 0; part < number.parts.size(); ++part) {
        const auto digits = std::size_t(std::ranges::find_if_not(text, isDigit) - text.begin());
        if (digits == 0 || digits > mostDigits) return std::nullopt;
        std::from_chars(text.data(), text.data() + digits, number.parts[part]);
        text.remove_prefix(digits);
        if (text.empty()) return number;
        if (text.front() != '.') return std::nullopt;
        text.remove_prefix(1);
    }
    return std::nullopt;
}

std::expected<std::vector<Release>, JSONFailure> parse(std::string_view text) {
    if (text.size() > sizeLimit) return must("", "is too long");
    const auto json = parseJSON(text);
    if (!json) return std::unexpected(json.error());
    std::int64_t format = 0;
    std::vector<Release> releases;
    JSONReader reader(*json);
    reader.read("format", format);
    if (const JSON* list = reader.find("versions"); list && list->is_array() && list->size() > versionLimit)
        return must("versions", "is too long");
    reader.readList("versions", releases, releaseFromJSON);
    auto read = reader.finish(std::move(releases));
    if (read && format != 1) return must("format", "must be 1");
    return read;
}

std::optional<News> news(const std::vector<Release>& releases, std::string_view current, const System& system) {
    const auto own = VersionNumber::parse(current);
    if (!own) return std::nullopt;
    std::vector<Release> newer;
    std::ranges::copy_if(releases, std::back_inserter(newer),
                         [&](const Release& each) { return number(each) > *own && runsOn(each, system); });
    if (newer.empty()) return std::nullopt;
    std::ranges::stable_sort(newer, std::ranges::greater{}, number);

    News found{.version = newer.front().version, .notes = "", .download = newer.front().download};
    for (const Release& each : newer) {
        const std::string_view notes = Text::trimWhitespaceAndNewlines(each.notes);
        if (notes.empty()) continue;
        if (!found.notes.empty()) found.notes += "\n\n";
        if (newer.size() > 1) found.notes += "Version " + each.version + "\n";
        found.notes += notes;
    }
    return found;
}

bool mayRedirect(std::string_view fromScheme, std::string_view toScheme) {
    return toScheme == "https" || (toScheme == "http" && fromScheme == "http");
}

}  // namespace quorvel::UpdateFeed
