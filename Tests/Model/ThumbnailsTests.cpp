#include "Model/ThumbnailGrid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace quorvel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Thumbnails, TilesThatAppearTogetherAreDrawnAfterFifteenMilliseconds) {
    Grid grid(30);
    grid.appear(0, 3);
    grid.scheduler.advance(10ms);
    grid.appear(3, 5);
    grid.scheduler.advance(4ms);
    EXPECT_EQ(grid.scheduler.backgroundCount(), 0u) << "14 ms after the first";
    grid.scheduler.advance(1ms);
    EXPECT_EQ(grid.scheduler.backgroundCount(), 1u);
    EXPECT_THAT(grid.images(), IsEmpty());
    grid.scheduler.settle();
    EXPECT_THAT(grid.rendered, ElementsAre(0, 1, 2, 3, 4));
    EXPECT_EQ(grid.runs, 1);
    EXPECT_EQ(grid.changes, 1);
}

TEST(Thumbnails, AnInvalidationIsDrawnAfterNinetyMilliseconds) {
    Grid grid(30);
    grid.appear(0, 3);
    grid.invalidate();
    grid.scheduler.advance(89ms);
    EXPECT_EQ(grid.scheduler.backgroundCount(), 0u);
    grid.scheduler.advance(1ms);
    EXPECT_EQ(grid.scheduler.backgroundCount(), 1u);
}

TEST(Thumbnails, TypingDoesNotRestartTheGridAtEachKey) {
    Grid grid(30);
    grid.appear(0, 3);
    for (int key = 0; key < 10; ++key) {
        grid.invalidate();
        grid.scheduler.advance(80ms);
    }
    EXPECT_EQ(grid.scheduler.backgroundCount(), 0u);
    EXPECT_EQ(grid.scheduler.timerCount(), 1u);
    grid.scheduler.advance(10ms);
    EXPECT_EQ(grid.scheduler.backgroundCount(), 1u);
}

TEST(Thumbnails, ATileThatAppearsAfterAnInvalidationWaitsWithTheOthers) {
    Grid grid(30);
    grid.appear(5, 6);
    grid.invalidate();
    grid.scheduler.advance(50ms);
    grid.appear(2, 3);
    EXPECT_EQ(grid.scheduler.timerCount(), 1u) << "one runner";
    grid.scheduler.settle(40ms);
    EXPECT_THAT(grid.rendered, testing::UnorderedElementsAre(2, 5));
}

TEST(Thumbnails, TwelveInABackgroundTaskAndNoDelayBetween) {
    Grid grid(100);
    grid.appear(0, 30);
    grid.scheduler.advance(15ms);
    for (const std::size_t done : {12u, 24u, 30u}) {
        EXPECT_EQ(grid.scheduler.backgroundCount(), 1u) << "never two batches at once";
        grid.scheduler.runBackground();
        grid.scheduler.deliver();
        EXPECT_EQ(grid.images().size(), done);
        grid.scheduler.advance(0ms);
    }
    EXPECT_EQ(grid.scheduler.backgroundCount(), 0u);
    EXPECT_EQ(grid.scheduler.timerCount(), 0u);
    EXPECT_EQ(grid.changes, 3);
}

TEST(Thumbnails, ANewScrollPositionGetsItsTurnAfterOneBatch) {
    Grid grid(100);
    grid.appear(0, 40);
    grid.scheduler.advance(15ms);
    grid.scheduler.runBackground();
    grid.disappear(0, 40);
    grid.appear(60, 63);
    grid.scheduler.deliver();
    grid.scheduler.settle(0ms);
    EXPECT_EQ(grid.rendered.size(), 15u);
    EXPECT_THAT(grid.thumbnails.queue().queue(), IsEmpty());
    for (const std::int64_t id : {60, 61, 62}) EXPECT_TRUE(grid.images().contains(id));
}

