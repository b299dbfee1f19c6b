#include "Model/LoadCycle.h"

#include "Library/FileStamp.h"

#include <utility>

namespace quorvel {

LoadCycle::LoadCycle(Scheduler& scheduler, std::function<void(const Request&, DeckLoading::Loaded)> store,
                     std::function<void()> changedOnDisk)
    : scheduler_(scheduler), store_(std::move(store)), changedOnDisk_(std::move(changedOnDisk)) {}

void LoadCycle::start(Request request) {
    cancel();
    const std::int64_t generation = loadGeneration_;
    // Sliced up for the work: the tail needs the whole of it.
    auto work = [url = request.url, sheetIndex = request.sheetIndex, mapping = request.mapping] {
        return DeckLoading::load(url, sheetIndex, mapping);
    };
    loadTask_ = inBackground(scheduler_, std::move(work),
                             [this, request = std::move(request), generation](DeckLoading::Loaded loaded) {
                                 if (generation != loadGeneration_) return;
                                 loadTask_ = {};
                                 store_(request, std::move(loaded));
                             });
}

void LoadCycle::cancel() {
    loadTask_.cancel();
    ++loadGeneration_;
}

void LoadCycle::startWatching(const std::filesystem::path& url, std::optional<std::string> stamp) {
    stopWatching();
    loadedStamp_ = std::move(stamp);
    watcher_ = std::make_unique<FileWatcher>(scheduler_, url, [this] { react(); });
    watcher_->start();
    // A save between the reading and now has no event: nobody was listening.
    if (fileStamp(url) != loadedStamp_) watcher_->assumeChanged();
}

void LoadCycle::stopWatching() {
    watcher_.reset();
}

void LoadCycle::react() {
    auto stamp = fileStamp(watcher_->url());
    // Nothing new, unless that is the last that is heard of this file: a load finds out what became of it.
    if (stamp == loadedStamp_ && watcher_->isArmed()) return;
    // Taken at once, so that the burst isn't seen twice.
    loadedStamp_ = std::move(stamp);
    changedOnDisk_();
}

}  // namespace quorvel
