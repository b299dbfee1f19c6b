#include "Support/Desktop/ManualScheduler.h"

#include <gmock/gmock.h>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace quorvel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class ManualSchedulerTest : public testing::Test {
protected:
    Scheduler::Job note(std::string text) {
        return [this, text = std::move(text)] { notes.push_back(text); };
    }

    std::vector<std::string> notes;
    ManualScheduler scheduler;
};

TEST_F(ManualSchedulerTest, runsTimersAtTheirMillisecondInTheOrderOfTheirTimes) {
    const auto late = scheduler.later(20ms, note("20"));
    const auto early = scheduler.later(10ms, note("10"));
    const auto same = scheduler.later(20ms, note("20 again"));
    scheduler.advance(9ms);
    EXPECT_THAT(notes, IsEmpty());
    scheduler.advance(1ms);
    EXPECT_THAT(notes, ElementsAre("10"));
    scheduler.advance(10ms);
    EXPECT_THAT(notes, ElementsAre("10", "20", "20 again"));
}

TEST_F(ManualSchedulerTest, showsEachTimerItsOwnTime) {
    const auto start = scheduler.now();
    std::vector<Scheduler::Clock::duration> times;
    Scheduler::Task second;
    const auto first = scheduler.later(10ms, [&] {
        times.push_back(scheduler.now() - start);
        second = scheduler.later(5ms, [&] { times.push_back(scheduler.now() - start); });
    });
    scheduler.advance(100ms);
    EXPECT_THAT(times, ElementsAre(10ms, 15ms));
    EXPECT_EQ(scheduler.now() - start, 100ms);
}

TEST_F(ManualSchedulerTest, runsNothingThatIsCancelled) {
    auto one = scheduler.later(1ms, note("cancelled"));
    {
        const auto two = scheduler.later(1ms, note("destroyed"));
    }
    auto three = scheduler.later(1ms, note("replaced"));
    three = scheduler.later(1ms, note("replacing"));
    scheduler.later(1ms, note("detached")).detach();
    one.cancel();
    EXPECT_FALSE(one);
    EXPECT_EQ(scheduler.timerCount(), 2u);
    scheduler.advance(1ms);
    EXPECT_THAT(notes, ElementsAre("replacing", "detached"));
}

TEST_F(ManualSchedulerTest, cancelsWithinOneTurn) {
    Scheduler::Task victim;
    const auto killer = scheduler.later(1ms, [&] { victim.cancel(); });
    victim = scheduler.later(1ms, note("victim"));
    scheduler.advance(1ms);
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(ManualSchedulerTest, holdsWorkAndTailUntilEachIsAskedFor) {
    const auto task = inBackground(
        scheduler,
        [this] {
            notes.push_back("work");
            return std::make_unique<int>(7);
        },
        [this](std::unique_ptr<int> result) { notes.push_back("tail " + std::to_string(*result)); });
    scheduler.advance(1s);
    EXPECT_THAT(notes, IsEmpty());
    EXPECT_EQ(scheduler.backgroundCount(), 1u);
    EXPECT_EQ(scheduler.runBackground(), 1u);
    EXPECT_THAT(notes, ElementsAre("work"));
    EXPECT_EQ(scheduler.tailCount(), 1u);
    EXPECT_EQ(scheduler.deliver(), 1u);
    EXPECT_THAT(notes, ElementsAre("work", "tail 7"));
}

TEST_F(ManualSchedulerTest, dropsTheTailOfCancelledWork) {
    const auto work = [this] {
        notes.push_back("work");
        return 1;
    };
    const auto tail = [this](int) { notes.push_back("tail"); };
    auto before = inBackground(scheduler, work, tail);
    before.cancel();
    auto between = inBackground(scheduler, work, tail);
    scheduler.runBackground();
    between.cancel();
    scheduler.deliver();
    EXPECT_THAT(notes, ElementsAre("work", "work"));
}

TEST_F(ManualSchedulerTest, takesPostsFromAnyThread) {
    std::thread([this] { scheduler.post(note("posted")); }).join();
    EXPECT_THAT(notes, IsEmpty());
    EXPECT_EQ(scheduler.deliver(), 1u);
    EXPECT_THAT(notes, ElementsAre("posted"));
}

TEST_F(ManualSchedulerTest, deliversWhatAJobPostsInTheNextTurn) {
    scheduler.post([this] { scheduler.post(note("second")); });
    scheduler.deliver();
    EXPECT_THAT(notes, IsEmpty());
    scheduler.settle();
    EXPECT_THAT(notes, ElementsAre("second"));
}

TEST_F(ManualSchedulerTest, watchesDescriptors) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    auto task = scheduler.whenReadable(ends[0], note("readable"));
    EXPECT_EQ(scheduler.pollDescriptors(), 0u);
    ASSERT_EQ(::write(ends[1], "x", 1), 1);
    EXPECT_EQ(scheduler.pollDescriptors(), 1u);
    task.cancel();
    EXPECT_EQ(scheduler.pollDescriptors(), 0u);
    EXPECT_THAT(notes, ElementsAre("readable"));
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(ManualSchedulerTest, settlesThroughTime) {
    Scheduler::Task work;
    const auto timer = scheduler.later(
        10ms, [&] { work = inBackground(scheduler, [] { return 1; }, [this](int) { notes.push_back("done"); }); });
    scheduler.settle(9ms);
    EXPECT_THAT(notes, IsEmpty());
    scheduler.settle(1ms);
    EXPECT_THAT(notes, ElementsAre("done"));
    EXPECT_EQ(scheduler.elapsed(), 10ms);
}

TEST(Task, isEmptyUntilItOwnsSomething) {
    Scheduler::Task task;
    EXPECT_FALSE(task);
    task.cancel();
    int cancelled = 0;
    task = Scheduler::Task([&] { ++cancelled; });
    EXPECT_TRUE(task);
    Scheduler::Task moved = std::move(task);
    EXPECT_TRUE(moved);
    moved.cancel();
    moved.cancel();
    EXPECT_EQ(cancelled, 1);
}

}  // namespace
}  // namespace quorvel
