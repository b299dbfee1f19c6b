#pragma once

#include "Desktop/Scheduler.h"
#include "Library/Library.h"

#include <deque>
#include <filesystem>
#include <optional>
#include <vector>

namespace quorvel {

/// Writes and removes deck records in the background, one at a time, those of one deck in the order they were asked
/// for, so that an older record never lands on a newer one and a removed deck never comes back. The main thread never
/// waits for a disk. Failures are silent: the record stays in memory, and the next save tries again. Main thread only.
/// What still waits when one is destroyed is never written: wait for `whenIdle` first.
class LibraryWriter {
public:
    /// Without a library nothing is ever written.
    LibraryWriter(Scheduler& scheduler, std::optional<Library> library);

    /// A record that waits is replaced by a newer one of the same deck.
    void save(DeckProject project);

    /// Removes the deck's file and, when given, a folder with all that is in it. A waiting save of the deck is dropped;
    /// those of other decks come after. A link in the folder's place or inside goes without what it leads to.
    void remove(const UUID& id, std::optional<std::filesystem::path> folder);

    /// Whether everything asked for has been done.
    bool isIdle() const { return !running_ && waiting_.empty(); }

    /// Calls `job` once when everything asked for has been done, at once if it has. It may destroy this writer.
    void whenIdle(Scheduler::Job job);

private:
    struct Entry {
        UUID id;
        std::optional<DeckProject> saved;  // none: the deck is removed
        std::optional<std::filesystem::path> folder;
    };

    static void perform(const Library& library, const Entry& entry);
    void next();
    void finish();

    Scheduler& scheduler_;
    std::optional<Library> library_;
    std::deque<Entry> waiting_;
    Scheduler::Task running_;
    std::vector<Scheduler::Job> whenIdle_;
};

}  // namespace quorvel
