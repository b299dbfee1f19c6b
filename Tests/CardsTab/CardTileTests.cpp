#include "Cards/Deck.h"
#include "CardsTab/CardTile.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

CardTile tile(const std::string& title, const std::string& type, const std::string& text, std::int64_t printed = 1) {
    const auto table = std::make_shared<const DataTable>(
        DataTable({"Name", "Type", "Text"}, TextRows{{title, type, text}}, "cards.csv", std::vector<std::int64_t>{7}));
    return {Deck(table, FieldMapping::guess(table->headers)).cards.front(), {}, 0.7, printed};
}

TEST(CardTile, CaptionIsThePlainTitle) {
    struct Row {
        const char* title;
        const char* caption;
    };
    for (const Row& row :
         {Row{"Pear", "Pear"}, Row{"**Big** *Pear*", "Big Pear"}, Row{"{icon:coin} Pear", "[coin] Pear"},
          Row{"Two\nlines", "Two lines"}, Row{"", "Row 7"}, Row{"  ", "Row 7"}, Row{"Grüße 梨", "Grüße 梨"}})
        EXPECT_EQ(tile(row.title, "", "").caption().toStdString(), row.caption);
}

TEST(CardTile, BadgeCountsTheCopiesButOne) {
    EXPECT_EQ(tile("a", "", "", 0).badge(), QStringLiteral("×0"));
    EXPECT_EQ(tile("a", "", "", 1).badge(), QString());
    EXPECT_EQ(tile("a", "", "", 3).badge(), QStringLiteral("×3"));
    EXPECT_EQ(tile("a", "", "", 999).badge(), QStringLiteral("×999"));
}

TEST(CardTile, SaysEverythingToAScreenReader) {
    EXPECT_EQ(tile("**Pear**", "Fruit", "Gain 2 {icon:coin}. **Draw** a card.", 3).accessibleLabel().toStdString(),
              "Pear, Fruit, 3 copies. Gain 2 [coin]. Draw a card.");
    EXPECT_EQ(tile("", "", "", 1).accessibleLabel().toStdString(), ", , 1 copies. ");
    EXPECT_EQ(CardTile::accessibleHint().toStdString(), "Double-click to edit the template with this card");
}

}  // namespace
}  // namespace quorvel
