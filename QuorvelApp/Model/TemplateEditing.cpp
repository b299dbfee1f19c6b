#include "Model/TemplateEditing.h"

namespace quorvel {

bool TemplateEditing::admits(const CardTemplate& current, const CardTemplate& next) {
    if (next == current) return false;
    if (!coalescing_)
        if (const auto stack = undoManager()) stack->registerStep("Edit Template", current);
    return true;
}

void TemplateEditing::beginLayerDrag(const CardTemplate& current) {
    if (coalescing_) return;
    if (const auto stack = undoManager()) stack->registerStep("Move Layer", current);
    coalescing_ = true;
}

}  // namespace quorvel
