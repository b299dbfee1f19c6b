#include "QtPlatform/QtSchedulerTest.h"

#include <QEventLoop>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <latch>
#include <memory>
#include <numeric>
#include <thread>

namespace quorvel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(QtSchedulerTest, postsInOrderAndNotFromWithinTheCall) {
    scheduler->post(note("1"));
    scheduler->post([this] {
        notes.push_back("2");
        scheduler->post(note("4"));
        notes.push_back("3");
    });
    EXPECT_THAT(notes, IsEmpty());
    runPosted();
    runPosted();
    EXPECT_THAT(notes, ElementsAre("1", "2", "3", "4"));
}

TEST_F(QtSchedulerTest, keepsTheOrderOfEachThreadThatPosts) {
    constexpr int perThread = 500;
    std::vector<std::vector<int>> seen(4);
    {
        std::vector<std::jthread> threads;
        for (std::size_t thread = 0; thread < seen.size(); ++thread)
            threads.emplace_back([this, thread, &seen] {
                for (int each = 0; each < perThread; ++each)
                    scheduler->post([&seen, thread, each] { seen[thread].push_back(each); });
            });
        ASSERT_TRUE(
            runUntil([&] { return std::ranges::all_of(seen, [](auto& one) { return one.size() == perThread; }); }));
    }
    std::vector<int> expected(perThread);
    std::iota(expected.begin(), expected.end(), 0);
    for (const auto& one : seen) EXPECT_EQ(one, expected);
}

TEST_F(QtSchedulerTest, runsJobsOnTheMainThreadAndWorkElsewhere) {
    const auto main = std::this_thread::get_id();
    std::thread::id worker;
    std::thread::id after;
    const auto task = inBackground(
        *scheduler, [] { return std::this_thread::get_id(); },
        [&](std::thread::id id) {
            worker = id;
            after = std::this_thread::get_id();
        });
    ASSERT_TRUE(runUntil([&] { return after == main; }));
    EXPECT_NE(worker, main);
    EXPECT_NE(worker, std::thread::id());
}

TEST_F(QtSchedulerTest, handsOverResultsThatCannotBeCopied) {
    int result = 0;
    const auto task = inBackground(
        *scheduler, [] { return std::make_unique<int>(7); }, [&](std::unique_ptr<int> number) { result = *number; });
    ASSERT_TRUE(runUntil([&] { return result == 7; }));
}

TEST_F(QtSchedulerTest, doesTwoWorksAtOnce) {
    // Each waits for the other; on one thread neither would end.
    std::latch both(2);
    int done = 0;
    std::vector<Scheduler::Task> tasks;
    for (int each = 0; each < 2; ++each)
        tasks.push_back(scheduler->inBackground([&]() -> Scheduler::Job {
            both.arrive_and_wait();
            return [&] { ++done; };
        }));
    ASSERT_TRUE(runUntil([&] { return done == 2; }));
}

TEST_F(QtSchedulerTest, handsOverManyResults) {
    constexpr std::size_t count = 2'000;
    std::vector<std::string> results(count);
    std::size_t done = 0;
    for (std::size_t each = 0; each < count; ++each)
        inBackground(
            *scheduler, [each] { return std::to_string(each); },
            [&, each](std::string text) {
                results[each] = std::move(text);
                ++done;
            })
            .detach();
    ASSERT_TRUE(runUntil([&] { return done == count; }));
    for (std::size_t each = 0; each < count; ++each) EXPECT_EQ(results[each], std::to_string(each));
}

TEST_F(QtSchedulerTest, runsALaterJobOnceAndNotBeforeItsTime) {
    const auto start = std::chrono::steady_clock::now();
    std::optional<std::chrono::steady_clock::duration> took;
    int runs = 0;
    const auto task = scheduler->later(30ms, [&] {
        ++runs;
        took = std::chrono::steady_clock::now() - start;
    });
    ASSERT_TRUE(runUntil([&] { return took.has_value(); }));
    EXPECT_GE(*took, 29ms);
    bool later = false;
    const auto other = scheduler->later(60ms, [&] { later = true; });
    ASSERT_TRUE(runUntil([&] { return later; }));
    EXPECT_EQ(runs, 1);
}

