// What becomes of drawings and images when the deck, the design or the grid itself changes under them.

#include "Model/ThumbnailGrid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

namespace quorvel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ThumbnailsStale, AnEditDuringABatchDropsItAndTheOldImagesStayUntilTheNewOnesCome) {
    Grid grid(30);
    grid.appear(0, 3);
    grid.scheduler.settle(15ms);
    ASSERT_EQ(grid.colorOf(0), red);

    grid.invalidate();
    grid.scheduler.advance(90ms);
    grid.scheduler.runBackground();  // drawn, not yet back
    grid.input.renderer = plainRenderer(green);
    grid.invalidate();
    grid.scheduler.deliver();
    EXPECT_EQ(grid.rendered.size(), 3u) << "the batch between was dropped";
    EXPECT_EQ(grid.colorOf(0), red);
    EXPECT_FALSE(grid.thumbnails.queue().isFresh(0));
    grid.scheduler.settle(89ms);
    EXPECT_EQ(grid.colorOf(2), red);
    grid.scheduler.settle(1ms);
    for (const std::int64_t id : {0, 1, 2}) {
        EXPECT_EQ(grid.colorOf(id), green);
        EXPECT_TRUE(grid.thumbnails.queue().isFresh(id));
    }
}

TEST(ThumbnailsStale, AnEditBeforeABatchHasBegunDropsItToo) {
    Grid grid(30);
    grid.appear(0, 3);
    grid.scheduler.advance(15ms);
    grid.input.renderer = plainRenderer(green);
    grid.invalidate();
    grid.scheduler.settle();
    EXPECT_THAT(grid.images(), IsEmpty());
    grid.scheduler.settle(90ms);
    EXPECT_EQ(grid.rendered.size(), 3u);
    EXPECT_EQ(grid.colorOf(0), green);
}

TEST(ThumbnailsStale, AnInvalidationWithoutAVisibleTileDrawsNothing) {
    Grid grid(30);
    grid.appear(0, 3);
    grid.scheduler.settle(15ms);
    grid.disappear(0, 3);
    grid.invalidate();
    EXPECT_EQ(grid.scheduler.timerCount(), 0u);
    grid.scheduler.settle(1000ms);
    EXPECT_EQ(grid.rendered.size(), 3u);
    grid.appear(1, 2);
    grid.scheduler.settle(14ms);
    EXPECT_EQ(grid.rendered.size(), 3u);
    grid.scheduler.settle(1ms);
    EXPECT_THAT(grid.rendered, ElementsAre(0, 1, 2, 1));
}

TEST(ThumbnailsStale, AShorterTableLosesTheImagesOfItsLostCards) {
    Grid grid(30);
    grid.appear(0, 24);
    grid.scheduler.settle(15ms);
    grid.setDeck(5);
    const int before = grid.changes;
    grid.invalidate();
    EXPECT_EQ(grid.changes, before + 1);
    EXPECT_EQ(grid.images().size(), 5u);
    EXPECT_THAT(grid.thumbnails.queue().visibleCards(), ElementsAre(0, 1, 2, 3, 4));
    grid.scheduler.settle(90ms);
    EXPECT_EQ(grid.rendered.size(), 29u);
    grid.disappear(5, 24);  // their tiles go a little later
    EXPECT_EQ(grid.images().size(), 5u);
}

TEST(ThumbnailsStale, AShorterTableDuringABatchIsNoneOfItsBusiness) {
    Grid grid(30);
    grid.appear(20, 24);
    grid.scheduler.advance(15ms);
    grid.setDeck(0);
    grid.invalidate();
    grid.scheduler.settle(1000ms);
    EXPECT_THAT(grid.images(), IsEmpty());
    EXPECT_EQ(grid.scheduler.timerCount(), 0u);
}

