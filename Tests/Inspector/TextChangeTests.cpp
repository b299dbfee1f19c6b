#include "Inspector/TextChange.h"

#include <gtest/gtest.h>

namespace quorvel {

TEST(TextChange, IsTheStretchThatDiffers) {
    const struct {
        const char* before;
        const char* after;
        TextChange change;
    } cases[] = {
        {"", "", {0, 0, ""}},           {"", "abc", {0, 0, "abc"}},  {"abc", "", {0, 3, ""}},
        {"ac", "abc", {1, 0, "b"}},     {"abc", "ac", {1, 1, ""}},   {"aa", "aaa", {2, 0, "a"}},
        {"aaa", "aa", {2, 1, ""}},      {"abc", "axc", {1, 1, "x"}}, {"😀", "😁", {0, 2, "😁"}},
        {"a😀b", "a😁b", {1, 2, "😁"}}, {"𐐀", "😀", {0, 2, "😀"}},
    };
    for (const auto& each : cases) {
        const TextChange change = TextChange::between(QString::fromUtf8(each.before), QString::fromUtf8(each.after));
        EXPECT_EQ(change.start, each.change.start) << each.before << " " << each.after;
        EXPECT_EQ(change.removed, each.change.removed) << each.before << " " << each.after;
        EXPECT_EQ(change.inserted, each.change.inserted) << each.before << " " << each.after;
    }
}

}  // namespace quorvel
