#include "Foundation/Text.h"
#include "Spreadsheet/DataTable.h"
#include "Spreadsheet/Rows.h"

#include <gmock/gmock.h>
#include <random>
#include <set>

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Numbers = std::vector<std::int64_t>;

std::vector<std::string> namesOf(std::vector<std::string> headers) {
    headers.emplace_back("~");  // a row of empty headers alone would be blank
    std::vector<std::string> names = DataTable(textRows({headers}), "").headers;
    names.pop_back();
    return names;
}

TEST(DataTable, takesTheFirstFilledRowAsHeaders) {
    const DataTable table(textRows({{}, {" ", "\t"}, {" Name ", "Cost\n"}, {"Fox", " 3 "}, {"", ""}, {"Owl"}}),
                          "deck.csv");
    EXPECT_THAT(table.headers, ElementsAre("Name", "Cost"));
    EXPECT_EQ(table.rows, (TextRows{{"Fox", " 3 "}, {"Owl"}})) << "body cells aren't trimmed";
    EXPECT_EQ(table.rows.cell(1, 1), "");
    EXPECT_EQ(table.rowNumbers, (Numbers{4, 6}));
    EXPECT_EQ(table.sourceName, "deck.csv");
}

TEST(DataTable, isEmptyWhenAllRowsAreBlank) {
    for (const RowList& rows : {RowList{}, RowList{{}}, RowList{{"", " \u00A0\t"}, {}}}) {
        const DataTable table(textRows(rows), "x");
        EXPECT_THAT(table.headers, IsEmpty());
        EXPECT_EQ(table.rows.rowCount(), 0u);
        EXPECT_THAT(table.rowNumbers, IsEmpty());
    }
}

TEST(DataTable, countsALineBreakAsFilled) {
    const DataTable table(textRows({{"a"}, {"\n"}, {" \r "}, {" "}}), "");
    EXPECT_EQ(table.rowNumbers, (Numbers{2, 3}));
}

TEST(DataTable, mayHaveHeadersAlone) {
    const DataTable table(textRows({{"a", "b"}, {"", ""}, {}}), "");
    EXPECT_THAT(table.headers, ElementsAre("a", "b"));
    EXPECT_EQ(table.rows.rowCount(), 0u);
}

TEST(DataTable, makesColumnsForLongerRows) {
    const DataTable table(textRows({{"a", "b"}, {"1", "2", "3"}}), "");
    EXPECT_THAT(table.headers, ElementsAre("a", "b", "Column 3"));
    const DataTable blankDoesNotCount(textRows({{"a"}, {"1"}, {"", "", "", ""}}), "");
    EXPECT_THAT(blankDoesNotCount.headers, ElementsAre("a"));
}

TEST(DataTable, makesNamesUnique) {
    EXPECT_THAT(namesOf({"Name", "name", "NAME"}), ElementsAre("Name", "name 2", "NAME 3"));
    EXPECT_THAT(namesOf({"", ""}), ElementsAre("Column 1", "Column 2"));
    EXPECT_THAT(namesOf({"Column 2", ""}), ElementsAre("Column 2", "Column 2 2"));
    EXPECT_THAT(namesOf({"a 2", "a", "a", "a"}), ElementsAre("a 2", "a", "a 3", "a 4"));
    EXPECT_THAT(namesOf({"a", "a", "a 2", "a 2"}), ElementsAre("a", "a 2", "a 2 2", "a 2 3"));
    EXPECT_THAT(namesOf({"É", "é"}), ElementsAre("É", "é 2"));
    EXPECT_THAT(namesOf({"Big  Name", "e\u0301"}), ElementsAre("Big  Name", "e\u0301"));
}

