#include "Foundation/Parallel.h"

#include <atomic>
#include <gtest/gtest.h>
#include <mutex>
#include <numeric>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

namespace quorvel {
namespace {

struct Setting {
    unsigned threads;
    std::size_t inFlight;
};

class ForEachInOrder : public testing::TestWithParam<Setting> {
protected:
    void run(std::size_t count, const std::function<void(std::size_t)>& produce,
             const std::function<bool(std::size_t)>& consume) {
        forEachInOrder(count, produce, consume, GetParam().threads, GetParam().inFlight);
    }
};

INSTANTIATE_TEST_SUITE_P(Settings, ForEachInOrder,
                         testing::Values(Setting{0, 0}, Setting{1, 1}, Setting{1, 8}, Setting{2, 1}, Setting{2, 2},
                                         Setting{3, 5}, Setting{8, 3}, Setting{4, std::size_t{1} << 62}),
                         [](const auto& setting) {
                             return std::to_string(setting.param.threads) + "with" +
                                    std::to_string(setting.param.inFlight);
                         });

TEST_P(ForEachInOrder, consumesEveryIndexInOrder) {
    std::vector<int> made(1'000, 0);
    std::vector<std::size_t> order;
    run(
        made.size(), [&](std::size_t i) { ++made[i]; },
        [&](std::size_t i) {
            EXPECT_EQ(made[i], 1);
            order.push_back(i);
            return true;
        });
    std::vector<std::size_t> expected(made.size());
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(order, expected);
}

TEST_P(ForEachInOrder, doesNothingForNothing) {
    run(0, [](std::size_t) { FAIL(); }, [](std::size_t) { return ADD_FAILURE(), true; });
}

TEST_P(ForEachInOrder, holdsNoMoreThanItMay) {
    std::atomic<std::size_t> held = 0;
    std::atomic<std::size_t> most = 0;
    run(
        500,
        [&](std::size_t) {
            const std::size_t now = ++held;
            for (std::size_t seen = most; seen < now && !most.compare_exchange_weak(seen, now);) {
            }
        },
        [&](std::size_t) { return --held, true; });
    EXPECT_LE(most, std::max<std::size_t>(1, GetParam().inFlight));
}

TEST_P(ForEachInOrder, stopsWhenAsked) {
    std::atomic<std::size_t> produced = 0;
    std::size_t consumed = 0;
    run(100'000, [&](std::size_t) { ++produced; }, [&](std::size_t i) { return ++consumed, i < 9; });
    EXPECT_EQ(consumed, 10u);
    EXPECT_LE(produced, std::min<std::size_t>(100'000, 10 + GetParam().inFlight));
}

TEST_P(ForEachInOrder, throwsWhatProduceThrewAfterAllBeforeIt) {
    for (int repetition = 0; repetition < 20; ++repetition) {
        std::size_t consumed = 0;
        try {
            run(
                100,
                [](std::size_t i) {
                    if (i >= 7) throw std::runtime_error(std::to_string(i));
                },
                [&](std::size_t) { return ++consumed, true; });
            FAIL();
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "7");
        }
        EXPECT_EQ(consumed, 7u);
    }
}

TEST_P(ForEachInOrder, throwsWhatConsumeThrew) {
    std::size_t consumed = 0;
    const auto consume = [&](std::size_t i) -> bool {
        ++consumed;
        if (i == 3) throw std::runtime_error("stop");
        return true;
    };
    EXPECT_THROW(run(100, [](std::size_t) {}, consume), std::runtime_error);
    EXPECT_EQ(consumed, 4u);
}

TEST_P(ForEachInOrder, consumesOnTheCallingThread) {
    const auto here = std::this_thread::get_id();
    std::mutex mutex;
    std::set<std::thread::id> producers;
    run(
        200,
        [&](std::size_t) {
            const std::lock_guard lock(mutex);
            producers.insert(std::this_thread::get_id());
        },
        [&](std::size_t) {
            EXPECT_EQ(std::this_thread::get_id(), here);
            return true;
        });
    if (GetParam().threads <= 1) {
        EXPECT_EQ(producers, std::set{here}) << "one thread needs no other";
    } else {
        EXPECT_LE(producers.size(), GetParam().threads);
    }
}

TEST(ForEachInOrderThreads, workAtTheSameTime) {
    // Each of the first three waits for the others: it ends only when three threads run.
    std::atomic<int> arrived = 0;
    forEachInOrder(
        3,
        [&](std::size_t) {
            ++arrived;
            arrived.notify_all();
            for (int seen = arrived; seen < 3; seen = arrived) arrived.wait(seen);
        },
        [](std::size_t) { return true; }, 3, 3);
    EXPECT_EQ(arrived, 3);
}

TEST(ProcessorCount, isAtLeastOne) {
    EXPECT_GE(processorCount(), 1u);
}

}  // namespace
}  // namespace quorvel
