#include "QtPlatform/QtSchedulerTest.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace quorvel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

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

}  // namespace
}  // namespace quorvel
