#include "Foundation/Housekeeping.h"

#include <gmock/gmock.h>
#include <numeric>

namespace quorvel::Housekeeping {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::int64_t> keys(std::size_t count) {
    std::vector<std::int64_t> result(count);
    std::iota(result.rbegin(), result.rend(), 0);
    return result;
}

TEST(Evictions, dropWhatIsBeyondTheLimit) {
    EXPECT_THAT(evictions(keys(120), {}, {}, 120), IsEmpty());
    EXPECT_THAT(evictions(keys(121), {}, {}, 120), ElementsAre(0));
    EXPECT_THAT(evictions({}, {}, {}, 0), IsEmpty());
    EXPECT_THAT(evictions({3, 1, 2}, {}, {}, 0), ElementsAre(1, 2, 3));
}

TEST(Evictions, neverDropWhatIsVisible) {
    std::set<std::int64_t> visible;
    for (std::int64_t key = 0; key < 150; ++key) visible.insert(key);
    const auto dropped = evictions(keys(200), visible, {}, 120);
    EXPECT_EQ(dropped.size(), 50u);
    for (const std::int64_t key : dropped) EXPECT_FALSE(visible.contains(key));
}

TEST(Evictions, dropTheLeastRecentlyUsedFirst) {
    EXPECT_THAT(evictions({1, 2, 3, 4}, {}, {{1, 9}, {2, 3}, {4, 3}}, 1), ElementsAre(3, 2, 4));
    EXPECT_THAT(evictions({1, 2, 3}, {}, {{1, 0}, {2, -1}}, 1), ElementsAre(2, 1)) << "absent counts as 0";
}

TEST(IsInside, comparesWholeNames) {
    EXPECT_TRUE(isInside("/a/b", "/a/b"));
    EXPECT_TRUE(isInside("/a/b/c.png", "/a/b"));
    EXPECT_FALSE(isInside("/a/bc", "/a/b"));
    EXPECT_FALSE(isInside("/a", "/a/b"));
    EXPECT_TRUE(isInside("/a", "/"));
}

TEST(IsInside, resolvesDotsAndSlashes) {
    EXPECT_TRUE(isInside("/a/b/c", "/a/b/"));
    EXPECT_TRUE(isInside("/a/b/", "/a/b"));
    EXPECT_TRUE(isInside("/a/b", "/a/b/"));
    EXPECT_TRUE(isInside("/a/x/../b/./c", "/a/b"));
    EXPECT_FALSE(isInside("/a/b/../c", "/a/b"));
    EXPECT_TRUE(isInside("/a//b/c", "/a/d/../b/."));
    EXPECT_TRUE(isInside("/../a/b", "/a"));
}

}  // namespace
}  // namespace quorvel::Housekeeping
