#include "Model/Tab.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

TEST(Tab, hasItsTextAndItsTitleInTheOrderOfTheWindow) {
    struct Row {
        Tab tab;
        std::string_view text, title;
    };
    const Row rows[] = {
        {Tab::cards, "cards", "Cards"},
        {Tab::template_, "template", "Template"},
        {Tab::sheets, "sheets", "Print & Export"},
        {Tab::data, "data", "Spreadsheet"},
    };
    std::size_t place = 0;
    for (const auto& row : rows) {
        EXPECT_EQ(EnumText<Tab>::cases[place++].first, row.tab);
        EXPECT_EQ(textOf(row.tab), row.text);
        EXPECT_EQ(parseEnum<Tab>(row.text), row.tab);
        EXPECT_EQ(title(row.tab), row.title);
    }
    EXPECT_EQ(EnumText<Tab>::cases.size(), place);
    EXPECT_EQ(parseEnum<Tab>("Cards"), std::nullopt);
}

}  // namespace
}  // namespace quorvel
