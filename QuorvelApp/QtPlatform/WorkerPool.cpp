#include "QtPlatform/WorkerPool.h"

#include <algorithm>
#include <utility>

namespace quorvel {

// Work is always destroyed outside the lock: what it holds may reach back to here.

WorkerPool::WorkerPool(unsigned threads) {
    for (unsigned index = 0; index < threads; ++index) threads_.emplace_back([this] { run(); });
}

WorkerPool::~WorkerPool() {
    close();
}

void WorkerPool::add(std::uint64_t id, Work work) {
    {
        const std::lock_guard lock(guard_);
        if (closed_) return;
        waiting_.push_back({id, std::move(work)});
    }
    wake_.notify_one();
}

void WorkerPool::remove(std::uint64_t id) {
    Entry dropped;
    const std::lock_guard lock(guard_);
    const auto found = std::ranges::find(waiting_, id, &Entry::id);
    if (found == waiting_.end()) return;
    dropped = std::move(*found);
    waiting_.erase(found);
}

void WorkerPool::close() {
    std::deque<Entry> dropped;
    {
        const std::lock_guard lock(guard_);
        closed_ = true;
        dropped.swap(waiting_);
    }
    wake_.notify_all();
    for (std::thread& thread : threads_) thread.join();
    threads_.clear();
}

void WorkerPool::run() {
    std::unique_lock lock(guard_);
    for (;;) {
        wake_.wait(lock, [this] { return closed_ || !waiting_.empty(); });
        if (waiting_.empty()) return;
        Entry entry = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        entry.work();
        entry.work = {};
        lock.lock();
    }
}

}  // namespace quorvel
