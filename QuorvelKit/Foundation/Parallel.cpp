#include "Foundation/Parallel.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#ifdef __linux__
#include <sched.h>
#endif

namespace quorvel {

namespace {

/// The window of indices between the last consumed one and the furthest that may be produced, and the threads that work
/// in it. The destructor ends them.
class Window {
public:
    Window(std::size_t count, const std::function<void(std::size_t)>& produce, std::size_t size)
        : count_(count), produce_(produce), slots_(size) {}

    ~Window() {
        {
            const std::lock_guard lock(mutex_);
            stopped_ = true;
        }
        mayProduce_.notify_all();
        for (std::thread& thread : threads_) thread.join();
    }

    /// How many threads could be had, at most `wanted`.
    std::size_t start(std::size_t wanted) {
        threads_.reserve(wanted);
        try {
            while (threads_.size() < wanted) threads_.emplace_back([this] { work(); });
        } catch (const std::system_error&) {
            return threads_.size();  // fewer threads do the same work
        }
        return wanted;
    }

    /// Waits until the next index is produced; throws what `produce` threw for it.
    void waitForNext() {
        std::unique_lock lock(mutex_);
        Slot& slot = slots_[consumed_ % slots_.size()];
        mayConsume_.wait(lock, [&] { return slot.produced; });
        if (slot.error) std::rethrow_exception(slot.error);
    }

    void nextIsConsumed() {
        {
            const std::lock_guard lock(mutex_);
            slots_[consumed_ % slots_.size()].produced = false;
            ++consumed_;
        }
        mayProduce_.notify_one();
    }

private:
    struct Slot {
        bool produced = false;
        std::exception_ptr error;
    };

    void work() {
        std::unique_lock lock(mutex_);
        for (;;) {
            mayProduce_.wait(lock, [&] { return stopped_ || next_ == count_ || next_ - consumed_ < slots_.size(); });
            if (stopped_ || next_ == count_) return;
            const std::size_t index = next_++;
            lock.unlock();
            std::exception_ptr error;
            try {
                produce_(index);
            } catch (...) {
                error = std::current_exception();
            }
            lock.lock();
            slots_[index % slots_.size()] = {true, error};
            if (index == consumed_) mayConsume_.notify_one();
        }
    }

    const std::size_t count_;
    const std::function<void(std::size_t)>& produce_;
    std::mutex mutex_;
    std::condition_variable mayProduce_;
    std::condition_variable mayConsume_;
    std::vector<Slot> slots_;
    std::size_t next_ = 0;      // the next index to be produced
    std::size_t consumed_ = 0;  // how many are consumed
    bool stopped_ = false;
    std::vector<std::thread> threads_;
};

void forEachInline(std::size_t count, const std::function<void(std::size_t)>& produce,
                   const std::function<bool(std::size_t)>& consume) {
    for (std::size_t i = 0; i < count; ++i) {
        produce(i);
        if (!consume(i)) return;
    }
}

}  // namespace

unsigned processorCount() {
#ifdef __linux__
    // What this process may use can be less than what the machine has.
    cpu_set_t set;
    if (sched_getaffinity(0, sizeof set, &set) == 0 && CPU_COUNT(&set) > 0)
        return static_cast<unsigned>(CPU_COUNT(&set));
#endif
    return std::max(1U, std::thread::hardware_concurrency());
}

void forEachInOrder(std::size_t count, const std::function<void(std::size_t)>& produce,
                    const std::function<bool(std::size_t)>& consume, unsigned threads, std::size_t inFlight) {
    if (count == 0) return;
    const std::size_t size = std::clamp<std::size_t>(inFlight, 1, count);
    const std::size_t workers = std::min<std::size_t>(threads, size);
    if (workers <= 1) return forEachInline(count, produce, consume);

    Window window(count, produce, size);
    if (window.start(workers) == 0) return forEachInline(count, produce, consume);
    for (std::size_t i = 0; i < count; ++i) {
        window.waitForNext();
        if (!consume(i)) return;
        window.nextIsConsumed();
    }
}

}  // namespace quorvel
