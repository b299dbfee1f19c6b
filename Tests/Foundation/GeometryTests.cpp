#include "Foundation/Geometry.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

TEST(Rect, knowsItsEdges) {
    const Rect rect{10, 20, 30, 40};
    EXPECT_EQ(rect.maxX(), 40);
    EXPECT_EQ(rect.maxY(), 60);
    EXPECT_EQ(rect.midX(), 25);
    EXPECT_EQ(rect.midY(), 40);
    EXPECT_EQ(rect.inset(1, 2), (Rect{11, 22, 28, 36}));
    EXPECT_EQ(rect.inset(-1, -2), (Rect{9, 18, 32, 44}));
}

TEST(Rect, flipsThereAndBack) {
    const Rect rect{10, 20, 30, 40};
    EXPECT_EQ(flipped(rect, 100), (Rect{10, 40, 30, 40}));
    EXPECT_EQ(flipped(flipped(rect, 100), 100), rect);
}

}  // namespace
}  // namespace quorvel
