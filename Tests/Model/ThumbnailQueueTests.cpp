#include "Model/ThumbnailQueue.h"
#include "Rendering/TestCards.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Ids = std::vector<std::int64_t>;

Ids range(std::int64_t first, std::int64_t end) {
    Ids ids;
    for (std::int64_t id = first; id < end; ++id) ids.push_back(id);
    return ids;
}

/// Images as if these cards had been drawn.
std::vector<std::pair<std::int64_t, Image>> drawn(const Ids& ids) {
    static const Image image = plainImage(1, 1, 0xFFFFFFFF);
    std::vector<std::pair<std::int64_t, Image>> images;
    for (const std::int64_t id : ids) images.emplace_back(id, image);
    return images;
}

Ids keptBy(const ThumbnailQueue& queue) {
    Ids ids;
    for (const auto& [id, image] : queue.images()) ids.push_back(id);
    return ids;
}

/// The cards come on screen, are drawn, and leave it unless they are to stay.
enum class Afterwards { stay, leave };
void show(ThumbnailQueue& queue, const Ids& ids, Afterwards afterwards) {
    for (const std::int64_t id : ids) queue.appeared(id);
    while (queue.prune()) queue.store(drawn(queue.takeBatch(std::numeric_limits<std::int64_t>::max())));
    if (afterwards == Afterwards::leave)
        for (const std::int64_t id : ids) queue.disappeared(id);
}

TEST(ThumbnailQueue, QueuesInTheOrderOfAppearanceAndEachOnce) {
    ThumbnailQueue queue;
    EXPECT_TRUE(queue.appeared(7));
    EXPECT_TRUE(queue.appeared(3));
    EXPECT_FALSE(queue.appeared(7));
    EXPECT_THAT(queue.queue(), ElementsAre(7, 3));
    EXPECT_THAT(queue.visibleCards(), ElementsAre(3, 7));
}

TEST(ThumbnailQueue, AFreshImageIsNotQueuedAgain) {
    ThumbnailQueue queue;
    show(queue, {5}, Afterwards::leave);
    EXPECT_TRUE(queue.isFresh(5));
    EXPECT_FALSE(queue.appeared(5));
    EXPECT_THAT(queue.queue(), IsEmpty());
}

TEST(ThumbnailQueue, ACardThatReturnsBeforeThePumpKeepsItsPlace) {
    ThumbnailQueue queue;
    for (const std::int64_t id : {1, 2, 3}) queue.appeared(id);
    queue.disappeared(1);
    EXPECT_THAT(queue.visibleCards(), ElementsAre(2, 3));
    EXPECT_THAT(queue.queue(), ElementsAre(1, 2, 3)) << "leaving the screen touches nothing else";
    EXPECT_FALSE(queue.appeared(1));
    EXPECT_TRUE(queue.prune());
    EXPECT_THAT(queue.queue(), ElementsAre(1, 2, 3));
}

TEST(ThumbnailQueue, ACardThatReturnsAfterThePumpIsQueuedAnew) {
    ThumbnailQueue queue;
    for (const std::int64_t id : {1, 2, 3}) queue.appeared(id);
    queue.disappeared(1);
    EXPECT_TRUE(queue.prune());
    EXPECT_THAT(queue.queue(), ElementsAre(2, 3));
    EXPECT_TRUE(queue.appeared(1));
    EXPECT_THAT(queue.queue(), ElementsAre(2, 3, 1));
}

TEST(ThumbnailQueue, PruningDropsWhatBecameFresh) {
    ThumbnailQueue queue;
    queue.appeared(1);
    const Ids batch = queue.takeBatch(10);
    EXPECT_TRUE(queue.appeared(1)) << "scrolled out and back while it was drawn";
    queue.store(drawn(batch));
    EXPECT_FALSE(queue.prune());
    EXPECT_THAT(queue.queue(), IsEmpty());
}

TEST(ThumbnailQueue, BatchesOfTwelve) {
    ThumbnailQueue queue;
    for (const std::int64_t id : range(0, 30)) queue.appeared(id);
    EXPECT_EQ(queue.takeBatch(30), range(0, 12));
    EXPECT_EQ(queue.takeBatch(30), range(12, 24));
    EXPECT_EQ(queue.takeBatch(30), range(24, 30));
    EXPECT_THAT(queue.takeBatch(30), IsEmpty());
}