TEST_F(QtSchedulerTest, runsLaterJobsInTheOrderOfTheirTimes) {
    const auto c = scheduler->later(40ms, note("40"));
    const auto a = scheduler->later(0ms, note("0"));
    const auto b = scheduler->later(20ms, note("20"));
    const auto before = scheduler->later(-5ms, note("-5"));
    EXPECT_THAT(notes, IsEmpty());
    ASSERT_TRUE(runUntil([&] { return notes.size() == 4; }));
    EXPECT_THAT(notes, ElementsAre("0", "-5", "20", "40"));
}

TEST_F(QtSchedulerTest, tellsTheWallClock) {
    const auto before = std::chrono::system_clock::now();
    const auto now = scheduler->now();
    EXPECT_LE(before, now);
    EXPECT_LE(now, std::chrono::system_clock::now());
}

TEST_F(QtSchedulerTest, takesUpWorkInOrder) {
    // With all threads but one busy, the order of beginning is the order of giving.
    Permits go(0);
    std::vector<int> order;
    std::atomic<int> busy = 0;
    const int others = int(QtScheduler::threadCount()) - 1;
    std::vector<Scheduler::Task> tasks;
    for (int each = 0; each < others; ++each)
        tasks.push_back(scheduler->inBackground([&]() -> Scheduler::Job {
            ++busy;
            go.acquire();
            return {};
        }));
    while (busy < others) std::this_thread::yield();
    bool done = false;
    for (int each = 0; each < 5; ++each)
        tasks.push_back(scheduler->inBackground([&, each]() -> Scheduler::Job {
            order.push_back(each);
            return [&, each] { done = each == 4; };
        }));
    const bool came = runUntil([&] { return done; });
    go.release(others);
    ASSERT_TRUE(came);
    EXPECT_THAT(order, ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(QtSchedulerTest, allowsWorkWithoutATail) {
    std::atomic<bool> worked = false;
    const auto task = scheduler->inBackground([&]() -> Scheduler::Job {
        worked = true;
        return {};
    });
    bool after = false;
    const auto other = inBackground(*scheduler, [] { return 0; }, [&](int) { after = true; });
    ASSERT_TRUE(runUntil([&] { return after && worked; }));
    runPosted();
}

TEST_F(QtSchedulerTest, callsForADescriptorAsLongAsItIsReadable) {
    Pipe pipe;
    int calls = 0;
    auto task = scheduler->whenReadable(pipe.readable(), [&] {
        ++calls;
        pipe.take();
    });
    pipe.put();
    pipe.put();
    ASSERT_TRUE(runUntil([&] { return calls == 2; }));
    pipe.put();
    ASSERT_TRUE(runUntil([&] { return calls == 3; }));
    pipe.put();
    task.cancel();
    runPosted();
    EXPECT_EQ(calls, 3);
}

TEST_F(QtSchedulerTest, runsJobsInALoopWithinAJob) {
    // As a modal panel does, which a job shows.
    Scheduler::Task timer;
    Scheduler::Task tail;
    scheduler->post([&] {
        notes.push_back("opens");
        QEventLoop panel;
        scheduler->post(note("second"));
        timer = scheduler->later(1ms, note("timer"));
        tail = inBackground(*scheduler, [] { return 0; }, [&](int) { notes.push_back("tail"); });
        while (notes.size() < 5) panel.processEvents(QEventLoop::WaitForMoreEvents);
        notes.push_back("closes");
    });
    scheduler->post(note("first"));
    ASSERT_TRUE(runUntil([&] { return notes.size() == 6; }));
    EXPECT_EQ(notes.front(), "opens");
    EXPECT_EQ(notes.back(), "closes");
    EXPECT_THAT(notes, testing::UnorderedElementsAre("opens", "first", "second", "timer", "tail", "closes"));
}

TEST_F(QtSchedulerTest, leavesTheLoopItsTurnsWhileJobsFollowJobs) {
    bool stop = false;
    std::function<void()> again = [&] {
        if (!stop) scheduler->post(again);
    };
    scheduler->post(again);
    const auto timer = scheduler->later(5ms, [&] { stop = true; });
    EXPECT_TRUE(runUntil([&] { return stop; }));
    runPosted();
}

}  // namespace
}  // namespace quorvel
