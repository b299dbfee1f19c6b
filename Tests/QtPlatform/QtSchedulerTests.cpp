#include "QtPlatform/QtScheduler.h"
#include "Support/Desktop/EventLoop.h"

#include <QEventLoop>
#include <atomic>
#include <condition_variable>
#include <gmock/gmock.h>
#include <latch>
#include <mutex>
#include <numeric>
#include <optional>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace quorvel {
namespace {

/// What some threads give and others wait for. Not the standard's semaphore: this compiler's can miss that it was
/// released and wait for good.
class Permits {
public:
    explicit Permits(int count) : count_(count) {}

    void release(int count = 1) {
        const std::lock_guard lock(guard_);
        count_ += count;
        changed_.notify_all();
    }

    void acquire() {
        std::unique_lock lock(guard_);
        changed_.wait(lock, [this] { return count_ > 0; });
        --count_;
    }

private:
    std::mutex guard_;
    std::condition_variable changed_;
    int count_;
};

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class Pipe {
public:
    Pipe() {
        if (::pipe(ends_) != 0) throw std::runtime_error("pipe");
    }
    ~Pipe() {
        ::close(ends_[0]);
        ::close(ends_[1]);
    }
    int readable() const { return ends_[0]; }
    void put() { EXPECT_EQ(::write(ends_[1], "x", 1), 1); }
    void take() {
        char byte = 0;
        EXPECT_EQ(::read(ends_[0], &byte, 1), 1);
    }

private:
    int ends_[2]{};
};

class QtSchedulerTest : public testing::Test {
protected:
    Scheduler::Job note(std::string text) {
        return [this, text = std::move(text)] { notes.push_back(text); };
    }

    /// Runs the loop until everything that was posted before this call has run.
    void runPosted() {
        bool reached = false;
        scheduler->post([&] { reached = true; });
        ASSERT_TRUE(runUntil([&] { return reached; }));
    }

