#include "TemplateTab/LayerOverlay.h"

#include <ranges>

namespace quorvel {

std::vector<LayerOverlay> layerOverlays(const std::vector<Layer>& layers, const Layer* selected, Outlines outlines,
                                        const CanvasGeometry& geometry) {
    std::vector<LayerOverlay> overlays;
    for (const Layer& layer : layers) {
        const bool isSelected = &layer == selected;
        if (layer.hidden || (outlines == Outlines::selectedOnly && !isSelected)) continue;
        overlays.push_back({layer.id, layer.name, geometry.outline(layer.frame),
                            isSelected ? std::optional(geometry.handle(layer.frame)) : std::nullopt});
    }
    return overlays;
}

std::optional<Grip> gripAt(Point point, const std::vector<LayerOverlay>& overlays) {
    for (const LayerOverlay& overlay : overlays)
        if (overlay.handle && contains(*overlay.handle, point)) return Grip{Grip::Kind::resize, overlay.layer};
    for (const LayerOverlay& overlay : overlays | std::views::reverse)
        if (contains(overlay.outline, point)) return Grip{Grip::Kind::move, overlay.layer};
    return std::nullopt;
}

}  // namespace quorvel
