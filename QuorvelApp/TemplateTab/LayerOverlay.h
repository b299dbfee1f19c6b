#pragma once

#include "TemplateTab/CanvasGeometry.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvel {

/// What lies over the picture for one layer: an outline that can be grabbed, and a handle when the layer is selected.
struct LayerOverlay {
    UUID layer;
    std::string name;
    Rect outline;                ///< on the surface
    std::optional<Rect> handle;  ///< of the selected layer only

    bool operator==(const LayerOverlay&) const = default;
    bool isSelected() const { return handle.has_value(); }
};

enum class Outlines { selectedOnly, all };

/// The overlays of a side, the lowest first; hidden layers have none. `selected` is one of `layers`, or null.
std::vector<LayerOverlay> layerOverlays(const std::vector<Layer>& layers, const Layer* selected, Outlines outlines,
                                        const CanvasGeometry& geometry);

/// What a drag does, and the layer where it begins.
struct Grip {
    enum class Kind { move, resize };

    Kind kind = Kind::move;
    UUID layer;

    bool operator==(const Grip&) const = default;
};

/// What a drag that begins at the point takes hold of: the handle, which lies over all else, or the topmost overlay.
std::optional<Grip> gripAt(Point point, const std::vector<LayerOverlay>& overlays);

}  // namespace quorvel
