#include "Model/Announcer.h"

#include <gtest/gtest.h>
#include <optional>
#include <vector>

namespace quorvel {
namespace {

void change(Announcer& announcer, std::initializer_list<Change> changes) {
    const Announcer::Turn turn(announcer);
    for (const Change each : changes) announcer.note(each);
}

TEST(Announcer, TellsOnceAtTheEndOfTheOutermostTurn) {
    Announcer announcer;
    std::vector<Changes> heard;
    const auto subscription = announcer.subscribe([&](Changes changes) { heard.push_back(changes); });
    {
        const Announcer::Turn outer(announcer);
        change(announcer, {Change::tab});
        announcer.note(Change::decks);
        EXPECT_TRUE(heard.empty());
    }
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_TRUE(heard[0].has(Change::tab));
    EXPECT_TRUE(heard[0].has(Change::decks));
    EXPECT_FALSE(heard[0].has(Change::undo));
}

TEST(Announcer, SaysNothingWhenNothingChanged) {
    Announcer announcer;
    int heard = 0;
    const auto subscription = announcer.subscribe([&](Changes) { ++heard; });
    change(announcer, {});
    EXPECT_EQ(heard, 0);
}

TEST(Announcer, WhatAListenerChangesIsToldToAllInAnotherRound) {
    Announcer announcer;
    std::vector<Changes> first, second;
    const auto a = announcer.subscribe([&](Changes changes) {
        first.push_back(changes);
        if (changes.has(Change::tab)) change(announcer, {Change::undo});
    });
    const auto b = announcer.subscribe([&](Changes changes) { second.push_back(changes); });
    change(announcer, {Change::tab});
    ASSERT_EQ(first.size(), 2u);
    EXPECT_EQ(first, second);
    EXPECT_TRUE(first[1].has(Change::undo));
    EXPECT_FALSE(first[1].has(Change::tab));
}

TEST(Announcer, AListenerThatEndsHearsNothingMore) {
    Announcer announcer;
    int heard = 0;
    std::optional<Announcer::Subscription> second;
    // The first ends the second before its turn comes.
    const auto first = announcer.subscribe([&](Changes) { second.reset(); });
    second = announcer.subscribe([&](Changes) { ++heard; });
    change(announcer, {Change::tab});
    change(announcer, {Change::tab});
    EXPECT_EQ(heard, 0);
}

TEST(Announcer, AListenerMayEndItself) {
    Announcer announcer;
    int heard = 0;
    std::optional<Announcer::Subscription> self;
    self = announcer.subscribe([&](Changes) {
        ++heard;
        self.reset();
    });
    change(announcer, {Change::tab});
    change(announcer, {Change::tab});
    EXPECT_EQ(heard, 1);
}

TEST(Announcer, ASubscriptionMayOutliveIt) {
    Announcer::Subscription subscription;
    {
        Announcer announcer;
        subscription = announcer.subscribe([](Changes) {});
    }
    SUCCEED();
}

}  // namespace
}  // namespace quorvel