    std::vector<std::string> notes;
    std::optional<QtScheduler> scheduler{std::in_place};
};

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

TEST_F(QtSchedulerTest, jobsMayDestroyTheirOwnTask) {
    Pipe pipe;
    auto timer = std::make_unique<Scheduler::Task>();
    *timer = scheduler->later(0ms, [&, kept = std::string(100, 'x')] {
        timer.reset();
        notes.push_back("timer " + kept.substr(0, 1));
    });
    auto tail = std::make_unique<Scheduler::Task>();
    *tail = inBackground(
        *scheduler, [] { return 0; },
        [&, kept = std::string(100, 'x')](int) {
            tail.reset();
            notes.push_back("tail " + kept.substr(0, 1));
        });
    auto readable = std::make_unique<Scheduler::Task>();
    *readable = scheduler->whenReadable(pipe.readable(), [&, kept = std::string(100, 'x')] {
        readable.reset();
        notes.push_back("readable " + kept.substr(0, 1));
    });
    pipe.put();
    ASSERT_TRUE(runUntil([&] { return notes.size() == 3; }));
    EXPECT_THAT(notes, testing::UnorderedElementsAre("timer x", "tail x", "readable x"));
}

TEST_F(QtSchedulerTest, jobsMayBeTheLastOwnersOfThings) {
    struct Owner {
        std::vector<std::string>& notes;
        Scheduler::Task task;
        ~Owner() { notes.push_back("gone"); }
    };
    auto owner = std::make_shared<Owner>(notes, Scheduler::Task());
    const std::weak_ptr<Owner> left = owner;
    owner->task = scheduler->later(0ms, [own = owner] {});  // a ring that the job's end opens
    owner.reset();
    ASSERT_TRUE(runUntil([&] { return left.expired(); }));
    EXPECT_THAT(notes, ElementsAre("gone"));
}

TEST_F(QtSchedulerTest, destroysWhatATailHoldsOnTheMainThread) {
    const auto main = std::this_thread::get_id();
    std::atomic<int> elsewhere = 0;
    std::atomic<int> gone = 0;
    const auto guard = [&] {
        return std::shared_ptr<void>(nullptr, [&, main](void*) {
            if (std::this_thread::get_id() != main) ++elsewhere;
            ++gone;
        });
    };
    constexpr int count = 200;
    for (int each = 0; each < count; ++each) {
        auto task = inBackground(*scheduler, [] { return 0; }, [held = guard()](int) {});
        if (each % 2 == 0)
            task.detach();
        else
            task.cancel();
    }
    ASSERT_TRUE(runUntil([&] { return gone == count; }));
    EXPECT_EQ(elsewhere, 0);
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

TEST_F(QtSchedulerTest, aJobMayReplaceItsOwnTask) {
    // The old task ends after the new one is made, and must not take it for itself.
    Scheduler::Task timer;
    int runs = 0;
    std::function<void()> again = [&] {
        if (++runs < 5) timer = scheduler->later(0ms, again);
    };
    again();
    ASSERT_TRUE(runUntil([&] { return runs == 5; }));

    Pipe pipe;
    Scheduler::Task readable;
    std::function<void()> read = [&] {
        pipe.take();
        if (++runs < 10) {
            readable = scheduler->whenReadable(pipe.readable(), read);
            pipe.put();
        }
    };
    readable = scheduler->whenReadable(pipe.readable(), read);
    pipe.put();
    ASSERT_TRUE(runUntil([&] { return runs == 10; }));
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

TEST_F(QtSchedulerTest, itsEndWaitsForBegunWorkAndDropsTheRest) {
    Permits begun(0);
    std::atomic<bool> ended = false;
    Pipe pipe;
    pipe.put();
    std::vector<Scheduler::Task> tasks;
    tasks.push_back(scheduler->inBackground([&]() -> Scheduler::Job {
        begun.release();
        for (int turn = 0; turn < 1'000; ++turn) std::this_thread::yield();
        scheduler->post(note("posted by the work"));
        ended = true;
        return note("tail");
    }));
    begun.acquire();
    tasks.push_back(scheduler->later(0ms, note("later")));
    tasks.push_back(scheduler->whenReadable(pipe.readable(), note("readable")));
    scheduler->post(note("posted"));
    // The posting work reads the optional until its end.
    QtScheduler& itself = *scheduler;
    itself.~QtScheduler();
    EXPECT_TRUE(ended);
    runWhatWaits();
    new (&itself) QtScheduler;
    EXPECT_THAT(notes, IsEmpty());
    for (auto& task : tasks) task.cancel();
}

TEST_F(QtSchedulerTest, itsEndMayLeadToFurtherCalls) {
    // What it drops has owners whose ends cancel, ask and post again.
    Pipe pipe;
    struct Restless {
        QtScheduler& scheduler;
        Scheduler::Task other;
        ~Restless() {
            other.cancel();
            scheduler.post([] { ADD_FAILURE(); });
            EXPECT_FALSE(scheduler.later(std::chrono::milliseconds(0), [] { ADD_FAILURE(); }));
            EXPECT_FALSE(scheduler.inBackground([]() -> Scheduler::Job { return {}; }));
            EXPECT_FALSE(scheduler.whenReadable(0, [] { ADD_FAILURE(); }));
        }
    };
    const auto restless = [&](Scheduler::Task task) {
        return [held = std::make_shared<Restless>(*scheduler, std::move(task))] { ADD_FAILURE(); };
    };
    scheduler->later(1h, restless(scheduler->later(1h, [] {}))).detach();
    scheduler->later(1h, restless(scheduler->whenReadable(pipe.readable(), [] {}))).detach();
    scheduler->whenReadable(pipe.readable(), restless(scheduler->later(1h, [] {}))).detach();
    scheduler->post(restless(scheduler->later(1h, [] {})));
    QtScheduler& itself = *scheduler;
    itself.~QtScheduler();
    new (&itself) QtScheduler;
    runPosted();
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
