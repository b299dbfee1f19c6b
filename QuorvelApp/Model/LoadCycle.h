#pragma once

#include "Desktop/Scheduler.h"
#include "Foundation/UUID.h"
#include "Library/FileWatcher.h"
#include "Model/DeckLoading.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvel {

/// Reads the spreadsheet of the open deck in the background, again after each of its saves. Every load has a number;
/// what an older one brings is dropped without a trace. Main thread only.
class LoadCycle {
public:
    /// What to read, as it was when the load began.
    struct Request {
        UUID deck;
        std::filesystem::path url;
        std::int64_t sheetIndex = 0;
        FieldMapping mapping;
    };

    /// `store` gets what a load brought that nothing has superseded. `changedOnDisk` is told of a save that the cards
    /// on screen don't show yet.
    LoadCycle(Scheduler& scheduler, std::function<void(const Request&, DeckLoading::Loaded)> store,
              std::function<void()> changedOnDisk);

    /// Begins a load; an older one is superseded.
    void start(Request request);

    /// Nothing that is being read arrives any more.
    void cancel();

    /// Watches the file, whose `stamp` was taken before it was read: a save since then is noticed, too.
    void startWatching(const std::filesystem::path& url, std::optional<std::string> stamp);
    void stopWatching();

    std::int64_t loadGeneration() const { return loadGeneration_; }

    /// Whether the next save is noticed. A watcher that has lost its file counts until the load that follows has ended:
    /// that one watches the file where it is then.
    bool isWatching() const { return watcher_ && (watcher_->isListening() || loadTask_); }

private:
    void react();

    Scheduler& scheduler_;
    std::function<void(const Request&, DeckLoading::Loaded)> store_;
    std::function<void()> changedOnDisk_;
    Scheduler::Task loadTask_;
    std::int64_t loadGeneration_ = 0;
    std::unique_ptr<FileWatcher> watcher_;
    std::optional<std::string> loadedStamp_;
};

}  // namespace quorvel