TEST(ThumbnailsStale, IdsThatAreNoCardsAreNeverDrawn) {
    Grid grid(3);
    for (const std::int64_t id : {std::int64_t(-1), std::int64_t(3), INT64_MAX, INT64_MIN})
        grid.thumbnails.cardAppeared(id);
    grid.appear(2, 3);
    grid.scheduler.settle(1000ms);
    EXPECT_THAT(grid.rendered, ElementsAre(2));
    EXPECT_EQ(grid.scheduler.timerCount(), 0u) << "they aren't tried for ever";
}

TEST(ThumbnailsStale, WhatARunDrawsFromIsTakenWhenItBegins) {
    Grid grid(30);
    grid.appear(0, 13);
    grid.input.renderer = plainRenderer(green);
    grid.scheduler.settle(15ms);
    EXPECT_EQ(grid.colorOf(0), red);
    EXPECT_EQ(grid.colorOf(11), red);
    EXPECT_EQ(grid.colorOf(12), green) << "the next run";
    EXPECT_EQ(grid.runs, 2);
}

TEST(ThumbnailsStale, AnImageThatCannotBeMadeLeavesTheOldOneAndIsTriedAgainWhenItAppears) {
    Grid grid(30);
    grid.appear(0, 2);
    grid.scheduler.settle(15ms);
    const int before = grid.changes;

    grid.input.renderer.template_.size.heightMM = 0;
    grid.invalidate();
    grid.scheduler.settle(1000ms);
    EXPECT_EQ(grid.images().size(), 2u);
    EXPECT_EQ(grid.colorOf(0), red);
    EXPECT_FALSE(grid.thumbnails.queue().isFresh(0));
    EXPECT_EQ(grid.changes, before) << "nothing came";
    EXPECT_EQ(grid.scheduler.timerCount(), 0u) << "not tried for ever";

    grid.input.renderer = plainRenderer(green);
    grid.thumbnails.cardDisappeared(0);
    grid.thumbnails.cardAppeared(0);
    grid.scheduler.settle(15ms);
    EXPECT_EQ(grid.colorOf(0), green);
    EXPECT_EQ(grid.colorOf(1), red) << "it hasn't appeared again";
}

TEST(ThumbnailsStale, NoPictureOfAnOldDeckLandsInANewOne) {
    Grid grid(30);
    grid.appear(0, 3);
    grid.scheduler.settle(15ms);
    grid.appear(3, 6);
    grid.scheduler.advance(15ms);
    grid.scheduler.runBackground();
    const int before = grid.changes;
    grid.thumbnails.clear();
    EXPECT_EQ(grid.changes, before + 1);
    EXPECT_THAT(grid.images(), IsEmpty());

    grid.setDeck(10);
    grid.input.renderer = plainRenderer(green);
    grid.appear(4, 5);
    grid.scheduler.settle(100ms);
    EXPECT_EQ(grid.images().size(), 1u);
    EXPECT_EQ(grid.colorOf(4), green);
}

TEST(ThumbnailsStale, ManyPicturesAreLetGoOfInTheBackground) {
    Grid grid(30);
    grid.appear(0, 12);
    grid.scheduler.settle(15ms);
    grid.thumbnails.clear();
    EXPECT_EQ(grid.scheduler.backgroundCount(), 0u) << "a batch is nothing";
    for (const bool closing : {true, false}) {
        grid.setDeck(30);
        grid.appear(0, 13);
        grid.scheduler.settle(15ms);
        ASSERT_EQ(grid.images().size(), 13u);
        grid.setDeck(0);
        if (closing)
            grid.thumbnails.clear();
        else
            grid.invalidate();
        EXPECT_THAT(grid.images(), IsEmpty());
        EXPECT_EQ(grid.scheduler.backgroundCount(), 1u);
        grid.scheduler.settle(1000ms);
        EXPECT_THAT(grid.images(), IsEmpty());
    }
}

