#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace quorvel {

/// Threads that take up work in the order it was given. `add` and `remove` are called by the thread that made the pool.
class WorkerPool {
public:
    using Work = std::function<void()>;

    explicit WorkerPool(unsigned threads);
    ~WorkerPool();
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    /// `work` must not throw. It is destroyed by the thread that ran it, or by the caller of what drops it.
    void add(std::uint64_t id, Work work);

    /// Drops work that has not begun.
    void remove(std::uint64_t id);

    /// Drops what has not begun and waits for what has. Nothing begins afterwards.
    void close();

private:
    struct Entry {
        std::uint64_t id = 0;
        Work work;
    };

    void run();

    std::mutex guard_;
    std::condition_variable wake_;
    std::deque<Entry> waiting_;
    bool closed_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace quorvel
