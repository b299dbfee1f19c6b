#pragma once

#include "Desktop/Scheduler.h"

#include <memory>

namespace quorvel {

/// The real scheduler. Jobs run from the event loop of the thread that made it, one for each turn of the loop, also of
/// a nested loop that a job runs; that thread needs a QCoreApplication. Work in the background runs on threads of its
/// own. All that Qt does between the threads is to wait for a descriptor.
///
/// Work in the background is destroyed where it ran, before its tail can run. So what only `work` holds goes there,
/// and what `then` holds goes on the main thread, whether it has been cancelled or not.
///
/// Destroying the scheduler waits for work that has begun and drops the rest; nothing runs afterwards. That must not be
/// done by one of its own jobs. Tasks may outlive it.
class QtScheduler final : public Scheduler {
public:
    /// How many pieces of work can run at once, at least 4.
    static unsigned threadCount();

    QtScheduler();
    ~QtScheduler() override;
    QtScheduler(const QtScheduler&) = delete;
    QtScheduler& operator=(const QtScheduler&) = delete;

    [[nodiscard]] Task later(std::chrono::milliseconds delay, Job job) override;
    [[nodiscard]] Task inBackground(std::function<Job()> work) override;
    [[nodiscard]] Task whenReadable(int descriptor, Job job) override;
    void post(Job job) override;
    Clock::time_point now() const override;

private:
    class Loop;
    std::shared_ptr<Loop> loop_;
};

}  // namespace quorvel
