#pragma once

#include "Model/UndoStack.h"
#include "Templates/CardTemplate.h"

#include <memory>

namespace quorvel {

/// The one gate that every change of a design passes: it notices when nothing changed, and registers undo steps. Main
/// thread only.
class TemplateEditing {
public:
    /// The window's stack; there may be none, and then nothing can be undone.
    void setUndoManager(std::weak_ptr<UndoStack> undoManager) { undoManager_ = std::move(undoManager); }
    std::shared_ptr<UndoStack> undoManager() const { return undoManager_.lock(); }

    /// Whether `next` differs from `current` and so is to be stored. Registers the step that leads back, named "Edit
    /// Template", unless a drag is under way, whose step covers it.
    bool admits(const CardTemplate& current, const CardTemplate& next);

    /// The first movement of a drag on the canvas: one step, "Move Layer", for all that follows until `endLayerDrag`.
    void beginLayerDrag(const CardTemplate& current);
    void endLayerDrag() { coalescing_ = false; }
    bool coalescing() const { return coalescing_; }

private:
    std::weak_ptr<UndoStack> undoManager_;
    bool coalescing_ = false;
};

}  // namespace quorvel
