#include "Cards/Markup.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace quorvel {
namespace {

using testing::AllOf;
using testing::Each;
using testing::SizeIs;

std::string joined(const std::vector<std::string>& names) {
    std::string result;
    for (const std::string& name : names) result += (result.empty() ? "" : " ") + name;
    return result;
}

TEST(IconNames, ReadsRowsInWords) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {" ,; \n\t", ""},
        {"coin", "coin"},
        {"coin, coin, star", "coin coin star"},
        {"coin coin", "coin coin"},
        {"moon, arrow", "moon arrow"},
        {"moon;arrow\nkey\tsun", "moon arrow key sun"},
        {"Coin!", "coin"},
        {"[icons]", "icons"},
        {"ÉTÉ", "été"},
        {"coin-2_b", "coin-2_b"},
        {"!?", ""},
        // Counts before and after.
        {"2 leaf", "leaf leaf"},
        {"x3 coin", "coin coin coin"},
        {"3x coin", "coin coin coin"},
        {"×3 coin", "coin coin coin"},
        {"3× coin", "coin coin coin"},
        {"x3x coin", "coin coin coin"},
        {"X3 COIN", "coin coin coin"},
        {"coin x3", "coin coin coin"},
        {"coin ×3", "coin coin coin"},
        {"coin, x3", "coin coin coin"},
        {"coin x3x", "coin coin coin"},
        {"coin 3x", "coin"},
        {"coin 3x leaf", "coin leaf leaf leaf"},
        {"coin 2 leaf", "coin leaf leaf"},
        {"coin x2 x2", "coin coin coin"},
        {"coin x0", "coin"},
        {"coin x1", "coin"},
        {"coin 2 x3 leaf", "coin leaf leaf leaf"},
        {"2 3 leaf", "leaf leaf leaf"},
        {"3", ""},
        {"coin 3", "coin"},
        {"0 coin", ""},
        {"0 coin star", "star"},
        {"star 0 coin x3", "star star star"},
        {"2 ! leaf", "leaf"},
        // Counts inside a name.
        {"coin*3", "coin coin coin"},
        {"coin*2; star", "coin coin star"},
        {"coin*0", ""},
        {"coin*-2", ""},
        {"coin*+2", "coin coin"},
        {"coin*two", "cointwo"},
        {"coin*", "coin"},
        {"*3", ""},
        {"a*2*3", "a23"},
        {"3xcoin", "coin coin coin"},
        {"2×leaf", "leaf leaf"},
        {"-2xcoin", ""},
        {"2xcoin*3", "coin coin"},
        {"5 2xcoin", "coin coin"},
        {"2xbox", "box box"},
        {"axe", "axe"},
        {"fox", "fox"},
        {"x", "x"},
        {"xx", "xx"},
        {"x coin", "x coin"},
        {"+3 coin", "3 coin"},
        {"-3 coin", "-3 coin"},
        {"x-3 coin", "x-3 coin"},
        // Line ends: a lone carriage return and a CR LF pair separate nothing.
        {"coin\r\nstar", "coinstar"},
        {"coin\rstar", "coinstar"},
        {"coin\u00a0star", "coinstar"},
        // Counts beyond 64 bits are names.
        {"9223372036854775808", "9223372036854775808"},
        {"99999999999999999999 coin", "99999999999999999999 coin"},
        {"coin*99999999999999999999", "coin99999999999999999999"},
        {"٣ coin", "٣ coin"},
        // A sign with a combining character on it is no sign.
        {"3x\u0301coin", "3x\u0301coin"},
        {"coin*\u03012", "coin2"},
        {"coin,\u0301star", "coinstar"},
    };
    for (const auto& [text, names] : cases) EXPECT_EQ(joined(Markup::iconNames(text)), names) << text;
}

TEST(IconNames, CapsEachNameAtFifty) {
    EXPECT_THAT(Markup::iconNames("100 coin"), SizeIs(50));
    EXPECT_THAT(Markup::iconNames("coin*100"), SizeIs(50));
    EXPECT_THAT(Markup::iconNames("100xcoin"), SizeIs(50));
    EXPECT_THAT(Markup::iconNames("9223372036854775807 coin"), SizeIs(50));
    EXPECT_THAT(Markup::iconNames("100 coin 100 star"), SizeIs(100));
    EXPECT_THAT(Markup::iconNames("coin x100"), SizeIs(100));
}

TEST(IconNames, InlineIconsWinOverWords) {
    const std::pair<std::string, std::string> cases[] = {
        {"{icon:coin} {icon:leaf}", "coin leaf"},
        {"3 {icon:coin} star", "coin"},
        {"**{icon:A}** x {ICON:b}", "a b"},
        {"\\{icon:coin}", "iconcoin"},
        {"{icon:}", "icon"},
    };
    for (const auto& [text, names] : cases) EXPECT_EQ(joined(Markup::iconNames(text)), names) << text;
}

TEST(IconNames, StopsAtItsMaximum) {
    std::string many;
    std::string inlines;
    std::string single;
    for (int i = 0; i < 100'000; ++i) {
        many += "50 coin ";
        inlines += "{icon:coin}";
        single += "coin,";
    }
    for (const std::string& text : {std::string("coin x9223372036854775807"), std::string("coin x9999 x9999"), many,
                                    inlines, single, "star " + many, std::string("coin x9999 x2 star star")}) {
        const auto names = Markup::iconNames(text);
        EXPECT_EQ(names.size(), Markup::maximumIconNames) << text.substr(0, 40);
    }
    EXPECT_THAT(Markup::iconNames("coin x9999"), AllOf(SizeIs(9'999), Each("coin")));
    EXPECT_THAT(Markup::iconNames("coin x10001"), AllOf(SizeIs(10'000), Each("coin")));
}

TEST(IconNames, TakesHostileTexts) {
    for (const std::string_view piece :
         {"x", "3x", "*", "*1", "coin*", "1 ", "x1 ", "×", "\r\n", "-", "{", "{icon:", "é ", "9", "*\u0301 "}) {
        std::string text;
        while (text.size() < 1'000'000) text += piece;
        EXPECT_LE(Markup::iconNames("coin " + text + " coin").size(), Markup::maximumIconNames) << piece;
    }
}

}  // namespace
}  // namespace quorvel
