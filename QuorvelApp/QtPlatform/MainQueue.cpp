#include "QtPlatform/MainQueue.h"

#include <cstdint>
#include <sys/eventfd.h>
#include <system_error>
#include <utility>

namespace quorvel {

// The descriptor changes under the same lock as the queue, so that neither is ever seen without the other.

MainQueue::MainQueue() : readable_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!readable_) throw std::system_error(errno, std::generic_category(), "eventfd");
}

void MainQueue::put(Job job) {
    const std::lock_guard lock(guard_);
    jobs_.push_back(std::move(job));
    if (jobs_.size() == 1) ::eventfd_write(readable_.get(), 1);
}

std::optional<MainQueue::Job> MainQueue::take() {
    const std::lock_guard lock(guard_);
    if (jobs_.empty()) return std::nullopt;
    Job job = std::move(jobs_.front());
    jobs_.pop_front();
    if (jobs_.empty()) {
        std::uint64_t count = 0;
        ::eventfd_read(readable_.get(), &count);
    }
    return job;
}

}  // namespace quorvel
