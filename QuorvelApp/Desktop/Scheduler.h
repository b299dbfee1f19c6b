#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace quorvel {

/// Time and threads, as everything above the kit sees them: later, in the background and back, now. All calls are made
/// on the main thread and all jobs run there, from the event loop and never from within a call, except where said.
///
/// No other file above the kit starts a thread or a timer. The real one is `QtScheduler`; tests have one whose clock
/// they move by hand.
class Scheduler {
public:
    using Job = std::function<void()>;
    using Clock = std::chrono::system_clock;

    /// The owner's end of something that is under way. Once it is cancelled or destroyed nothing of it runs on the main
    /// thread any more; work in the background that has begun goes on to its end and its result is dropped.
    class Task {
    public:
        Task() = default;
        /// `cancel` is called at most once, on the main thread; it may find that everything has run already.
        explicit Task(Job cancel) : cancel_(std::move(cancel)) {}
        Task(Task&& other) noexcept : cancel_(std::exchange(other.cancel_, {})) {}
        Task& operator=(Task&& other) noexcept {
            if (this != &other) {
                this->cancel();
                cancel_ = std::exchange(other.cancel_, {});
            }
            return *this;
        }
        ~Task() { cancel(); }

        void cancel() {
            if (const Job job = std::exchange(cancel_, {})) job();
        }
        /// Lets go of it: it runs to its end.
        void detach() { cancel_ = {}; }

        /// Whether there is a task here, run or not; false after `cancel`.
        explicit operator bool() const { return bool(cancel_); }

    private:
        Job cancel_;
    };

    virtual ~Scheduler() = default;

    /// Runs `job` after `delay`, measured by a clock that never jumps.
    [[nodiscard]] virtual Task later(std::chrono::milliseconds delay, Job job) = 0;

    /// Runs `work` on a background thread, and then what it returned on the main thread. What was begun first is taken
    /// up first. `work` must not throw; it owns or shares what it reads.
    [[nodiscard]] virtual Task inBackground(std::function<Job()> work) = 0;

    /// Runs `job` each time that `descriptor` has something to read. The caller keeps the descriptor open as long as
    /// the task lives, and cancels before it closes.
    [[nodiscard]] virtual Task whenReadable(int descriptor, Job job) = 0;

    /// Runs `job` soon on the main thread. The one call that any thread may make. Not cancellable: the job itself must
    /// know whether it still has a place to go.
    virtual void post(Job job) = 0;

    /// The wall clock.
    virtual Clock::time_point now() const = 0;
};

/// Runs `work` in the background and `then` with its result on the main thread.
template <class Work, class Then>
[[nodiscard]] Scheduler::Task inBackground(Scheduler& scheduler, Work work, Then then) {
    return scheduler.inBackground([work = std::move(work), then = std::move(then)]() mutable -> Scheduler::Job {
        // A job must be copyable; a result need not be.
        auto result = std::make_shared<decltype(work())>(work());
        return [result, then]() mutable { then(std::move(*result)); };
    });
}

}  // namespace quorvel
