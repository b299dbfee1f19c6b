#include "TemplateTab/LayerDrag.h"

#include "Templates/TemplateEdits.h"

#include <cmath>

namespace quorvel {

void LayerDrag::press(const Grip& grip, Point at) {
    end();
    press_ = {grip, at};
}

void LayerDrag::moveTo(Point at, const CanvasGeometry& geometry) {
    if (!press_) return;
    const Size translation{at.x - press_->at.x, at.y - press_->at.y};
    if (!dragStart_) {
        if (std::hypot(translation.width, translation.height) < threshold) return;
        const Layer* grabbed = TemplateEdits::find(model_.template_(), model_.state()._side, press_->grip.layer);
        if (!grabbed) return press_.reset();
        dragStart_ = grabbed->frame;
        model_.beginLayerDrag();
    }
    const Layer* selected = model_.selectedLayerValue();
    if (!selected) return;
    Layer next = *selected;
    next.frame = press_->grip.kind == Grip::Kind::move ? geometry.moved(next.frame, *dragStart_, translation)
                                                       : geometry.resized(next.frame, *dragStart_, translation);
    model_.updateLayer(next);
}

void LayerDrag::end() {
    press_.reset();
    if (!dragStart_) return;
    dragStart_.reset();
    model_.endLayerDrag();
}

}  // namespace quorvel
