#include "Spreadsheet/Rows.h"
#include "Spreadsheet/TextRows.h"

#include <gtest/gtest.h>
#include <utility>

namespace quorvel {
namespace {

TEST(TextRows, holdsRaggedRows) {
    const TextRows rows{{"a", "", "c"}, {}, {"d"}};
    ASSERT_EQ(rows.rowCount(), 3u);
    EXPECT_EQ(rows.cellCount(0), 3u);
    EXPECT_EQ(rows.cellCount(1), 0u);
    EXPECT_EQ(rows.cell(0, 0), "a");
    EXPECT_EQ(rows.cell(0, 1), "");
    EXPECT_EQ(rows.cell(0, 2), "c");
    EXPECT_EQ(rows.cell(2, 0), "d");
    EXPECT_EQ(rows.cell(1, 0), "") << "beyond the end of a row";
    EXPECT_EQ(rows.cell(2, std::size_t{1} << 60), "");
}

TEST(TextRows, isWrittenInPieces) {
    TextRows rows;
    rows.openText() += "a";
    rows.openText() += "b";
    rows.endCell();
    rows.appendCell("c");
    rows.endRow();
    rows.endCell();
    rows.endRow();
    EXPECT_EQ(rows, (TextRows{{"ab", "c"}, {""}}));
}

TEST(TextRows, takesOverALayout) {
    EXPECT_EQ(TextRows("abcd", {1, 1, 4}, {2, 2, 3}), (TextRows{{"a", ""}, {}, {"bcd"}}));
    EXPECT_EQ(TextRows("", {}, {}), TextRows());
}

TEST(TextRows, comparesCells) {
    const TextRows rows{{"ab", "c"}};
    EXPECT_NE(rows, (TextRows{{"a", "bc"}}));
    EXPECT_NE(rows, (TextRows{{"ab", "c", ""}}));
    EXPECT_NE(rows, (TextRows{{"ab", "c"}, {}}));
    EXPECT_NE(rows, (TextRows{{"ab", "d"}}));
}

TEST(TextRows, keepsAndCuts) {
    TextRows rows{{"a", "b"}, {"c"}, {}, {"d", "e", "f"}};
    rows.keepRows({0, 2, 3});
    EXPECT_EQ(rows, (TextRows{{"a", "b"}, {}, {"d", "e", "f"}}));
    rows.cutRows(2);
    EXPECT_EQ(rows, (TextRows{{"a", "b"}, {}, {"d", "e"}}));
    rows.keepRows({2});
    EXPECT_EQ(rows, (TextRows{{"d", "e"}}));
    rows.keepRows({});
    EXPECT_EQ(rows.rowCount(), 0u);
}

TEST(TextRows, unifiesLineEndsInsideCells) {
    TextRows rows{{"a\r\nb", "c\rd", "\r", "\n", "\r\n\r\r\n"}, {"x\r"}, {"\ny", "z"}};
    rows.unifyLineEnds();
    EXPECT_EQ(rows, (TextRows{{"a\nb", "c\nd", "\n", "\n", "\n\n\n"}, {"x\n"}, {"\ny", "z"}}))
        << "a CR at the end of a cell and an LF at the start of the next are two";
    TextRows cut{{"a\r\n", "b\r\n"}, {"c\r\n"}};
    cut.cutRows(1);
    cut.unifyLineEnds();
    EXPECT_EQ(cut, (TextRows{{"a\n"}, {"c\n"}}));
}

/// Two rows of six cells: a . b . . . and . . . . . a, and a row without any between them.
TextRows sparseRows() {
    TextList texts;
    for (const char* text : {"a", " ", "b\r\n"}) texts.append(text);
    return {std::move(texts), {{0, 0}, {2, 2}, {1, 3}, {0, 5}}, {{0, 2, 6}, {0, 0, 6}, {2, 2, 6}}};
}

TEST(TextRows, sharesTextsBetweenSparseCells) {
    const TextRows rows = sparseRows();
    EXPECT_EQ(rows, (TextRows{{"a", "", "b\r\n", "", "", ""}, {"", "", "", "", "", ""}, {"", "", "", " ", "", "a"}}));
    EXPECT_EQ(rows.cell(0, 0).data(), rows.cell(2, 5).data());
    EXPECT_EQ(rows.cell(0, 6), "");
    EXPECT_EQ(rows.cell(0, std::size_t{1} << 40), "");
}

TEST(TextRows, unifiesLineEndsOfSharedTextsOnce) {
    TextRows rows = sparseRows();
    rows.unifyLineEnds();
    EXPECT_EQ(rows, (TextRows{{"a", "", "b\n", "", "", ""}, {"", "", "", "", "", ""}, {"", "", "", " ", "", "a"}}));
}

TEST(TextRows, cutsSparseRows) {
    TextRows rows = sparseRows();
    rows.cutRows(4);
    EXPECT_EQ(rows, (TextRows{{"a", "", "b\r\n", ""}, {"", "", "", ""}, {"", "", "", " "}}));
    EXPECT_EQ(rows.filledRows(), std::vector<std::size_t>{0});
    rows.cutRows(0);
    EXPECT_EQ(rows, (TextRows{{}, {}, {}}));
}

TEST(TextRows, findsFilledRows) {
    EXPECT_EQ(sparseRows().filledRows(), (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ((TextRows{{}, {"", "\t "}, {"", "\n"}, {" "}, {"x"}}.filledRows()), (std::vector<std::size_t>{2, 4}));
    TextRows rows = sparseRows();
    rows.keepRows({1, 2});
    EXPECT_EQ(rows.filledRows(), std::vector<std::size_t>{1});
    EXPECT_EQ(rows.cell(1, 5), "a");
}

}  // namespace
}  // namespace quorvel
