#pragma once

#include "Desktop/Scheduler.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>

namespace quorvel {

/// A scheduler whose clock a test moves by hand, all on one thread. Work in the background waits until the test runs it
/// (`runBackground`), and its tail waits again until the test delivers it (`deliver`), so that every order of events
/// can be played.
class ManualScheduler final : public Scheduler {
public:
    using Milliseconds = std::chrono::milliseconds;

    [[nodiscard]] Task later(Milliseconds delay, Job job) override;
    [[nodiscard]] Task inBackground(std::function<Job()> work) override;
    [[nodiscard]] Task whenReadable(int descriptor, Job job) override;
    void post(Job job) override;
    Clock::time_point now() const override { return start_ + elapsed_; }

    /// Moves the clock and runs what comes due on the way, each at its own time; jobs that were posted run before.
    void advance(Milliseconds time);

    /// Runs the oldest `count` pieces of work in the background, without their tails. How many there were.
    std::size_t runBackground(std::size_t count = SIZE_MAX);

    /// Runs the oldest `count` of the tails that wait and of what was posted, without new ones. How many there were.
    std::size_t deliver(std::size_t count = SIZE_MAX);

    /// Runs the jobs whose descriptor has something to read now, each once. How many there were.
    std::size_t pollDescriptors();

    /// Runs background work, tails and posted jobs until none is left, without moving the clock.
    void settle();

    /// Settles, and moves the clock to each timer until `time` has passed, settling at each.
    void settle(Milliseconds time);

    std::size_t backgroundCount() const;  ///< waiting to run and not cancelled
    std::size_t tailCount() const;        ///< run and not delivered
    std::size_t timerCount() const;       ///< waiting for their time
    Milliseconds elapsed() const { return elapsed_; }

private:
    struct Timer {
        std::shared_ptr<bool> alive;
        Job job;
    };
    struct Work {
        std::shared_ptr<bool> alive;
        std::function<Job()> work;
    };
    struct Tail {
        std::shared_ptr<bool> alive;
        Job job;
    };
    struct Watch {
        std::shared_ptr<bool> alive;
        int descriptor = -1;
        Job job;
    };

    static Task taskFor(std::shared_ptr<bool> alive);
    std::deque<Tail> takeTails(std::size_t count);

    Clock::time_point start_ = std::chrono::sys_days(std::chrono::year(2026) / 5 / 17);
    Milliseconds elapsed_{0};
    std::multimap<Milliseconds, Timer> timers_;
    std::deque<Work> background_;
    std::deque<Tail> tails_;
    std::deque<Watch> watches_;
    std::mutex posting_;  // `post` may be called by any thread
};

}  // namespace quorvel