TEST(ThumbnailQueue, ABatchLeavesOutWhatIsGoneButTakesItOffTheQueue) {
    ThumbnailQueue queue;
    for (const std::int64_t id : {-1, 0, 1, 2, 9, 10, 11}) queue.appeared(id);
    queue.disappeared(1);
    EXPECT_THAT(queue.takeBatch(10), ElementsAre(0, 2, 9));
    EXPECT_THAT(queue.queue(), IsEmpty());
    EXPECT_TRUE(queue.appeared(1)) << "it may wait again";
}

TEST(ThumbnailQueue, TheFirstTwelveAreTakenBeforeAnyIsLeftOut) {
    ThumbnailQueue queue;
    for (const std::int64_t id : range(0, 20)) queue.appeared(id);
    for (const std::int64_t id : range(0, 10)) queue.disappeared(id);
    EXPECT_THAT(queue.takeBatch(20), ElementsAre(10, 11));
    EXPECT_EQ(queue.queue(), range(12, 20));
}

TEST(ThumbnailQueue, AnInvalidationKeepsTheImagesAndQueuesWhatIsVisibleInAscendingOrder) {
    ThumbnailQueue queue;
    show(queue, {0, 1}, Afterwards::leave);
    show(queue, {9, 4, 6}, Afterwards::stay);
    EXPECT_FALSE(queue.invalidate(10).any);
    EXPECT_EQ(keptBy(queue), (Ids{0, 1, 4, 6, 9}));
    for (const std::int64_t id : range(0, 10)) EXPECT_FALSE(queue.isFresh(id));
    EXPECT_THAT(queue.queue(), ElementsAre(4, 6, 9));
    EXPECT_FALSE(queue.appeared(6)) << "queued already";
    EXPECT_TRUE(queue.prune());
}

TEST(ThumbnailQueue, AnInvalidationWithoutATileOnScreenQueuesNothing) {
    ThumbnailQueue queue;
    show(queue, range(0, 30), Afterwards::leave);
    queue.invalidate(30);
    EXPECT_FALSE(queue.prune());
    EXPECT_TRUE(queue.appeared(3)) << "but what comes on screen then";
}

TEST(ThumbnailQueue, EachInvalidationRaisesTheGeneration) {
    ThumbnailQueue queue;
    const std::int64_t first = queue.thumbnailGeneration();
    queue.invalidate(10);
    EXPECT_EQ(queue.thumbnailGeneration(), first + 1);
    queue.clear();
    EXPECT_EQ(queue.thumbnailGeneration(), first + 2);
}

TEST(ThumbnailQueue, CardsLostByAShorterTableAreForgotten) {
    ThumbnailQueue queue;
    show(queue, range(0, 10), Afterwards::stay);
    queue.appeared(12);
    EXPECT_TRUE(queue.invalidate(4).any);
    EXPECT_EQ(keptBy(queue), range(0, 4));
    EXPECT_THAT(queue.visibleCards(), ElementsAre(0, 1, 2, 3));
    EXPECT_EQ(queue.queue(), range(0, 4));
    EXPECT_TRUE(queue.invalidate(0).any);
    EXPECT_FALSE(queue.invalidate(0).any);
    EXPECT_THAT(queue.visibleCards(), IsEmpty());
}

TEST(ThumbnailQueue, LostCardsLeaveTheirUse) {
    ThumbnailQueue queue;
    show(queue, range(0, 120), Afterwards::leave);
    queue.appeared(119);  // the last one seen
    queue.invalidate(119);
    queue.disappeared(119);
    // Row 119 is another card now, drawn without having been seen: it goes before any that was.
    queue.store(drawn({119, 120}));
    EXPECT_FALSE(queue.images().contains(119));
    EXPECT_TRUE(queue.images().contains(0));
}

TEST(ThumbnailQueue, KeepsAHundredAndTwentyImages) {
    ThumbnailQueue queue;
    show(queue, range(0, 120), Afterwards::leave);
    EXPECT_EQ(keptBy(queue), range(0, 120));
    show(queue, {120}, Afterwards::leave);
    EXPECT_EQ(keptBy(queue), range(1, 121)) << "the one not seen for longest goes";
    EXPECT_FALSE(queue.isFresh(0));
    EXPECT_TRUE(queue.appeared(0)) << "and is queued like any other";
}

TEST(ThumbnailQueue, BeingSeenKeepsAnImage) {
    ThumbnailQueue queue;
    show(queue, range(0, 120), Afterwards::leave);
    queue.appeared(0);
    queue.disappeared(0);
    show(queue, {120}, Afterwards::leave);
    EXPECT_TRUE(queue.images().contains(0));
    EXPECT_FALSE(queue.images().contains(1));
}

