#include "Cards/MakeCard.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

TEST(Card, FindsFieldsThenColumns) {
    const Card card =
        makeCard({{"Card Name", "Mule"}, {"Price", "3"}, {"Cost", "5"}, {"Größe", "tall"}, {"Notes", "n"}},
                 FieldMapping{{{"title", "Card Name"}, {"cost", "Price"}, {"art", "Gone"}}});
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"title", "Mule"},
        {"Title", "Mule"},
        {" TITLE\t", "Mule"},
        {"\u00a0title", "Mule"},
        {"Card Name", "Mule"},
        {"card name", "Mule"},
        {"cost", "3"},
        {"Cost", "3"},
        {"COST", "3"},
        {"Price", "3"},
        {"price", "3"},
        {"größe", "tall"},
        {"GRÖSSE", "tall"},
        {"Gro\u0308ße", "tall"},
        {"notes", "n"},
        {" Notes ", "n"},
        {"art", ""},
        {"Gone", ""},
        {"nope", ""},
        {"", ""},
        {"  ", ""},
        {"title\n", ""},
        {"card  name", ""},
        {"\xff", ""},
    };
    for (const auto& [name, value] : cases) EXPECT_EQ(card.value(name), value) << '"' << name << '"';
    EXPECT_EQ(card.title(), "Mule");
}

TEST(Card, AFieldWinsOverAColumnOfItsName) {
    const Card card = makeCard({{"Title", "column"}, {"Name", "field"}}, FieldMapping{{{"title", "Name"}}});
    EXPECT_EQ(card.value("title"), "field");
    EXPECT_EQ(card.value("Title"), "field");
    EXPECT_EQ(card.value("Name"), "field");
}

TEST(Card, AnUnmappedFieldFallsBackOnTheColumnOfItsName) {
    EXPECT_EQ(makeCard({{"Title", "column"}}, {}).title(), "column");
}

TEST(Card, AFreeColumnAnswersToItsHeader) {
    const Card card = makeCard({{"Image", "a.png"}, {"Art", "b.png"}});
    EXPECT_EQ(card.value("art"), "b.png");
    EXPECT_EQ(card.value("Image"), "a.png");
}

TEST(Card, WritesOutCellsAndFields) {
    TextRows rows;
    rows.appendCell("only");
    rows.endRow();
    const Deck deck(DataTable({"Name", "Qty"}, rows, "t.csv"), FieldMapping{{{"title", "Name"}, {"text", "Gone"}}});
    const Card& card = deck.cards.at(0);
    EXPECT_EQ(card.cells(), (std::map<std::string, std::string>{{"Name", "only"}, {"Qty", ""}}));
    EXPECT_EQ(card.fields(), (std::map<std::string, std::string>{{"title", "only"}}));
}

TEST(Card, WithoutASourceIsEmpty) {
    const Card card;
    EXPECT_EQ(card.value("title"), "");
    EXPECT_TRUE(card.cells().empty());
    EXPECT_TRUE(card.fields().empty());
    EXPECT_EQ(card, Card());
    EXPECT_FALSE(card == makeCard({{"Name", ""}}));
}

TEST(Card, ARowThatIsNotThereIsEmpty) {
    Card card = makeCard({{"Name", "Mule"}});
    for (const std::int64_t id : {std::int64_t{1}, std::int64_t{-1}, INT64_MAX, INT64_MIN}) {
        card.id = id;
        EXPECT_EQ(card.title(), "");
    }
}

TEST(Card, EqualityLooksAtTheRowNotAtTheTable) {
    const Card card = makeCard({{"Name", "Mule"}, {"Cost", "1"}});
    EXPECT_EQ(card, makeCard({{"Name", "Mule"}, {"Cost", "1"}}));
    EXPECT_EQ(card, makeCard({{"Cost", "1"}, {"Name", "Mule"}}));
    EXPECT_FALSE(card == makeCard({{"Name", "Mule"}, {"Cost", "2"}}));
    EXPECT_FALSE(card == makeCard({{"Name", "Mule"}, {"Price", "1"}}));
    EXPECT_FALSE(card == makeCard({{"Name", "Mule"}}));
    EXPECT_FALSE(card == makeCard({{"Name", "Mule"}, {"Cost", "1"}}, {}));
    Card other = card;
    other.rowNumber += 1;
    EXPECT_FALSE(card == other);
    other = card;
    other.quantity += 1;
    EXPECT_FALSE(card == other);
}

TEST(Card, OutlivesItsDeck) {
    std::string_view value;
    Card card;
    {
        const Deck deck(oneRowTable({{"Name", "a text long enough not to be stored in place"}}), {});
        card = deck.cards.at(0);
        value = deck.cards.at(0).value("Name");
    }
    EXPECT_EQ(card.value("Name"), value);
}

}  // namespace
}  // namespace quorvel
