#pragma once

#include "Model/AppModel.h"
#include "TemplateTab/LayerOverlay.h"

#include <optional>

namespace quorvel {

/// A drag on the canvas. It always changes the selected layer, wherever it began: begun on another layer it puts the
/// selected one there. All of it is one undo step, also when it changes nothing. Main thread only.
class LayerDrag {
public:
    /// The pointer moves this far, in points, before a press becomes a drag.
    static constexpr double threshold = 1;

    /// The model outlives it.
    explicit LayerDrag(AppModel& model) : model_(model) {}
    ~LayerDrag() { end(); }
    LayerDrag(const LayerDrag&) = delete;
    LayerDrag& operator=(const LayerDrag&) = delete;

    /// Takes hold. Points are on the surface; those of one drag need not be of one geometry.
    void press(const Grip& grip, Point at);
    /// After `end` nothing more until the next press.
    void moveTo(Point at, const CanvasGeometry& geometry);
    void end();

    bool isUnderWay() const { return dragStart_.has_value(); }

private:
    struct Press {
        Grip grip;
        Point at;
    };

    AppModel& model_;
    std::optional<Press> press_;
    std::optional<Frame> dragStart_;  ///< the frame of the layer where it began, then
};

}  // namespace quorvel
