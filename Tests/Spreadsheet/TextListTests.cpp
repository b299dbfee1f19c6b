#include "Spreadsheet/TextList.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

std::vector<std::string> textsOf(const TextList& list) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < list.size(); ++i) texts.emplace_back(list[i]);
    return texts;
}

using Texts = std::vector<std::string>;

TEST(TextList, keepsTextsInTheirOrder) {
    TextList list;
    EXPECT_EQ(list.size(), 0U);
    list.append("one");
    list.append("");
    list.open() += "tw";
    list.open() += "o";
    EXPECT_EQ(list.openSize(), 3U);
    list.close();
    EXPECT_EQ(list.openSize(), 0U);
    EXPECT_EQ(textsOf(list), (Texts{"one", "", "two"}));
    EXPECT_EQ(textsOf(TextList("onetwo", {3, 3, 6})), (Texts{"one", "", "two"}));
}

TEST(TextList, unifiesLineEndsInEachTextByItself) {
    TextList list;
    for (const char* text : {"a\r\nb", "c\r", "\nd", "\r\r\n\n", "plain", ""}) list.append(text);
    list.unifyLineEnds();
    EXPECT_EQ(textsOf(list), (Texts{"a\nb", "c\n", "\nd", "\n\n\n", "plain", ""}));
    list.append("more");
    EXPECT_EQ(list[6], "more");
}

TEST(TextList, tellsWhichTextsAreFilled) {
    TextList list;
    for (const char* text : {"a", "", " \t", " \u00A0\u3000", "\n", " b "}) list.append(text);
    EXPECT_EQ(list.filled(), (std::vector<bool>{true, false, false, false, true, true}));
}

}  // namespace
}  // namespace quorvel
