#pragma once

#include "Templates/CardTemplate.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvel {

/// The undo steps of a window: each an action's name and the whole design as it was before. Undoing a step runs it
/// through `restore`, which is the same gate as any edit: what the gate registers meanwhile becomes the inverse step,
/// under the name that it is registered with. There is no limit to the number of steps. Main thread only.
class UndoStack {
public:
    /// Brings a design back. It may register steps and remove all of them; an `undo` or `redo` from within does
    /// nothing.
    using Restore = std::function<void(const CardTemplate&)>;

    /// A new step. It forgets what could be redone, unless it is registered while a step runs, when it becomes that
    /// step's inverse.
    void registerStep(std::string name, CardTemplate before);

    /// Takes the newest step off and runs it; nothing when there is none. A step that registers nothing (it changed
    /// nothing) leaves no inverse.
    void undo(const Restore& restore);
    void redo(const Restore& restore);

    /// Forgets everything. Registered later in a step that runs meanwhile, a step is an ordinary one: it belongs to
    /// what has been opened since.
    void removeAllActions();

    bool canUndo() const { return !undo_.empty(); }
    bool canRedo() const { return !redo_.empty(); }
    /// The action's name for the Edit menu; nothing when there is no step.
    std::optional<std::string> undoName() const;
    std::optional<std::string> redoName() const;
    std::size_t undoCount() const { return undo_.size(); }

private:
    struct Step {
        std::string name;
        CardTemplate before;
    };
    /// Where a step goes that is registered now.
    enum class Registers { newStep, redoStep, undoStep };

    void run(std::vector<Step>& steps, Registers inverse, const Restore& restore);

    std::vector<Step> undo_;
    std::vector<Step> redo_;
    Registers registers_ = Registers::newStep;
    bool isRunning_ = false;
};

}  // namespace quorvel
