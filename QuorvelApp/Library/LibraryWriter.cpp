#include "Library/LibraryWriter.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace quorvel {

namespace {

namespace fs = std::filesystem;

/// With a slash at its end a link would be the folder that it leads to.
fs::path withoutFinalSlash(const fs::path& folder) {
    return folder.has_filename() ? folder : folder.parent_path();
}

}  // namespace

LibraryWriter::LibraryWriter(Scheduler& scheduler, std::optional<Library> library)
    : scheduler_(scheduler), library_(std::move(library)) {}

void LibraryWriter::save(DeckProject project) {
    if (!library_) return;
    const auto older =
        std::ranges::find_if(waiting_, [&](const Entry& entry) { return entry.saved && entry.id == project.id; });
    if (older != waiting_.end()) {
        older->saved = std::move(project);
        return;
    }
    const UUID id = project.id;
    waiting_.push_back({id, std::move(project), std::nullopt});
    next();
}

void LibraryWriter::remove(const UUID& id, std::optional<fs::path> folder) {
    if (!library_) return;
    std::erase_if(waiting_, [&](const Entry& entry) { return entry.saved && entry.id == id; });
    const auto firstSave = std::ranges::find_if(waiting_, [](const Entry& entry) { return entry.saved.has_value(); });
    waiting_.insert(firstSave, {id, std::nullopt, std::move(folder)});
    next();
}

void LibraryWriter::whenIdle(Scheduler::Job job) {
    if (isIdle()) return job();
    whenIdle_.push_back(std::move(job));
}

void LibraryWriter::perform(const Library& library, const Entry& entry) {
    if (entry.saved) {
        // Nobody is told: the record is still in memory, and its next change writes all of it again.
        static_cast<void>(library.saveDeck(*entry.saved));
        return;
    }
    library.deleteDeck(entry.id);
    std::error_code ignored;
    if (entry.folder) fs::remove_all(withoutFinalSlash(*entry.folder), ignored);
}

void LibraryWriter::next() {
    if (running_ || waiting_.empty()) return;
    // Shared, because a job is copied and a record is large.
    const auto entry = std::make_shared<const Entry>(std::move(waiting_.front()));
    waiting_.pop_front();
    running_ = scheduler_.inBackground([this, library = *library_, entry]() -> Scheduler::Job {
        perform(library, *entry);
        return [this] { finish(); };
    });
}

void LibraryWriter::finish() {
    running_.cancel();
    next();
    if (!isIdle()) return;
    for (const Scheduler::Job& job : std::exchange(whenIdle_, {})) job();
}

}  // namespace quorvel
