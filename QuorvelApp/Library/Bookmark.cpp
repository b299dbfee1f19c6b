#include "Library/Bookmark.h"

#include "Foundation/TextEncoding.h"
#include "Library/BookmarkData.h"
#include "Library/NearbySearch.h"

#include <algorithm>
#include <cerrno>

namespace quorvel {

namespace {

using Path = std::filesystem::path;

/// From the root, without "." and without a slash at the end; the path itself when there is no current folder.
Path absolutePath(const Path& url) {
    std::error_code error;
    Path path = std::filesystem::absolute(url, error);
    if (error) return url;
    // Only the file system knows what is above a link.
    if (std::ranges::find(path, Path("..")) != path.end()) {
        const Path real = std::filesystem::weakly_canonical(path, error);
        if (!error) path = real;
    }
    path = path.lexically_normal();
    return path.has_filename() ? path : path.parent_path();
}

Bookmark bookmarkOf(const Path& path, const FileIdentity& identity) {
    const Path name = path.has_filename() ? path.filename() : path;
    return {.data = BookmarkData{path, identity}.encoded(),
            .name = TextEncoding::repairedUTF8(name.native()),
            .path = path};
}

/// What is at `path`. The bookmark is renewed unless it is this very file that it describes.
std::optional<Bookmark::Resolved> resolved(const Path& path, const std::optional<BookmarkData>& data) {
    if (!path.is_absolute()) return std::nullopt;
    const auto found = findFile(path);
    if (!found) return std::nullopt;
    Bookmark::Resolved result{path, std::nullopt};
    if (!data || data->identity != found->identity || data->path != path)
        result.refreshed = bookmarkOf(path, found->identity);
    return result;
}

}  // namespace

std::expected<Bookmark, FileFailure> Bookmark::make(const Path& url) {
    const Path path = absolutePath(url);
    const auto found = path.is_absolute() ? findFile(path) : std::unexpected(ENOENT);
    if (!found) return std::unexpected(FileFailure{url, found.error()});
    return bookmarkOf(path, found->identity);
}

Bookmark Bookmark::plain(const Path& url, std::string name) {
    return {.data = std::nullopt, .name = TextEncoding::repairedUTF8(name), .path = absolutePath(url)};
}

std::optional<Bookmark::Resolved> Bookmark::resolve() const {
    if (!data) {
        auto result = resolved(path, std::nullopt);
        if (result) result->refreshed.reset();
        return result;
    }
    const auto described = BookmarkData::decode(*data);
    if (described) {
        if (auto result = resolved(described->path, described)) return result;
        if (described->identity)
            if (const auto moved = NearbySearch::find(described->path, *described->identity).path)
                if (auto result = resolved(*moved, described)) return result;
    }
    // Damaged data may name a place that never was, and a record that was moved to another machine be put right by
    // hand.
    return resolved(path, described);
}

}  // namespace quorvel
