#include "Cards/CharacterList.h"
#include "Foundation/Text.h"

#include <gtest/gtest.h>
#include <string>

namespace quorvel {
namespace {

TEST(CharacterList, AgreesWithTheReadersCount) {
    for (const std::string_view text : {"", "a", "ascii text", "a\rb\nc", "a\r\nb", "\r\n", "\n\r", "e\u0301a",
                                        "*\u0301", "größe", "👩‍👩‍👧x", "\xff\xfe"}) {
        const CharacterList list(text);
        const auto characters = Text::characters(text);
        ASSERT_EQ(list.size(), characters.size()) << text;
        std::string joined;
        for (std::size_t i = 0; i < list.size(); ++i) {
            EXPECT_EQ(list[i], characters[i]);
            EXPECT_TRUE(list.has(characters[i], i));
            joined += list[i];
            EXPECT_EQ(list.slice(0, i), joined.substr(0, joined.size() - list[i].size()));
        }
        EXPECT_EQ(list.slice(0, list.size()), text);
        EXPECT_EQ(list.slice(list.size(), list.size()), "");
        EXPECT_EQ(list.slice(list.size(), 0), "");
        EXPECT_FALSE(list.has("", list.size()));
        EXPECT_FALSE(list.has("a", list.size() + 1));
    }
}

TEST(CharacterList, KeepsMarksWithTheirBase) {
    const CharacterList list("*\u0301*\r\n");
    ASSERT_EQ(list.size(), 3u);
    EXPECT_FALSE(list.has("*", 0));
    EXPECT_TRUE(list.has("*", 1));
    EXPECT_EQ(list[2], "\r\n");
    EXPECT_EQ(list.slice(1, 3), "*\r\n");
}

}  // namespace
}  // namespace quorvel
