#include "SheetsTab/SheetSummary.h"

#include <gtest/gtest.h>
#include <vector>

namespace quorvel {

namespace {

Deck deckOf(const std::vector<std::int64_t>& quantities) {
    Deck deck;
    for (const std::int64_t quantity : quantities) {
        Card card;
        card.quantity = quantity;
        deck.cards.push_back(card);
    }
    return deck;
}

}  // namespace

TEST(SheetSummaryTest, PagesAreCountedByCopies) {
    const struct {
        std::vector<std::int64_t> quantities;
        std::int64_t cards;
        std::int64_t pages;
    } cases[] = {
        {{}, 0, 0},
        {{0, 0}, 0, 0},
        {{1}, 1, 1},
        {{9}, 9, 1},
        {{9, 1}, 10, 2},
        {{0, 20, 10}, 30, 4},
        {std::vector<std::int64_t>(5000, 999), 4'995'000, 555'000},
    };
    for (const auto& each : cases) {
        const auto summary = SheetSummary::make({}, {}, deckOf(each.quantities));
        ASSERT_TRUE(summary);
        EXPECT_EQ(summary->cards, each.cards);
        EXPECT_EQ(summary->pages, each.pages) << each.cards << " cards";
    }
}

TEST(SheetSummaryTest, ThePageIsAsTurned) {
    const auto portrait = SheetSummary::make({}, {.orientation = Orientation::portrait}, {});
    ASSERT_TRUE(portrait);
    EXPECT_EQ(portrait->pageSize, Size(612, 792));
    EXPECT_FALSE(portrait->landscape);
    EXPECT_EQ(portrait->columns, 3);
    EXPECT_EQ(portrait->rows, 3);

    const auto landscape = SheetSummary::make({}, {.orientation = Orientation::landscape}, {});
    ASSERT_TRUE(landscape);
    EXPECT_EQ(landscape->pageSize, Size(792, 612));
    EXPECT_TRUE(landscape->landscape);
    EXPECT_EQ(landscape->columns, 4);
    EXPECT_EQ(landscape->rows, 2);
}

TEST(SheetSummaryTest, ACardThatDoesNotFitHasNone) {
    CardTemplate large;
    large.size = CardSize::custom(400, 500);
    EXPECT_FALSE(SheetSummary::make(large, {}, deckOf({3})));
}

}  // namespace quorvel
