#include "Cards/Deck.h"
#include "Cards/Quantity.h"

#include <gmock/gmock.h>

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const FieldMapping nameAndQuantity{{{"title", "Name"}, {"quantity", "Qty"}}};

DataTable table() {
    return DataTable({"Name", "Qty"}, {{"a", "2"}, {"b", "many"}, {"c", "0"}, {"d"}, {"e", "-3"}, {"f", "x3"}},
                     "deck.csv", std::vector<std::int64_t>{2, 3, 5, 8, 9, 12});
}

std::vector<std::int64_t> ids(const std::vector<Card>& cards) {
    std::vector<std::int64_t> result;
    for (const Card& card : cards) result.push_back(card.id);
    return result;
}

TEST(Deck, IsEmptyWithoutRows) {
    EXPECT_EQ(Deck(), Deck(DataTable({"Name"}, TextRows(), "t.csv"), nameAndQuantity));
    EXPECT_THAT(Deck().cards, IsEmpty());
    EXPECT_THAT(Deck().badQuantities, IsEmpty());
}

TEST(Deck, KeepsEveryRowInOrder) {
    const Deck deck(table(), nameAndQuantity);
    std::vector<std::int64_t> rows;
    std::vector<std::int64_t> quantities;
    std::string titles;
    for (const Card& card : deck.cards) {
        rows.push_back(card.rowNumber);
        quantities.push_back(card.quantity);
        titles += card.title();
    }
    EXPECT_THAT(ids(deck.cards), ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_THAT(rows, ElementsAre(2, 3, 5, 8, 9, 12));
    EXPECT_THAT(quantities, ElementsAre(2, 1, 0, 1, 1, 3));
    EXPECT_EQ(titles, "abcdef");
    EXPECT_THAT(deck.badQuantities, ElementsAre(3, 9));
}

TEST(Deck, MissingRowNumbersCountFromTwo) {
    DataTable short_ = table();
    short_.rowNumbers = {7};
    const Deck deck(short_, nameAndQuantity);
    EXPECT_EQ(deck.cards[0].rowNumber, 7);
    EXPECT_EQ(deck.cards[1].rowNumber, 3);
    EXPECT_EQ(deck.cards[5].rowNumber, 7);
}

TEST(Deck, AnUnmappedQuantityIsOneCopyWhateverTheHeadersSay) {
    const Deck deck(DataTable({"Quantity"}, {{"7"}, {"nonsense"}}, "t.csv"), FieldMapping{{{"title", "Quantity"}}});
    EXPECT_THAT(deck.badQuantities, IsEmpty());
    EXPECT_EQ(Deck::totalCopies(deck.cards), 2);
}

TEST(Deck, PrintListRepeatsInPlace) {
    const Deck deck(table(), nameAndQuantity);
    const std::vector<Card> printed = Deck::printedCards(deck.cards);
    EXPECT_THAT(ids(printed), ElementsAre(0, 0, 1, 3, 4, 5, 5, 5));
    EXPECT_EQ(printed[0], printed[1]);
    EXPECT_EQ(Deck::totalCopies(deck.cards), 8);
    EXPECT_THAT(ids(Deck::uniquePrintedCards(printed)), ElementsAre(0, 1, 3, 4, 5));
}

TEST(Deck, UniqueCardsKeepTheOrderOfFirstPlaces) {
    const Deck deck(table(), nameAndQuantity);
    const std::vector<Card>& c = deck.cards;
    EXPECT_THAT(ids(Deck::uniquePrintedCards({c[3], c[0], c[3], c[1], c[0]})), ElementsAre(3, 0, 1));
    EXPECT_THAT(Deck::uniquePrintedCards({}), IsEmpty());
}

TEST(Deck, AllZeroPrintsNothing) {
    const Deck deck(DataTable({"Name", "Qty"}, {{"a", "0"}, {"b", "x0"}}, "t.csv"), nameAndQuantity);
    EXPECT_EQ(Deck::totalCopies(deck.cards), 0);
    EXPECT_THAT(Deck::printedCards(deck.cards), IsEmpty());
    EXPECT_EQ(deck.cards.size(), 2u);
}

TEST(Deck, APartOfThePrintListIsThatPartOfTheWhole) {
    const Deck deck(table(), nameAndQuantity);
    const std::vector<Card> whole = Deck::printedCards(deck.cards);
    const auto total = std::int64_t(whole.size());
    for (std::int64_t first = 0; first <= total + 2; ++first)
        for (std::int64_t count = 0; count <= total + 2; ++count) {
            const auto from = whole.begin() + std::min(first, total);
            const auto to = whole.begin() + std::min(first + count, total);
            EXPECT_EQ(Deck::printedCards(deck.cards, first, count), std::vector<Card>(from, to))
                << first << " " << count;
        }
}

TEST(Deck, CopiesShareOneTable) {
    const Deck deck(table(), nameAndQuantity);
    const Deck copy = deck;
    EXPECT_EQ(copy, deck);
    for (const Card& card : copy.cards) EXPECT_EQ(card.source, deck.cards[0].source);
    EXPECT_EQ(Deck(table(), nameAndQuantity), deck);
    EXPECT_FALSE(Deck(table(), {}) == deck);
}

TEST(Deck, HoldsThousandsOfRowsAndHundredsOfColumns) {
    std::vector<std::string> headers;
    for (int i = 0; i < 300; ++i) headers.push_back("Column " + std::to_string(i));
    headers[150] = "Qty";
    TextRows rows;
    for (int row = 0; row < 5000; ++row) {
        for (int i = 0; i < 300; ++i) rows.appendCell(i == 150 ? std::to_string(row % 4) : std::to_string(i));
        rows.endRow();
    }
    const Deck deck(DataTable(headers, rows, "big.csv"), FieldMapping::guess(headers));
    EXPECT_EQ(Deck::totalCopies(deck.cards), 7500);
    EXPECT_EQ(Deck::printedCards(deck.cards).size(), 7500u);
    for (const Card& card : deck.cards) {
        ASSERT_EQ(card.value("column 299"), "299");
        ASSERT_EQ(card.value("no such column"), "");
    }
}

}  // namespace
}  // namespace quorvel
