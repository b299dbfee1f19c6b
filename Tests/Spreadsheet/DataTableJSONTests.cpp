#include "Spreadsheet/DataTableJSON.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

std::string failureOf(std::string_view text) {
    const auto table = dataTableFromJSON(*parseJSON(text));
    return table ? "none" : table.error().description();
}

TEST(DataTableJSON, writesRowsAsWideAsTheHeaders) {
    const DataTable table({"a", "b"}, TextRows{{"1"}, {"2", "3"}}, "deck.csv", {{4, 6}});
    EXPECT_EQ(toJSON(table), *parseJSON(R"({"headers": ["a", "b"], "rows": [["1", ""], ["2", "3"]],
                                            "sourceName": "deck.csv", "rowNumbers": [4, 6]})"));
    EXPECT_EQ(toJSON(DataTable()), *parseJSON(R"({"headers": [], "rows": [], "sourceName": "", "rowNumbers": []})"));
}

TEST(DataTableJSON, goesThereAndBack) {
    const DataTable table(TextRows{{"Name", "Ümlaut"}, {"a\n\"b\"", "", "3"}, {}, {"漢字"}}, "deck.csv");
    const auto back = dataTableFromJSON(*parseJSON(prettyJSON(toJSON(table))));
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, table);
}

TEST(DataTableJSON, repairsRows) {
    const auto table = dataTableFromJSON(*parseJSON(R"({"headers": ["a", "b"], "rows": [["1", "2", "3"], []]})"));
    ASSERT_TRUE(table);
    EXPECT_EQ(*table, DataTable({"a", "b"}, (TextRows{{"1", "2"}, {}}), ""));
    EXPECT_EQ(table->rowNumbers, (std::vector<std::int64_t>{2, 3}));
    const auto nulls =
        dataTableFromJSON(*parseJSON(R"({"headers": ["a"], "rows": [["1"]], "sourceName": null, "rowNumbers": null})"));
    ASSERT_TRUE(nulls);
    EXPECT_EQ(nulls->rowNumbers, (std::vector<std::int64_t>{2}));
    const auto wrongCount = dataTableFromJSON(*parseJSON(R"({"headers": ["a"], "rows": [["1"]], "rowNumbers": []})"));
    EXPECT_EQ(wrongCount->rowNumbers, (std::vector<std::int64_t>{2}));
}

TEST(DataTableJSON, pointsAtWhatIsWrong) {
    EXPECT_EQ(failureOf(R"({"rows": []})"), "headers is missing.");
    EXPECT_EQ(failureOf(R"({"headers": []})"), "rows is missing.");
    EXPECT_EQ(failureOf(R"({"headers": null, "rows": []})"), "headers must be a list.");
    EXPECT_EQ(failureOf(R"({"headers": [1], "rows": []})"), "headers[0] must be a text.");
    EXPECT_EQ(failureOf(R"({"headers": ["a"], "rows": {}})"), "rows must be a list.");
    EXPECT_EQ(failureOf(R"({"headers": ["a"], "rows": [["1"], 2]})"), "rows[1] must be a list.");
    EXPECT_EQ(failureOf(R"({"headers": ["a"], "rows": [["1"], ["2", 3]]})"), "rows[1][1] must be a text.");
    EXPECT_EQ(failureOf(R"({"headers": ["a"], "rows": [], "sourceName": 1})"), "sourceName must be a text.");
    EXPECT_EQ(failureOf(R"({"headers": ["a"], "rows": [], "rowNumbers": [1.5]})"),
              "rowNumbers[0] must be a whole number.");
    EXPECT_EQ(failureOf("[]"), "The JSON must be an object.");
}

}  // namespace
}  // namespace quorvel
