#pragma once

#include "QtPlatform/QtScheduler.h"
#include "Support/Desktop/EventLoop.h"

#include <condition_variable>
#include <gmock/gmock.h>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace quorvel {

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

/// A descriptor that is readable when told.
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

/// A scheduler with the event loop of the test, and the words of its jobs in the order in which they ran.
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

}  // namespace quorvel
