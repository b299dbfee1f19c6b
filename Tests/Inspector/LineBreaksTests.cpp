#include "Inspector/LineBreaks.h"

#include <gtest/gtest.h>

namespace quorvel {

TEST(LineBreaks, OfEveryKindAreReplaced) {
    const struct {
        const char* text;
        const char* lineFeeds;
        const char* oneLine;
    } cases[] = {
        {"", "", ""},
        {"a b\tc", "a b\tc", "a b\tc"},
        {"a\nb\rc\r\nd", "a\nb\nc\nd", "a b c d"},
        {"a\u2028b\u2029c\ufdd0d\ufdd1", "a\nb\nc\nd\n", "a b c d"},
        {"\na\r\n\r\n", "\na\n\n", " a"},
        {"\r\n", "\n", ""},
    };
    for (const auto& each : cases) {
        const QString text = QString::fromUtf8(each.text);
        EXPECT_EQ(LineBreaks::asLineFeeds(text), each.lineFeeds);
        EXPECT_EQ(LineBreaks::asBlanks(text), QString(each.lineFeeds).replace(u'\n', u' '));
        EXPECT_EQ(LineBreaks::asOneLine(text), each.oneLine);
    }
}

}  // namespace quorvel
