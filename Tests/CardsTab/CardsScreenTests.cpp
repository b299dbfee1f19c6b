#include "CardsTab/CardsScreen.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

TEST(CardsScreen, IsChosenInOrder) {
    struct Row {
        bool source, error, cards, loading, table;
        CardsScreen screen;
    };
    for (const Row& row : {
             Row{false, false, false, false, false, CardsScreen::noSpreadsheet},
             Row{false, true, true, true, true, CardsScreen::noSpreadsheet},
             Row{true, true, false, false, false, CardsScreen::error},
             Row{true, true, false, true, false, CardsScreen::error},
             Row{true, true, false, false, true, CardsScreen::error},
             Row{true, true, true, false, true, CardsScreen::cards},
             Row{true, false, false, true, false, CardsScreen::loading},
             Row{true, false, false, true, true, CardsScreen::noCards},
             Row{true, false, false, false, true, CardsScreen::noCards},
             Row{true, false, true, false, true, CardsScreen::cards},
             Row{true, false, true, true, true, CardsScreen::cards},
         }) {
        DeckProject project;
        if (row.source) project.source = Bookmark();
        OpenDeck open;
        if (row.error) open._loadError = "no";
        if (row.cards) {
            auto deck = std::make_shared<Deck>();
            deck->cards.emplace_back();
            open._deck = deck;
        }
        open._isLoading = row.loading;
        if (row.table) open._table = std::make_shared<const DataTable>();
        EXPECT_EQ(cardsScreenFor(&project, open), row.screen) << &row;
    }
    EXPECT_EQ(cardsScreenFor(nullptr, OpenDeck()), CardsScreen::noSpreadsheet);
}

}  // namespace
}  // namespace quorvel
