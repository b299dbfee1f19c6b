#include "Foundation/TextEncoding.h"
#include "Library/Base64.h"
#include "Library/BookmarkJSON.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

Bookmark thereAndBack(const Bookmark& bookmark) {
    const auto json = parseJSON(prettyJSON(toJSON(bookmark)));
    const auto read = bookmarkFromJSON(json.value_or(JSON()));
    EXPECT_TRUE(read) << read.error().description();
    return read.value_or(Bookmark());
}

TEST(BookmarkJSON, HasTheseKeys) {
    const Bookmark plain{std::nullopt, "cards.csv", "/a/cards.csv"};
    EXPECT_EQ(toJSON(plain), JSON::parse(R"({"name": "cards.csv", "path": "/a/cards.csv"})"));
    const Bookmark withData{"foo", "cards.csv", "/a/cards.csv"};
    EXPECT_EQ(toJSON(withData), JSON::parse(R"({"data": "Zm9v", "name": "cards.csv", "path": "/a/cards.csv"})"));
}

TEST(BookmarkJSON, ThereAndBack) {
    for (const std::optional<std::string>& data :
         {std::optional<std::string>(), std::optional<std::string>(""), std::optional<std::string>("\xff\x00z")})
        for (const std::string path : {"/a/cards.csv", "/", "/é/“x”", "/line\nend"}) {
            const Bookmark bookmark{data, "the “name”", path};
            EXPECT_EQ(thereAndBack(bookmark), bookmark);
        }
}

TEST(BookmarkJSON, KeepsEveryByteOfAPath) {
    const Bookmark plain = Bookmark::plain("/music/caf\xe9/\xff\xfe.csv", "x");
    EXPECT_TRUE(TextEncoding::isValidUTF8(prettyJSON(toJSON(plain))));
    EXPECT_EQ(thereAndBack(plain), plain);
    EXPECT_FALSE(thereAndBack(plain).data);

    const Bookmark described{"quorvel-bookmark 1 1 2 3 4\n/caf\xe9", "caf", "/caf\xe9"};
    EXPECT_EQ(thereAndBack(described), described);
}

TEST(BookmarkJSON, APathWrittenByHandCounts) {
    JSON json = toJSON(Bookmark{"quorvel-bookmark 1 1 2 3 4\n/old", "old", "/old"});
    json["path"] = "/new";
    EXPECT_EQ(bookmarkFromJSON(json)->path, "/new");
}

TEST(BookmarkJSON, NullDataIsNone) {
    const auto read = bookmarkFromJSON(JSON{{"data", nullptr}, {"name", "a"}, {"path", "/a"}, {"more", 1}});
    ASSERT_TRUE(read);
    EXPECT_EQ(read->data, std::nullopt);
}

TEST(BookmarkJSON, RefusesNonsense) {
    const JSON good{{"data", "Zm9v"}, {"name", "a"}, {"path", "/a"}};
    for (const char* key : {"name", "path"}) {
        JSON without = good;
        without.erase(key);
        ASSERT_FALSE(bookmarkFromJSON(without));
        EXPECT_EQ(bookmarkFromJSON(without).error().path, key);
        JSON null = good;
        null[key] = nullptr;
        EXPECT_FALSE(bookmarkFromJSON(null));
    }
    for (const char* key : {"data", "name", "path"})
        for (const JSON& wrong : {JSON(1), JSON(true), JSON::array(), JSON::object()}) {
            JSON changed = good;
            changed[key] = wrong;
            ASSERT_FALSE(bookmarkFromJSON(changed)) << changed;
            EXPECT_EQ(bookmarkFromJSON(changed).error().path, key);
        }
    for (const char* text : {"Zm9", "Zm9v ", "*"}) {
        JSON changed = good;
        changed["data"] = text;
        EXPECT_EQ(bookmarkFromJSON(changed).error().description(), "data must be base64.");
    }
    for (const char* text : {"[]", "null", "\"/a\""}) EXPECT_FALSE(bookmarkFromJSON(JSON::parse(text)));
}

}  // namespace
}  // namespace quorvel
