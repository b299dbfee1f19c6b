#include "Controls/Wording.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

TEST(Wording, namesThisPlatform) {
    EXPECT_EQ(shown("Your decks never leave this Mac. "), "Your decks never leave this computer. ");
    EXPECT_EQ(shown("Switch (⌘1–⌘4)"), "Switch (Ctrl+1–Ctrl+4)");
    EXPECT_EQ(shown("⇧⌘E"), "Ctrl+Shift+E");
    EXPECT_EQ(shown("⌘⌫"), "Ctrl+Backspace");
}

TEST(Wording, leavesEverythingElse) {
    EXPECT_EQ(shown(""), "");
    EXPECT_EQ(shown("“Gain 2 {icon:coin}”"), QStringLiteral("“Gain 2 {icon:coin}”"));
    EXPECT_EQ(shown("Numbers: File › Export To › CSV."), QStringLiteral("Numbers: File › Export To › CSV."));
}

TEST(Wording, leavesTextOfTheUser) {
    EXPECT_EQ(text("this Mac ⌘"), QStringLiteral("this Mac ⌘"));
}

TEST(Wording, breaksOnlyWhatHasNoPlaceForIt) {
    const QString sentence = text("“my-cards of-2026.csv” can’t be found. It may have been moved or deleted.");
    EXPECT_EQ(breakable(sentence), sentence);
    EXPECT_EQ(breakable(""), "");
    EXPECT_EQ(breakable("abcd", 4), "abcd");
    EXPECT_EQ(breakable("abcde", 4), text("abcd\u200Be"));
    EXPECT_EQ(breakable("abcdefghi jklmn", 4), text("abcd\u200Befgh\u200Bi jklm\u200Bn"));
    EXPECT_EQ(breakable("abc/def/hij", 4), "abc/def/hij");
    // Never within a character.
    EXPECT_EQ(breakable(text("aée\u0301u\u0308x"), 2), text("aé\u200Be\u0301u\u0308\u200Bx"));
}

}  // namespace
}  // namespace quorvel
