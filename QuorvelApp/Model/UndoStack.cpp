#include "Model/UndoStack.h"

#include <utility>

namespace quorvel {

void UndoStack::registerStep(std::string name, CardTemplate before) {
    if (registers_ == Registers::newStep) redo_.clear();
    auto& steps = registers_ == Registers::redoStep ? redo_ : undo_;
    steps.push_back({std::move(name), std::move(before)});
}

void UndoStack::undo(const Restore& restore) {
    run(undo_, Registers::redoStep, restore);
}

void UndoStack::redo(const Restore& restore) {
    run(redo_, Registers::undoStep, restore);
}

void UndoStack::run(std::vector<Step>& steps, Registers inverse, const Restore& restore) {
    if (isRunning_ || steps.empty()) return;
    // Off the list before it runs, so that nothing registered or removed meanwhile touches it.
    const Step step = std::move(steps.back());
    steps.pop_back();
    isRunning_ = true;
    registers_ = inverse;
    restore(step.before);
    registers_ = Registers::newStep;
    isRunning_ = false;
}

void UndoStack::removeAllActions() {
    undo_.clear();
    redo_.clear();
    registers_ = Registers::newStep;
}

std::optional<std::string> UndoStack::undoName() const {
    return undo_.empty() ? std::nullopt : std::optional(undo_.back().name);
}

std::optional<std::string> UndoStack::redoName() const {
    return redo_.empty() ? std::nullopt : std::optional(redo_.back().name);
}

}  // namespace quorvel
