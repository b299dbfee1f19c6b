#pragma once

#include "Foundation/JSON.h"
#include "Library/Bookmark.h"

#include <expected>

/// {"data": "…", "name": "cards.csv", "path": "/home/ada/Game/cards.csv"}. `data` is base64 and left out when there is
/// none; name and path are required texts. JSON holds only UTF-8, so a path that isn't stands in `data` byte for byte
/// and is read back from there; a plain path reference gets data of its own in its JSON for that, and only for that.
namespace quorvel {

JSON toJSON(const Bookmark& bookmark);
std::expected<Bookmark, JSONFailure> bookmarkFromJSON(const JSON& json);

}  // namespace quorvel
