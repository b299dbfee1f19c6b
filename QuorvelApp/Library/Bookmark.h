#pragma once

#include "Foundation/FileFailure.h"

#include <expected>
#include <filesystem>
#include <optional>
#include <string>

namespace quorvel {

/// A reference to a file or folder of the user's that survives its being renamed, moved near by, or replaced. All of
/// it is plain looking at folders, nothing is opened for reading; safe from any thread.
struct Bookmark {
    std::optional<std::string> data;  ///< an opaque, versioned description of the file, any bytes; none: a plain path
    std::string name;                 ///< to show: the last path component, or a fixed label; always UTF-8
    std::string path;                 ///< absolute, as it was when the bookmark was made; any bytes but zero

    bool operator==(const Bookmark&) const = default;

    /// A bookmark with data of the file or folder at `url`, behind links. A relative path is taken from the current
    /// folder. Fails where nothing can be found.
    static std::expected<Bookmark, FileFailure> make(const std::filesystem::path& url);

    /// A plain reference, without data. Nothing need be there.
    static Bookmark plain(const std::filesystem::path& url, std::string name);

    struct Resolved;

    /// Where the file is now. With data: what is at the path is the file, replaced or not; when nothing is there, the
    /// same file is looked for by its identity near by, within a bounded number of folder entries. Without data, or
    /// with data that nobody can read, only the path counts. Nothing when the file can't be found.
    std::optional<Resolved> resolve() const;
};

struct Bookmark::Resolved {
    std::filesystem::path url;
    std::optional<Bookmark> refreshed;  ///< to be stored in place of the old one: the file moved or was replaced
};

}  // namespace quorvel
