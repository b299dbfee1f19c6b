#pragma once

#include "Desktop/Scheduler.h"
#include "Foundation/FileDescriptor.h"
#include "Library/FileIdentity.h"

#include <chrono>
#include <filesystem>
#include <functional>

namespace quorvel {

/// Calls back once for each burst of changes of one file, 350 ms after the last of them, also when the file is
/// replaced. Main thread only. A file that can't be watched is silently not watched; nothing retries. Destroying one
/// stops it.
///
/// It watches the file that the path leads to, links followed, until that file leaves the path: by a rename, a removal,
/// or another file taking its name. It then looks at the path once more when the 350 ms are over. What changes while no
/// one looks is the owner's to find out: who read the file before `start` compares it again after `start`, and calls
/// `assumeChanged` if it differs. A change of attributes alone (permissions, owner, number of names) is no change.
class FileWatcher {
public:
    static constexpr std::chrono::milliseconds delay{350};

    /// Stores what it is given; `start` begins. `onChange` may stop, start or destroy this watcher.
    FileWatcher(Scheduler& scheduler, std::filesystem::path url, std::function<void()> onChange);
    FileWatcher(const FileWatcher&) = delete;
    FileWatcher& operator=(const FileWatcher&) = delete;

    /// Watches the file that is at the path now; nothing when there is none, or what is there isn't a file.
    void start();

    /// Nothing is called any more until it is started again.
    void stop();

    /// Starts the wait as if the file had just changed, whether it is watched or not.
    void assumeChanged();

    const std::filesystem::path& url() const { return url_; }

    /// Whether the file that is at the path is being watched now.
    bool isArmed() const { return bool(source_); }

    /// Whether a change would be told: it is armed, or will look at the path once more.
    bool isListening() const { return isArmed() || pending_; }

private:
    void readEvents();
    void disarm();
    void waitIsOver();

    Scheduler& scheduler_;
    std::filesystem::path url_;
    std::function<void()> onChange_;
    FileDescriptor source_;     // of events; none while it isn't armed
    FileIdentity watched_;      // of the file behind `source_`
    Scheduler::Task readable_;  // cancelled before `source_` closes
    Scheduler::Task pending_;
};

}  // namespace quorvel
