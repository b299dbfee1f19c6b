#include "DataTab/CellText.h"
#include "DataTab/DataTableModel.h"

#include <gtest/gtest.h>
#include <string>

namespace quorvel {
namespace {

TEST(CellText, standsOnOneLine) {
    EXPECT_EQ(CellText::oneLine("Pear"), QStringLiteral("Pear"));
    EXPECT_EQ(CellText::oneLine(""), QString());
    EXPECT_EQ(CellText::oneLine("two\nlines"), QStringLiteral("two lines"));
    EXPECT_EQ(CellText::oneLine("a\tb\rc\vd\x01"
                                "e"),
              QStringLiteral("a b c d e"));
    EXPECT_EQ(CellText::oneLine("a\u2028b\u2029c\u0085d"), QStringLiteral("a b c d"));
    EXPECT_EQ(CellText::oneLine("👩‍🌾 שלום"), QStringLiteral("👩‍🌾 שלום"));
}

TEST(CellText, endsALongCellWithAnEllipsis) {
    EXPECT_EQ(CellText::oneLine(std::string(300, 'a')), QString(300, u'a'));
    EXPECT_EQ(CellText::oneLine(std::string(301, 'a')), QString(300, u'a') + u'…');
    EXPECT_EQ(CellText::oneLine(std::string(50'000'000, 'a')), QString(300, u'a') + u'…');
}

TEST(CellText, neverCutsACharacterInTwo) {
    std::string emoji;
    for (int i = 0; i < 200; ++i) emoji += "😀";
    for (const std::string& odd : {emoji, "a" + emoji, "é" + emoji, "漢" + emoji}) {
        const QString line = CellText::oneLine(odd);
        EXPECT_TRUE(line.endsWith(u'…'));
        EXPECT_LE(line.size(), CellText::longestLine + 1);
        EXPECT_FALSE(line[line.size() - 2].isHighSurrogate());
        EXPECT_FALSE(line.contains(QChar::ReplacementCharacter));
    }
}

TEST(CellText, takesAnyBytes) {
    EXPECT_EQ(CellText::oneLine("\xff\xfe").size(), 2);
    EXPECT_TRUE(CellText::oneLine(std::string(5000, '\x80')).endsWith(u'…'));
}

TEST(CellText, showsMarkupInATooltipAsItIs) {
    EXPECT_FALSE(CellText::toolTip("<img src=x> & <b>bold</b>").contains(QLatin1String("<b>")));
    EXPECT_TRUE(CellText::toolTip("one\ntwo").contains(QLatin1String("<br>")));
    EXPECT_LT(CellText::toolTip(std::string(1'000'000, 'a')).size(), 3000);
}

class CopiedCells : public testing::Test {
protected:
    std::shared_ptr<const DataTable> table = std::make_shared<const DataTable>(
        std::vector<std::string>{"Name", "Text", "Qty"},
        TextRows{{"Pear", "two\nlines", "1"}, {"Plum", "tab\there", "2"}, {"Fig", "\"quoted\" text", ""}, {"Nut"}},
        "a.csv");
    DataTableModel model;

    CopiedCells() { model.replace(table); }
    QItemSelection range(int top, int left, int bottom, int right) {
        return {model.index(top, left), model.index(bottom, right)};
    }
};

TEST_F(CopiedCells, areSeparatedByTabsAndLineFeeds) {
    EXPECT_EQ(CellText::copied(*table, range(0, 0, 1, 1)), "2\tPear\n3\tPlum");
    EXPECT_EQ(CellText::copied(*table, range(2, 3, 3, 3)), "\n");
    EXPECT_EQ(CellText::copied(*table, QItemSelection()), "");
}

TEST_F(CopiedCells, areWholeWhenTheyHaveLineEndsAndTabs) {
    EXPECT_EQ(CellText::copied(*table, range(0, 2, 2, 3)),
              "\"two\nlines\"\t1\n\"tab\there\"\t2\n\"\"\"quoted\"\" text\"\t");
}

TEST_F(CopiedCells, areAsTheyAreWhenAlone) {
    EXPECT_EQ(CellText::copied(*table, range(0, 2, 0, 2)), "two\nlines");
    EXPECT_EQ(CellText::copied(*table, range(2, 2, 2, 2)), "\"quoted\" text");
}

TEST_F(CopiedCells, leaveEmptyWhatLiesBetweenThem) {
    QItemSelection apart = range(0, 1, 0, 1);
    apart.merge(range(2, 3, 2, 3), QItemSelectionModel::Select);
    apart.merge(range(3, 1, 3, 1), QItemSelectionModel::Select);
    EXPECT_EQ(CellText::copied(*table, apart), "Pear\t\n\t\nNut\t");
}

TEST_F(CopiedCells, ofATableThatHasShrunkAreThoseThatAreLeft) {
    const DataTable smaller({"Name"}, {{"Pear"}}, "a.csv");
    EXPECT_EQ(CellText::copied(smaller, range(0, 0, 3, 3)), "2\tPear");
}

}  // namespace
}  // namespace quorvel
