#include "Rendering/StyledText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

using testing::ElementsAre;
using Piece = StyledText::Piece;
using Icon = StyledText::Icon;

constexpr const char* place = "\xEF\xBF\xBC";

TEST(StyledText, PiecesKeepTheStylesOfTheMarkup) {
    const auto styled = StyledText::from("a **b** *c* ***d***");
    EXPECT_EQ(styled.text, "a b c d");
    EXPECT_THAT(styled.pieces,
                ElementsAre(Piece{0, 2, false, false}, Piece{2, 3, true, false}, Piece{3, 4, false, false},
                            Piece{4, 5, false, true}, Piece{5, 6, false, false}, Piece{6, 7, true, true}));
}

TEST(StyledText, IconsHoldAPlaceOfOneCharacter) {
    const auto styled = StyledText::from("Gain 1 {icon:coin}{icon:LEAF}.");
    EXPECT_EQ(styled.text, std::string("Gain 1 ") + place + place + ".");
    EXPECT_THAT(styled.icons, ElementsAre(Icon{7, "coin"}, Icon{10, "leaf"}));
}

TEST(StyledText, APlaceholderOfTheUsersOwnIsNoIcon) {
    const auto styled = StyledText::from(std::string("a") + place + "b{icon:coin}");
    EXPECT_EQ(styled.text, std::string("ab") + place);
    EXPECT_THAT(styled.icons, ElementsAre(Icon{2, "coin"}));
}

TEST(StyledText, EveryLineBreakIsALineFeed) {
    for (const char* text : {"a\nb", "a\r\nb", "a\rb", "a\\nb",
                             "a\xE2\x80\xA8"
                             "b",
                             "a\xE2\x80\xA9"
                             "b",
                             "a\xC2\x85"
                             "b",
                             "a\x0B"
                             "b",
                             "a\x0C"
                             "b"}) {
        EXPECT_EQ(StyledText::from(text).text, "a\nb") << text;
    }
}

TEST(StyledText, ALastLineFeedBeginsNoLine) {
    EXPECT_EQ(StyledText::from("a\n").text, "a");
    EXPECT_EQ(StyledText::from("a\r\n").text, "a");
    EXPECT_EQ(StyledText::from("a\n\n").text, "a\n");
    EXPECT_EQ(StyledText::from("\n").text, "");
    EXPECT_EQ(StyledText::from("\n\na").text, "\n\na");
}

TEST(StyledText, BlanksAtTheEndOfAParagraphAreLeftOut) {
    EXPECT_EQ(StyledText::from("a  \t\n b \n").text, "a\n b");
    const auto styled = StyledText::from("a **b ** \n*c*");
    EXPECT_EQ(styled.text, "a b\nc");
    EXPECT_THAT(styled.pieces, ElementsAre(Piece{0, 2, false, false}, Piece{2, 3, true, false},
                                           Piece{3, 4, false, false}, Piece{4, 5, false, true}));
}

TEST(StyledText, BytesThatAreNoTextNeitherBreakNorEndIt) {
    EXPECT_EQ(StyledText::from(std::string_view("a\0b", 3)).text, "ab");
    EXPECT_EQ(StyledText::from("a\x01\x1B\x7F"
                               "b")
                  .text,
              "ab");
    EXPECT_EQ(StyledText::from("a\xFF"
                               "b")
                  .text,
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(StyledText::from("a\xE2\x82").text, "a\xEF\xBF\xBD");
    EXPECT_EQ(StyledText::from("a\xED\xA0\x80"
                               "b")
                  .text.substr(0, 4),
              "a\xEF\xBF\xBD");
}

TEST(StyledText, HeapsOfMarksAreCutDown) {
    std::string haunted = "e";
    for (int i = 0; i < 1000; ++i) haunted += "\xCC\x81";
    EXPECT_EQ(StyledText::from(haunted + "x").text.size(), 1 + 24 * 2 + 1);
    EXPECT_EQ(StyledText::from("e\xCC\x81 e\xCC\x81").text, "e\xCC\x81 e\xCC\x81");
}

TEST(StyledText, NothingIsNothing) {
    for (const char* text : {"", "****", " ", "\t"}) {
        EXPECT_EQ(StyledText::from(text).text, "") << text;
        EXPECT_TRUE(StyledText::from(text).pieces.empty()) << text;
    }
}

}  // namespace
}  // namespace quorvel
