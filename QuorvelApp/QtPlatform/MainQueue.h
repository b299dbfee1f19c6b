#pragma once

#include "Foundation/FileDescriptor.h"

#include <deque>
#include <functional>
#include <mutex>
#include <optional>

namespace quorvel {

/// Jobs on their way to the main thread, in the order they were put in. Its descriptor is readable as long as there is
/// one, so that any event loop can wait for it. Safe from any thread.
class MainQueue {
public:
    using Job = std::function<void()>;

    MainQueue();

    void put(Job job);

    /// The oldest job, out of the queue; nothing when there is none.
    std::optional<Job> take();

    int descriptor() const { return readable_.get(); }

private:
    FileDescriptor readable_;
    std::mutex guard_;
    std::deque<Job> jobs_;
};

}  // namespace quorvel
