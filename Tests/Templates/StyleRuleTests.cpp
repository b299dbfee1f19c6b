#include "Cards/MakeCard.h"
#include "Templates/StyleRule.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

using Match = StyleRule::Match;

bool matches(Match match, std::string_view value, std::string_view cell) {
    const StyleRule rule("Kind", match, std::string(value), std::nullopt, std::nullopt, std::nullopt, false);
    return rule.matches(makeCard({{"Kind", cell}}, {}));
}

TEST(StyleRule, Equals) {
    EXPECT_TRUE(matches(Match::equals, "Gold", "gold"));
    EXPECT_TRUE(matches(Match::equals, "Café", "CAFE"));
    EXPECT_TRUE(matches(Match::equals, " gold\t", "\n gold \r\n"));
    EXPECT_TRUE(matches(Match::equals, "", ""));
    EXPECT_TRUE(matches(Match::equals, "", " \n\u00a0"));
    EXPECT_TRUE(matches(Match::equals, "  ", ""));
    EXPECT_FALSE(matches(Match::equals, "gold\n", "gold"));
    EXPECT_FALSE(matches(Match::equals, "gold", "golden"));
    EXPECT_FALSE(matches(Match::equals, "", "gold"));
    EXPECT_FALSE(matches(Match::equals, "gold", ""));
}

TEST(StyleRule, Contains) {
    EXPECT_TRUE(matches(Match::contains, "OLD", "golden"));
    EXPECT_TRUE(matches(Match::contains, "cafe", "Le Café noir"));
    EXPECT_TRUE(matches(Match::contains, " gold", "red gold"));
    EXPECT_FALSE(matches(Match::contains, " gold", "gold"));
    EXPECT_FALSE(matches(Match::contains, "gold ", "gold \n"));
    EXPECT_FALSE(matches(Match::contains, "", "gold"));
    EXPECT_FALSE(matches(Match::contains, "", ""));
    EXPECT_FALSE(matches(Match::contains, "golden", "gold"));
}

TEST(StyleRule, Emptiness) {
    for (const char* cell : {"", " ", "\t\n\u2009"}) {
        EXPECT_TRUE(matches(Match::isEmpty, "ignored", cell));
        EXPECT_FALSE(matches(Match::isNotEmpty, "ignored", cell));
    }
    EXPECT_FALSE(matches(Match::isEmpty, "", " 0 "));
    EXPECT_TRUE(matches(Match::isNotEmpty, "", " 0 "));
}

TEST(StyleRule, LooksItsFieldUpAsPlaceholdersDo) {
    const Card card = makeCard({{"Kind", "tool"}, {"Price", ""}}, FieldMapping{{{"type", "Kind"}, {"cost", "Price"}}});
    const auto rule = [](std::string field, Match match, std::string value = "") {
        return StyleRule(std::move(field), match, std::move(value), std::nullopt, std::nullopt, std::nullopt, false);
    };
    EXPECT_TRUE(rule(" TYPE ", Match::equals, "Tool").matches(card));
    EXPECT_TRUE(rule("kind", Match::equals, "Tool").matches(card));
    EXPECT_TRUE(rule("cost", Match::isEmpty).matches(card));
    EXPECT_TRUE(rule("no such name", Match::isEmpty).matches(card));
    EXPECT_TRUE(rule("no such name", Match::equals, "").matches(card));
    EXPECT_FALSE(rule("no such name", Match::isNotEmpty).matches(card));
    EXPECT_TRUE(rule("", Match::isEmpty).matches(Card()));
}

TEST(StyleRule, EachHasItsOwnIdentity) {
    const auto make = [] {
        return StyleRule("type", Match::equals, "x", RGBA::black, RGBA::white, std::nullopt, true);
    };
    StyleRule first = make();
    const StyleRule second = make();
    EXPECT_NE(first.id, second.id);
    EXPECT_FALSE(first == second);
    first.id = second.id;
    EXPECT_EQ(first, second);
    EXPECT_EQ(first.fill, RGBA::black);
    EXPECT_EQ(first.stroke, RGBA::white);
    EXPECT_EQ(first.textColor, std::nullopt);
    EXPECT_TRUE(first.hide);
}

}  // namespace
}  // namespace quorvel