TEST(Thumbnails, WhatScrolledAwayDuringTheDelayIsNotDrawn) {
    Grid grid(100);
    grid.appear(0, 12);
    grid.disappear(0, 12);
    grid.appear(50, 52);
    grid.scheduler.settle(15ms);
    EXPECT_THAT(grid.rendered, ElementsAre(50, 51));
    grid.appear(70, 71);
    grid.disappear(70, 71);
    grid.scheduler.settle(100ms);
    EXPECT_THAT(grid.rendered, ElementsAre(50, 51));
    EXPECT_EQ(grid.scheduler.timerCount(), 0u);
    grid.appear(70, 71);
    grid.scheduler.settle(15ms);
    EXPECT_THAT(grid.rendered, ElementsAre(50, 51, 70));
}

TEST(Thumbnails, FourHundredPixelsAcrossTheTrimWithRoundedCorners) {
    Grid grid(3);
    grid.input.renderer.template_.size = CardSize::poker;
    grid.appear(0, 1);
    grid.scheduler.settle(15ms);
    const Image& image = grid.images().at(0);
    EXPECT_EQ(image.width(), 400);
    EXPECT_EQ(image.height(), 560);
    EXPECT_EQ(pixelAt(image, 0, 0), 0u);
    EXPECT_EQ(pixelAt(image, 200, 0), red) << "no bleed around it";
}

// 500 cards, scrolled from top to bottom row by row, four in a row and six rows on screen.
TEST(Thumbnails, ALongDeckScrolledFromTopToBottom) {
    Grid grid(500);
    const auto slow = [&](std::int64_t row) { return row % 10 < 5; };
    std::set<std::int64_t> shown;
    grid.appear(0, 24);
    grid.scheduler.settle(100ms);
    for (std::int64_t row = 6; row < 125; ++row) {
        grid.disappear((row - 6) * 4, (row - 5) * 4);
        grid.appear(row * 4, row * 4 + 4);
        if (!slow(row)) continue;  // flung past, too fast for anything to be drawn
        grid.scheduler.settle(100ms);
        EXPECT_LE(grid.images().size(), 120u);
        for (std::int64_t id = (row - 5) * 4; id < row * 4 + 4; ++id) {
            EXPECT_TRUE(grid.images().contains(id)) << "on screen";
            shown.insert(id);
        }
    }
    for (std::int64_t id = 0; id < 24; ++id) shown.insert(id);
    EXPECT_EQ(std::set(grid.rendered.begin(), grid.rendered.end()), shown);
    EXPECT_EQ(grid.rendered.size(), shown.size()) << "none twice";
    EXPECT_EQ(grid.images().size(), 120u);
}

TEST(Thumbnails, ALongDeckFlungToItsEndDrawsOnlyTheEnd) {
    Grid grid(500);
    for (std::int64_t row = 0; row < 125; ++row) {
        grid.appear(row * 4, row * 4 + 4);
        if (row >= 6) grid.disappear((row - 6) * 4, (row - 5) * 4);
    }
    grid.scheduler.settle(15ms);
    EXPECT_EQ(grid.rendered.size(), 24u);
    EXPECT_EQ(grid.images().begin()->first, 476);
}

TEST(Thumbnails, MoreOnScreenThanTheLimitAreAllKept) {
    Grid grid(200);
    grid.appear(0, 150);
    grid.scheduler.settle(15ms);
    EXPECT_EQ(grid.images().size(), 150u);
    grid.disappear(0, 150);
    grid.appear(150, 152);
    grid.scheduler.settle(15ms);
    EXPECT_EQ(grid.images().size(), 120u);
    EXPECT_TRUE(grid.images().contains(150));
}

TEST(Thumbnails, AnEvictedCardThatReturnsIsDrawnAgain) {
    Grid grid(200);
    for (std::int64_t id = 0; id < 121; ++id) {
        grid.appear(id, id + 1);
        grid.scheduler.settle(15ms);
        grid.disappear(id, id + 1);
    }
    EXPECT_FALSE(grid.images().contains(0));
    grid.appear(0, 1);
    grid.scheduler.settle(15ms);
    EXPECT_TRUE(grid.images().contains(0));
    EXPECT_EQ(grid.rendered.size(), 122u);
}

}  // namespace
}  // namespace quorvel
