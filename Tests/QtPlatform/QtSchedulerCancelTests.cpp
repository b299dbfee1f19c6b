#include "QtPlatform/QtSchedulerTest.h"

#include <atomic>
#include <chrono>
#include <memory>

namespace quorvel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

TEST_F(QtSchedulerTest, cancelsWhatWaitsForItsTime) {
    auto cancelled = scheduler->later(1ms, note("cancelled"));
    {
        const auto destroyed = scheduler->later(1ms, note("destroyed"));
    }
    scheduler->later(1ms, note("detached")).detach();
    cancelled.cancel();
    bool over = false;
    const auto end = scheduler->later(20ms, [&] { over = true; });
    ASSERT_TRUE(runUntil([&] { return over; }));
    EXPECT_THAT(notes, ElementsAre("detached"));
}

TEST_F(QtSchedulerTest, cancelsWithinOneTurnOfTheLoop) {
    // All are due when the loop comes to them.
    std::vector<Scheduler::Task> tasks(3);
    for (std::size_t each = 0; each < tasks.size(); ++each)
        tasks[each] = scheduler->later(0ms, [&, each] {
            notes.push_back("ran");
            for (std::size_t other = 0; other < tasks.size(); ++other)
                if (other != each) tasks[other].cancel();
        });
    bool over = false;
    const auto end = scheduler->later(20ms, [&] { over = true; });
    ASSERT_TRUE(runUntil([&] { return over; }));
    EXPECT_THAT(notes, ElementsAre("ran"));
}

TEST_F(QtSchedulerTest, cancelsATailThatWaitsBehindAnotherJob) {
    Permits ended(0);
    std::vector<Scheduler::Task> tasks;
    for (int each = 0; each < 2; ++each)
        tasks.push_back(inBackground(
            *scheduler,
            [&ended, guard = std::shared_ptr<void>(nullptr, [&ended](void*) { ended.release(); })] { return 0; },
            [&](int) {
                notes.push_back("tail");
                for (auto& task : tasks) task.cancel();
            }));
    // Work goes just before its tail can run, so both tails are there or on their last step.
    ended.acquire();
    ended.acquire();
    bool over = false;
    const auto end = scheduler->later(20ms, [&] { over = true; });
    ASSERT_TRUE(runUntil([&] { return over; }));
    EXPECT_THAT(notes, ElementsAre("tail"));
}

TEST_F(QtSchedulerTest, dropsWorkThatHasNotBegunAndTailsOfWorkThatHas) {
    Permits go(0);
    Permits begun(0);
    std::atomic<int> worked = 0;
    int tails = 0;
    const int threads = int(QtScheduler::threadCount());
    std::vector<Scheduler::Task> tasks;
    for (int each = 0; each < threads + 3; ++each)
        tasks.push_back(inBackground(
            *scheduler,
            [&] {
                begun.release();
                go.acquire();
                return ++worked;
            },
            [&](int) { ++tails; }));
    for (int each = 0; each < threads; ++each) begun.acquire();
    tasks.clear();
    go.release(threads + 3);
    scheduler.reset();
    EXPECT_EQ(worked, threads) << "what waited has not begun";
    runWhatWaits();
    EXPECT_EQ(tails, 0);
}

TEST_F(QtSchedulerTest, cancelsADescriptorWithinOneTurn) {
    Pipe pipes[2];
    Scheduler::Task tasks[2];
    for (int each = 0; each < 2; ++each) {
        tasks[each] = scheduler->whenReadable(pipes[each].readable(), [&, each] {
            notes.push_back("readable");
            tasks[0].cancel();
            tasks[1].cancel();
            pipes[each].take();
        });
        pipes[each].put();
    }
    ASSERT_TRUE(runUntil([&] { return !notes.empty(); }));
    runPosted();
    EXPECT_THAT(notes, ElementsAre("readable"));
}

TEST_F(QtSchedulerTest, cancelsFromManyTurnsWithWorkUnderWay) {
    // Random ends of tasks against threads that race for the same queue: no tail of a cancelled task may ever run.
    constexpr int rounds = 3'000;
    std::vector<Scheduler::Task> tasks(16);
    std::vector<int> newest(tasks.size(), -1);
    int ran = 0;
    unsigned random = 12345;
    for (int round = 0; round < rounds; ++round) {
        random = random * 1'664'525u + 1'013'904'223u;
        const std::size_t slot = (random >> 16) % tasks.size();
        newest[slot] = round;
        tasks[slot] = inBackground(
            *scheduler, [round] { return round; },
            [&, slot](int result) {
                EXPECT_EQ(result, newest[slot]) << "an older one was cancelled when it was replaced";
                ++ran;
            });
        if (round % 7 == 0) runWhatWaits();
    }
    bool done = false;
    const auto end = scheduler->later(5ms, [&] { done = true; });
    ASSERT_TRUE(runUntil([&] { return done; }));
    EXPECT_GT(ran, 0);
}

}  // namespace
}  // namespace quorvel
