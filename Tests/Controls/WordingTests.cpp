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

}  // namespace
}  // namespace quorvel
