#include "Model/Thumbnails.h"
#include "Rendering/TestCards.h"
#include "Support/Desktop/ManualScheduler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace quorvel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t green = 0xFF00FF00;

/// Cards wide enough to draw fast.
CardRenderer plainRenderer(std::uint32_t color) {
    CardRenderer renderer;
    renderer.template_ = CardTemplate("Test", CardSize(CardSize::Preset::custom, 60, 6), {}, {});
    renderer.template_.background =
        RGBA::bytes(std::uint8_t(color >> 16), std::uint8_t(color >> 8), std::uint8_t(color));
    renderer.template_.cornerRadiusMM = 1;
    renderer.missingPictures = CardRenderer::MissingPictures::mark;
    return renderer;
}

/// A grid without a window.
class Grid {
public:
    explicit Grid(int count) : Grid(count, scheduler) {}
    Grid(int count, Scheduler& through)
        : thumbnails(
              through,
              [this] {
                  ++runs;
                  return input;
              },
              [this] { note(); }) {
        setDeck(count);
    }

    void setDeck(int count) {
        auto deck = std::make_shared<Deck>();
        deck->cards = numberedCards(count);
        input.deck = deck;
    }
    void invalidate() { thumbnails.invalidateThumbnails(std::int64_t(input.deck->cards.size())); }
    void appear(std::int64_t first, std::int64_t end) {
        for (std::int64_t id = first; id < end; ++id) thumbnails.cardAppeared(id);
    }
    void disappear(std::int64_t first, std::int64_t end) {
        for (std::int64_t id = first; id < end; ++id) thumbnails.cardDisappeared(id);
    }

    const std::map<std::int64_t, Image>& images() const { return thumbnails.queue().images(); }
    std::uint32_t colorOf(std::int64_t id) const {
        const Image& image = images().at(id);
        return pixelAt(image, image.width() / 2, image.height() / 2);
    }

    ManualScheduler scheduler;
    Thumbnails::Input input{std::make_shared<const Deck>(), plainRenderer(red)};
    int runs = 0;
    int changes = 0;
    std::vector<std::int64_t> rendered;  ///< in the order of arrival
    Thumbnails thumbnails;

private:
    void note() {
        ++changes;
        for (const auto& [id, image] : images())
            if (seen_.insert(image.id()).second) rendered.push_back(id);
    }

    std::set<std::uint64_t> seen_;
};

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

TEST(Thumbnails, AnEditDuringABatchDropsItAndTheOldImagesStayUntilTheNewOnesCome) {
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

TEST(Thumbnails, AnEditBeforeABatchHasBegunDropsItToo) {
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

TEST(Thumbnails, AnInvalidationWithoutAVisibleTileDrawsNothing) {
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

TEST(Thumbnails, AShorterTableLosesTheImagesOfItsLostCards) {
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

TEST(Thumbnails, AShorterTableDuringABatchIsNoneOfItsBusiness) {
    Grid grid(30);
    grid.appear(20, 24);
    grid.scheduler.advance(15ms);
    grid.setDeck(0);
    grid.invalidate();
    grid.scheduler.settle(1000ms);
    EXPECT_THAT(grid.images(), IsEmpty());
    EXPECT_EQ(grid.scheduler.timerCount(), 0u);
}

TEST(Thumbnails, IdsThatAreNoCardsAreNeverDrawn) {
    Grid grid(3);
    for (const std::int64_t id : {std::int64_t(-1), std::int64_t(3), INT64_MAX, INT64_MIN})
        grid.thumbnails.cardAppeared(id);
    grid.appear(2, 3);
    grid.scheduler.settle(1000ms);
    EXPECT_THAT(grid.rendered, ElementsAre(2));
    EXPECT_EQ(grid.scheduler.timerCount(), 0u) << "they aren't tried for ever";
}

TEST(Thumbnails, WhatARunDrawsFromIsTakenWhenItBegins) {
    Grid grid(30);
    grid.appear(0, 13);
    grid.input.renderer = plainRenderer(green);
    grid.scheduler.settle(15ms);
    EXPECT_EQ(grid.colorOf(0), red);
    EXPECT_EQ(grid.colorOf(11), red);
    EXPECT_EQ(grid.colorOf(12), green) << "the next run";
    EXPECT_EQ(grid.runs, 2);
}

TEST(Thumbnails, AnImageThatCannotBeMadeLeavesTheOldOneAndIsTriedAgainWhenItAppears) {
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

TEST(Thumbnails, NoPictureOfAnOldDeckLandsInANewOne) {
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

TEST(Thumbnails, ManyPicturesAreLetGoOfInTheBackground) {
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

TEST(Thumbnails, ClearingDuringTheDelayEndsTheRun) {
    Grid grid(30);
    grid.appear(0, 3);
    grid.thumbnails.clear();
    EXPECT_EQ(grid.scheduler.timerCount(), 0u);
    EXPECT_EQ(grid.changes, 0) << "there was nothing to lose";
    grid.scheduler.settle(1000ms);
    EXPECT_THAT(grid.images(), IsEmpty());
}

TEST(Thumbnails, WhoIsToldOfAChangeMayInvalidateAtOnce) {
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

TEST(Thumbnails, NothingRunsAfterItsEnd) {
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

TEST(Thumbnails, TheGenerationAloneTellsAStaleRun) {
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
