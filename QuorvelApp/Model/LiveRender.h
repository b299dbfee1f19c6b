#pragma once

#include "Desktop/Scheduler.h"
#include "Drawing/Image.h"

#include <chrono>
#include <functional>
#include <optional>

namespace quorvel {

/// One picture that follows the user's edits: each restart cancels what was under way, waits a moment so that a run of
/// edits draws once, and draws in the background. The old picture stays until the new one is there. Main thread only;
/// what was under way ends with this object.
class LiveRender {
public:
    using Draw = std::function<std::optional<Image>()>;
    using Store = std::function<void(std::optional<Image>)>;

    LiveRender(Scheduler& scheduler, std::chrono::milliseconds delay, Store store);
    LiveRender(const LiveRender&) = delete;
    LiveRender& operator=(const LiveRender&) = delete;

    /// `draw` runs on a background thread and owns or shares what it reads; what it gives is stored, nothing included.
    /// A drawing that has begun when it is cancelled runs to its end and its picture is dropped.
    void restart(Draw draw);
    void cancel();

    /// Whether a picture is waited for.
    bool isRunning() const { return bool(task_); }

private:
    void finish(std::optional<Image> image);

    Scheduler& scheduler_;
    std::chrono::milliseconds delay_;
    Store store_;
    Scheduler::Task task_;
};

}  // namespace quorvel
