#include "Check.h"
#include "Library/BookmarkData.h"
#include "Library/DeckProjectJSON.h"

using namespace quorvel;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto json = parseJSON(text))
        if (const auto project = deckProjectFromJSON(*json)) {
            const auto written = parseJSON(prettyJSON(toJSON(*project)));
            CHECK(written.has_value());
            const auto again = deckProjectFromJSON(*written);
            CHECK(again && *again == *project);
        }
    if (const auto bookmark = BookmarkData::decode(text)) CHECK(BookmarkData::decode(bookmark->encoded()) == bookmark);
    return 0;
}