TEST(ThumbnailQueue, WhatIsOnScreenIsKeptBeyondTheLimit) {
    ThumbnailQueue queue;
    show(queue, range(0, 50), Afterwards::leave);
    show(queue, range(50, 200), Afterwards::stay);
    EXPECT_EQ(keptBy(queue), range(50, 200));
    for (const std::int64_t id : range(50, 200)) queue.disappeared(id);
    EXPECT_EQ(queue.images().size(), 150u) << "leaving the screen drops nothing by itself";
    EXPECT_TRUE(queue.store({}).any);
    EXPECT_EQ(keptBy(queue), range(80, 200));
}

TEST(ThumbnailQueue, StoringNothingChangesNothing) {
    ThumbnailQueue queue;
    EXPECT_FALSE(queue.store({}).any);
    EXPECT_TRUE(queue.store(drawn({1})).any);
    EXPECT_FALSE(queue.store({}).any);
}

TEST(ThumbnailQueue, HandsOutTheImagesThatWent) {
    ThumbnailQueue queue;
    EXPECT_THAT(queue.store(drawn(range(0, 120))).gone, IsEmpty());
    EXPECT_EQ(queue.store(drawn({5, 6})).gone.size(), 2u) << "replaced";
    EXPECT_EQ(queue.store(drawn({120, 121, 122})).gone.size(), 3u) << "evicted";
    EXPECT_EQ(queue.invalidate(100).gone.size(), 23u) << "lost";
    EXPECT_EQ(queue.clear().gone.size(), 97u);
}

TEST(ThumbnailQueue, AnImageTakesThePlaceOfTheOldOne) {
    ThumbnailQueue queue;
    const Image first = plainImage(1, 1, 0xFFFF0000);
    const Image second = plainImage(1, 1, 0xFF00FF00);
    queue.store({{1, first}});
    const auto change = queue.store({{1, second}});
    EXPECT_EQ(queue.images().at(1).id(), second.id());
    ASSERT_EQ(change.gone.size(), 1u);
    EXPECT_EQ(change.gone[0].id(), first.id());
}

TEST(ThumbnailQueue, ClearingForgetsAll) {
    ThumbnailQueue queue;
    show(queue, range(0, 5), Afterwards::stay);
    queue.appeared(7);
    EXPECT_TRUE(queue.clear().any);
    EXPECT_THAT(queue.images(), IsEmpty());
    EXPECT_THAT(queue.visibleCards(), IsEmpty());
    EXPECT_THAT(queue.queue(), IsEmpty());
    EXPECT_FALSE(queue.isFresh(0));
    EXPECT_FALSE(queue.clear().any);
    EXPECT_TRUE(queue.appeared(7)) << "nothing of the old queue stands in the way";
}

// Whatever the order of events, the rules between the collections hold.
TEST(ThumbnailQueue, AnyOrderOfEvents) {
    std::mt19937 random(20);
    const auto below = [&](std::int64_t end) {
        return std::uniform_int_distribution<std::int64_t>(0, end - 1)(random);
    };
    for (int round = 0; round < 20; ++round) {
        ThumbnailQueue queue;
        std::int64_t count = 400;
        for (int step = 0; step < 2000; ++step) {
            const std::int64_t event = below(100);
            if (event < 55) {
                queue.appeared(below(count + 3));
            } else if (event < 90) {
                queue.disappeared(below(count + 3));
            } else if (event < 98) {
                const bool left = queue.prune();
                ASSERT_EQ(left, !queue.queue().empty());
                for (const std::int64_t id : queue.queue())
                    ASSERT_TRUE(queue.visibleCards().contains(id) && !queue.isFresh(id));
                queue.store(drawn(queue.takeBatch(count)));
                std::size_t hidden = 0;
                for (const auto& [id, image] : queue.images()) hidden += !queue.visibleCards().contains(id);
                ASSERT_TRUE(queue.images().size() <= ThumbnailQueue::limit || hidden == 0);
            } else if (event < 99) {
                count = 1 + below(400);
                queue.invalidate(count);
                for (const std::int64_t id : queue.visibleCards()) ASSERT_LT(id, count);
            } else if (step % 7 == 0) {
                queue.clear();
            }
            Ids sorted = queue.queue();
            std::ranges::sort(sorted);
            ASSERT_EQ(std::ranges::adjacent_find(sorted), sorted.end()) << "nothing waits twice";
            for (const std::int64_t id : range(0, count))
                ASSERT_TRUE(!queue.isFresh(id) || queue.images().contains(id));
        }
    }
}

}  // namespace
}  // namespace quorvel
