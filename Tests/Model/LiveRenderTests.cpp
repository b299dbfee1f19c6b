#include "Model/LiveRender.h"
#include "Rendering/TestCards.h"
#include "Support/Desktop/ManualScheduler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

namespace quorvel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class LiveRenderTest : public testing::Test {
protected:
    /// A drawing that gives an image of this width, or nothing for 0.
    LiveRender::Draw drawing(int width) {
        return [this, width]() -> std::optional<Image> {
            ++drawn;
            if (width == 0) return std::nullopt;
            return plainImage(width, 1, 0xFFFFFFFF);
        };
    }

    ManualScheduler scheduler;
    int drawn = 0;
    std::vector<int> stored;  ///< widths, 0 for none
    LiveRender render{scheduler, 25ms,
                      [this](std::optional<Image> image) { stored.push_back(image ? image->width() : 0); }};
};

TEST_F(LiveRenderTest, DrawsInTheBackgroundAfterItsDelay) {
    EXPECT_FALSE(render.isRunning());
    render.restart(drawing(3));
    EXPECT_TRUE(render.isRunning());
    scheduler.advance(24ms);
    EXPECT_EQ(scheduler.backgroundCount(), 0u);
    scheduler.advance(1ms);
    EXPECT_EQ(scheduler.backgroundCount(), 1u);
    EXPECT_EQ(drawn, 0);
    scheduler.runBackground();
    EXPECT_EQ(drawn, 1);
    EXPECT_THAT(stored, IsEmpty());
    EXPECT_TRUE(render.isRunning());
    scheduler.deliver();
    EXPECT_THAT(stored, ElementsAre(3));
    EXPECT_FALSE(render.isRunning());
}

TEST_F(LiveRenderTest, ARunOfChangesDrawsOnceAndTheLast) {
    for (int width = 1; width <= 10; ++width) {
        render.restart(drawing(width));
        scheduler.settle(24ms);
    }
    EXPECT_EQ(drawn, 0);
    scheduler.settle(1ms);
    EXPECT_EQ(drawn, 1);
    EXPECT_THAT(stored, ElementsAre(10));
}

TEST_F(LiveRenderTest, AChangeWhileItIsDrawnDropsThePicture) {
    render.restart(drawing(1));
    scheduler.advance(25ms);
    scheduler.runBackground();
    render.restart(drawing(2));
    scheduler.deliver();
    EXPECT_THAT(stored, IsEmpty());
    scheduler.settle(25ms);
    EXPECT_THAT(stored, ElementsAre(2));
}

TEST_F(LiveRenderTest, AChangeBeforeItIsTakenUpDropsThePicture) {
    render.restart(drawing(1));
    scheduler.advance(25ms);
    render.restart(drawing(2));
    scheduler.settle(25ms);
    EXPECT_THAT(stored, ElementsAre(2));
}

TEST_F(LiveRenderTest, CancellingStoresNothing) {
    for (const int stage : {0, 1, 2}) {
        render.restart(drawing(1));
        if (stage >= 1) scheduler.advance(25ms);
        if (stage >= 2) scheduler.runBackground();
        render.cancel();
        EXPECT_FALSE(render.isRunning());
        scheduler.settle(1000ms);
    }
    EXPECT_THAT(stored, IsEmpty());
    render.cancel();
    render.restart(drawing(4));
    scheduler.settle(25ms);
    EXPECT_THAT(stored, ElementsAre(4));
}

TEST_F(LiveRenderTest, APictureThatCannotBeMadeIsStoredAsNone) {
    render.restart(drawing(1));
    scheduler.settle(25ms);
    render.restart(drawing(0));
    scheduler.settle(25ms);
    EXPECT_THAT(stored, ElementsAre(1, 0));
}

TEST_F(LiveRenderTest, WhatStoresThePictureMayRestart) {
    std::unique_ptr<LiveRender> again;
    int count = 0;
    again = std::make_unique<LiveRender>(scheduler, 60ms, [&](std::optional<Image>) {
        if (++count < 3) again->restart(drawing(1));
    });
    again->restart(drawing(1));
    scheduler.settle(60ms);
    EXPECT_EQ(count, 1);
    EXPECT_TRUE(again->isRunning());
    scheduler.settle(59ms);
    EXPECT_EQ(count, 1);
    scheduler.settle(1000ms);
    EXPECT_EQ(count, 3);
    EXPECT_FALSE(again->isRunning());
}

TEST_F(LiveRenderTest, NothingRunsAfterItsEnd) {
    for (const int stage : {0, 1, 2}) {
        LiveRender mortal(scheduler, 25ms, [this](std::optional<Image>) { stored.push_back(-1); });
        mortal.restart(drawing(1));
        if (stage >= 1) scheduler.advance(25ms);
        if (stage >= 2) scheduler.runBackground();
    }
    scheduler.settle(1000ms);
    EXPECT_THAT(stored, IsEmpty());
}

TEST_F(LiveRenderTest, ADrawingIsLetGoOfWhenItIsReplaced) {
    const auto held = std::make_shared<int>(1);
    render.restart([held] { return std::optional<Image>(); });
    EXPECT_EQ(held.use_count(), 2);
    render.restart(drawing(1));
    scheduler.settle(25ms);
    EXPECT_EQ(held.use_count(), 1);
}

}  // namespace
}  // namespace quorvel
