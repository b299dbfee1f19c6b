#include "Model/DelayedSave.h"

#include <utility>

namespace quorvel {

DelayedSave::DelayedSave(Scheduler& scheduler, std::function<void(DeckProject)> write)
    : scheduler_(scheduler), write_(std::move(write)) {}

void DelayedSave::schedule(DeckProject project) {
    if (waiting_ && waiting_->id != project.id) flush();
    waiting_ = std::move(project);
    saveTask_ = scheduler_.later(delay, [this] { writeWaiting(); });
}

void DelayedSave::flush() {
    saveTask_.cancel();
    writeWaiting();
}

void DelayedSave::forget(const UUID& id) {
    if (!waiting_ || waiting_->id != id) return;
    saveTask_.cancel();
    waiting_.reset();
}

void DelayedSave::writeWaiting() {
    if (auto project = std::exchange(waiting_, std::nullopt)) write_(std::move(*project));
}

}  // namespace quorvel