TEST(ThumbnailsStale, ClearingDuringTheDelayEndsTheRun) {
    Grid grid(30);
    grid.appear(0, 3);
    grid.thumbnails.clear();
    EXPECT_EQ(grid.scheduler.timerCount(), 0u);
    EXPECT_EQ(grid.changes, 0) << "there was nothing to lose";
    grid.scheduler.settle(1000ms);
    EXPECT_THAT(grid.images(), IsEmpty());
}

TEST(ThumbnailsStale, WhoIsToldOfAChangeMayInvalidateAtOnce) {
    ManualScheduler scheduler;
    const auto deck = std::make_shared<Deck>();
    deck->cards = numberedCards(30);
    std::unique_ptr<Thumbnails> thumbnails;
    int changes = 0;
    thumbnails = std::make_unique<Thumbnails>(
        scheduler, [&] { return Thumbnails::Input{deck, plainRenderer(red)}; },
        [&] {
            if (++changes == 1) thumbnails->invalidateThumbnails(30);
        });
    for (std::int64_t id = 0; id < 20; ++id) thumbnails->cardAppeared(id);
    scheduler.settle(15ms);
    EXPECT_EQ(thumbnails->queue().images().size(), 12u);
    EXPECT_EQ(scheduler.timerCount(), 1u);
    scheduler.settle(90ms);
    EXPECT_EQ(changes, 3);
    for (std::int64_t id = 0; id < 20; ++id) EXPECT_TRUE(thumbnails->queue().isFresh(id));
}

TEST(ThumbnailsStale, NothingRunsAfterItsEnd) {
    ManualScheduler scheduler;
    const auto deck = std::make_shared<Deck>();
    deck->cards = numberedCards(30);
    int changes = 0;
    for (const int stage : {0, 1, 2}) {
        Thumbnails thumbnails(
            scheduler, [&] { return Thumbnails::Input{deck, plainRenderer(red)}; }, [&] { ++changes; });
        thumbnails.cardAppeared(1);
        if (stage >= 1) scheduler.advance(15ms);
        if (stage >= 2) scheduler.runBackground();
    }
    scheduler.settle(1000ms);
    EXPECT_EQ(changes, 0);
}

/// A scheduler whose cancels come too late.
class DeafScheduler final : public Scheduler {
public:
    explicit DeafScheduler(ManualScheduler& scheduler) : scheduler_(scheduler) {}

    [[nodiscard]] Task later(std::chrono::milliseconds delay, Job job) override {
        scheduler_.later(delay, std::move(job)).detach();
        return Task([] {});
    }
    [[nodiscard]] Task inBackground(std::function<Job()> work) override {
        scheduler_.inBackground(std::move(work)).detach();
        return Task([] {});
    }
    [[nodiscard]] Task whenReadable(int descriptor, Job job) override {
        return scheduler_.whenReadable(descriptor, std::move(job));
    }
    void post(Job job) override { scheduler_.post(std::move(job)); }
    Clock::time_point now() const override { return scheduler_.now(); }

private:
    ManualScheduler& scheduler_;
};

TEST(ThumbnailsStale, TheGenerationAloneTellsAStaleRun) {
    ManualScheduler scheduler;
    DeafScheduler deaf(scheduler);
    Grid grid(30, deaf);
    grid.appear(0, 14);
    grid.invalidate();  // in the delay
    scheduler.settle(15ms);
    EXPECT_THAT(grid.rendered, IsEmpty());

    scheduler.advance(75ms);
    scheduler.runBackground();
    grid.input.renderer = plainRenderer(green);
    grid.invalidate();  // in the batch
    scheduler.settle(89ms);
    EXPECT_THAT(grid.rendered, IsEmpty());
    EXPECT_EQ(scheduler.timerCount(), 1u) << "and the stale one has started nothing";
    scheduler.settle(1ms);
    EXPECT_EQ(grid.rendered.size(), 14u);
    EXPECT_EQ(grid.colorOf(13), green);
}

}  // namespace
}  // namespace quorvel
