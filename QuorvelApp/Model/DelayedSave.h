#pragma once

#include "Desktop/Scheduler.h"
#include "Library/DeckProject.h"

#include <chrono>
#include <functional>
#include <optional>

namespace quorvel {

/// Joins a run of edits into one save, 500 ms after the last. Main thread only.
///
/// Whoever owns it flushes before it goes: what still waits then is dropped, since `write` leads back to an owner that
/// is half gone by that time.
class DelayedSave {
public:
    static constexpr std::chrono::milliseconds delay{500};

    /// `write` is called with each record whose time has come. It schedules none itself.
    DelayedSave(Scheduler& scheduler, std::function<void(DeckProject)> write);

    /// Starts the wait anew with this record. One of another deck that still waits is written at once instead of being
    /// lost.
    void schedule(DeckProject project);

    /// Writes at once what waits.
    void flush();

    /// Forgets what waits for this deck: it is saved at once elsewhere, or is gone.
    void forget(const UUID& id);

    bool isPending() const { return waiting_.has_value(); }

private:
    void writeWaiting();

    Scheduler& scheduler_;
    std::function<void(DeckProject)> write_;
    std::optional<DeckProject> waiting_;
    Scheduler::Task saveTask_;
};

}  // namespace quorvel
