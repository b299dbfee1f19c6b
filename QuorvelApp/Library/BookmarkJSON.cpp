#include "Library/BookmarkJSON.h"

#include "Foundation/JSONReader.h"
#include "Foundation/TextEncoding.h"
#include "Library/Base64.h"
#include "Library/BookmarkData.h"

namespace quorvel {

namespace {

std::expected<std::string, JSONFailure> bytesFromJSON(const JSON& json) {
    if (json.is_string())
        if (auto bytes = Base64::decode(json.get_ref<const std::string&>())) return std::move(*bytes);
    return std::unexpected(JSONFailure{"", "must be base64"});
}

/// Takes back from the data what the text of the path couldn't hold.
void restorePath(Bookmark& bookmark) {
    if (!bookmark.data) return;
    const auto data = BookmarkData::decode(*bookmark.data);
    if (!data) return;
    if (data->path != bookmark.path && TextEncoding::repairedUTF8(data->path) == bookmark.path)
        bookmark.path = data->path;
    if (!data->identity) bookmark.data.reset();
}

}  // namespace

JSON toJSON(const Bookmark& bookmark) {
    JSON json{{"name", TextEncoding::repairedUTF8(bookmark.name)}, {"path", TextEncoding::repairedUTF8(bookmark.path)}};
    if (bookmark.data) {
        json["data"] = Base64::encode(*bookmark.data);
    } else if (!TextEncoding::isValidUTF8(bookmark.path)) {
        json["data"] = Base64::encode(BookmarkData{bookmark.path, std::nullopt}.encoded());
    }
    return json;
}

std::expected<Bookmark, JSONFailure> bookmarkFromJSON(const JSON& json) {
    JSONReader reader(json);
    Bookmark bookmark;
    reader.readIfPresent("data", bookmark.data, bytesFromJSON);
    reader.read("name", bookmark.name);
    reader.read("path", bookmark.path);
    restorePath(bookmark);
    return reader.finish(std::move(bookmark));
}

}  // namespace quorvel
