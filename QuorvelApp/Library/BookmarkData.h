#pragma once

#include "Library/FileIdentity.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

/// What the data of a bookmark says, in its first version: one line of words, then the path to the end of the data.
///
///     quorvel-bookmark 1 64769 1835021 1779000000 123456789⏎/home/ada/Game/cards.csv
///
/// The words are the version, the device, the inode and the time of birth in seconds since 1970 and nanoseconds, or "-"
/// where there is none. The path is kept as the bytes that it is, since a path need not be UTF-8 and JSON has only
/// that.
struct BookmarkData {
    std::string path;                      ///< absolute
    std::optional<FileIdentity> identity;  ///< none keeps nothing but the bytes of the path: "quorvel-bookmark 1⏎…"

    bool operator==(const BookmarkData&) const = default;

    std::string encoded() const;

    /// Nothing for what isn't of this form, that of a later version included.
    static std::optional<BookmarkData> decode(std::string_view data);
};

}  // namespace quorvel