TEST(DataTable, namesColumnsAsTheSimpleRuleDoes) {
    std::mt19937 random(7);
    constexpr std::array<const char*, 9> pool{"a", "A", "a 2", "A 3", "", "Column 3", "column 3 2", "b", "a 2 2"};
    for (int repetition = 0; repetition < 300; ++repetition) {
        std::vector<std::string> headers(1 + random() % 40);
        for (auto& header : headers) header = pool[random() % pool.size()];

        std::set<std::string> used;
        std::vector<std::string> expected;
        for (std::size_t column = 0; column < headers.size(); ++column) {
            const std::string plain =
                headers[column].empty() ? "Column " + std::to_string(column + 1) : headers[column];
            std::string name = plain;
            for (int number = 2; used.contains(Text::lowercased(name)); ++number)
                name = plain + " " + std::to_string(number);
            used.insert(Text::lowercased(name));
            expected.push_back(name);
        }
        ASSERT_EQ(namesOf(headers), expected);
    }
}

TEST(DataTable, names20000EqualColumns) {
    const auto names = namesOf(std::vector<std::string>(20'000, "Stat"));
    EXPECT_EQ(names.front(), "Stat");
    EXPECT_EQ(names.back(), "Stat 20000");
}

TEST(DataTable, staysSmallForFarCorners) {
    TextRows rows;
    rows.appendCell("first");
    rows.endRow();
    for (int i = 0; i < 1'000'000; ++i) rows.endRow();
    for (int i = 0; i < 16'383; ++i) rows.endCell();
    rows.appendCell("last");
    rows.endRow();
    for (int i = 0; i < 1'000'000; ++i) {
        rows.appendCell("x");
        rows.endRow();
    }
    const DataTable table(std::move(rows), "");
    EXPECT_EQ(table.headers.size(), 16'384u);
    EXPECT_EQ(table.rowNumbers.front(), 1'000'002);
    EXPECT_EQ(table.rows.cell(0, 16'383), "last");
    EXPECT_EQ(table.rows.cellCount(1), 1u) << "cells that were never written aren't stored";
    EXPECT_EQ(table.rows.cell(1, 16'383), "");
}

TEST(DataTable, repairsWhatItIsGiven) {
    const TextRows rows{{"1", "2", "3"}, {"4"}, {}};
    const DataTable table({"a", "b"}, rows, "x", Numbers{5, 7, 9});
    EXPECT_EQ(table.rows, (TextRows{{"1", "2"}, {"4"}, {}}));
    EXPECT_EQ(table.rowNumbers, (Numbers{5, 7, 9}));
    EXPECT_EQ(DataTable({"a", "b"}, rows, "x").rowNumbers, (Numbers{2, 3, 4}));
    EXPECT_EQ(DataTable({"a", "b"}, rows, "x", Numbers{5, 7}).rowNumbers, (Numbers{2, 3, 4}));
    const DataTable none({}, rows, "x", Numbers{5, 7, 9});
    EXPECT_EQ(none.rows.rowCount(), 0u) << "a table without headers has no rows";
    EXPECT_THAT(none.rowNumbers, IsEmpty());
}

TEST(DataTable, comparesWhatIsSeen) {
    const DataTable table({"a", "b"}, TextRows{{"1", ""}, {}}, "x");
    EXPECT_EQ(table, DataTable({"a", "b"}, (TextRows{{"1"}, {"", ""}}), "x")) << "a missing cell is empty";
    EXPECT_EQ(table, DataTable({"a", "b"}, (TextRows{{"1", "", "cut"}, {}}), "x"));
    EXPECT_NE(table, DataTable({"a", "b"}, (TextRows{{"1", "2"}, {}}), "x"));
    EXPECT_NE(table, DataTable({"a", "b"}, (TextRows{{"1"}, {"", "2"}}), "x"));
    EXPECT_NE(table, DataTable({"a", "c"}, (TextRows{{"1"}, {}}), "x"));
    EXPECT_NE(table, DataTable({"a", "b"}, (TextRows{{"1"}}), "x"));
    EXPECT_NE(table, DataTable({"a", "b"}, (TextRows{{"1"}, {}}), "y"));
    EXPECT_NE(table, DataTable({"a", "b"}, (TextRows{{"1"}, {}}), "x", Numbers{2, 4}));
}

}  // namespace
}  // namespace quorvel
