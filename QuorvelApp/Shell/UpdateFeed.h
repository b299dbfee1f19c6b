#pragma once

#include "Foundation/JSON.h"

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The list of versions that a packager publishes, as one JSON text in UTF-8 under a fixed address:
///
///     {
///       "format": 1,
///       "versions": [
///         {
///           "version": "1.4.2",
///           "notes": "What is new, in plain text.\nIn as many lines as it takes.",
///           "download": "https://example.org/quorvel/1.4.2",
///           "system": "linux",
///           "minimumSystem": "5.10"
///         }
///       ]
///     }
///
/// 1. "format" is 1. A later format that older programs can't read has another number and another address.
/// 2. "versions" holds at most 200 entries in any order.
/// 3. "version" is one to four numbers with dots between them, each of one to nine digits.
/// 4. "notes" is plain text of at most 20,000 bytes; it may be missing.
/// 5. "download" is a page for the user's browser: an https address of at most 2,000 bytes.
/// 6. "system" names the system that the version is for by its kernel ("linux", "darwin", "winnt"), and "minimumSystem"
///    the oldest version of that kernel on which it runs. Each may be missing; then it runs everywhere.
/// 7. The whole text has at most 256 KiB.
/// 8. Other keys are ignored. Anything else that breaks a rule makes the whole feed invalid, since a feed that is
/// partly
///    wrong may be somebody else's.
///
/// Pure functions on values, from any thread.
namespace quorvel::UpdateFeed {

inline constexpr std::size_t sizeLimit = 1 << 18;  ///< in bytes; a longer text is no feed
inline constexpr std::size_t versionLimit = 200;
inline constexpr std::size_t notesLimit = 20'000;    ///< in bytes
inline constexpr std::size_t downloadLimit = 2'000;  ///< in bytes

/// Compared part by part as numbers; parts that aren't there are 0: 1.9 < 1.10 and 1.2 = 1.2.0.
struct VersionNumber {
    std::array<std::uint32_t, 4> parts{};

    auto operator<=>(const VersionNumber&) const = default;

    /// Nothing for anything but one to four numbers of at most nine digits with dots between them.
    static std::optional<VersionNumber> parse(std::string_view text);
};

struct Release {
    std::string version;  ///< as written; a valid number
    std::string notes;    ///< without control characters but tab and line feed
    std::string download;
    std::string system;                          ///< empty: any
    std::optional<VersionNumber> minimumSystem;  ///< none: any

    bool operator==(const Release&) const = default;
};

std::expected<std::vector<Release>, JSONFailure> parse(std::string_view text);

/// Where the program runs.
struct System {
    std::string kernel;         ///< "linux"
    std::string kernelVersion;  ///< "6.1.0-13-amd64": only the numbers that it begins with count
};

/// What a user who has an older version is told.
struct News {
    std::string version;   ///< the newest
    std::string notes;     ///< of all versions that are newer than the user's, the newest first
    std::string download;  ///< of the newest

    bool operator==(const News&) const = default;
};

/// Nothing when none is newer than `current` and runs on this system, or when `current` isn't a version.
std::optional<News> news(const std::vector<Release>& releases, std::string_view current, const System& system);

/// Whether a request may be sent on to another address: both are http or https, and never from https to http.
bool mayRedirect(std::string_view fromScheme, std::string_view toScheme);

}  // namespace quorvel::UpdateFeed
