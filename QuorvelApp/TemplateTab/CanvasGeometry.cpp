#include "TemplateTab/CanvasGeometry.h"

#include <algorithm>
#include <cmath>
#include <ranges>

namespace quorvel {

namespace {

constexpr double filled = 0.96;       // of the surface, in the direction that limits
constexpr double leastScale = 0.1;    // points per millimetre
constexpr double leastExtent = 1e-9;  // millimetres: a size that is no size is no reason to divide by zero

}  // namespace

CanvasGeometry::CanvasGeometry(const CardTemplate& template_, Size surface)
    : cardMM_{template_.size.widthMM, template_.size.heightMM} {
    const double bleed = std::max(0.0, template_.bleedMM);
    const Size extent{cardMM_.width + 2 * bleed, cardMM_.height + 2 * bleed};
    const double fitting = std::min(surface.width / std::max(extent.width, leastExtent),
                                    surface.height / std::max(extent.height, leastExtent));
    scale_ = std::max(fitting * filled, leastScale);
    const Size size{scale_ * extent.width, scale_ * extent.height};
    group_ = {(surface.width - size.width) / 2, (surface.height - size.height) / 2, size.width, size.height};
    cutLine_ = {group_.x + scale_ * bleed, group_.y + scale_ * bleed, scale_ * cardMM_.width, scale_ * cardMM_.height};
    safeZone_ = cutLine_.inset(scale_ * template_.safeMM, scale_ * template_.safeMM);
}

Rect CanvasGeometry::rect(const Frame& frame) const {
    return {cutLine_.x + scale_ * frame.x, cutLine_.y + scale_ * frame.y, scale_ * frame.width, scale_ * frame.height};
}

Rect CanvasGeometry::outline(const Frame& frame) const {
    Rect outline = rect(frame);
    outline.width = std::max(outline.width, leastSide);
    outline.height = std::max(outline.height, leastSide);
    return outline;
}

Rect CanvasGeometry::handle(const Frame& frame) const {
    const Rect layer = rect(frame);
    return {layer.maxX() - handleSide, layer.maxY() - handleSide, handleSide, handleSide};
}

const Layer* CanvasGeometry::hit(Point point, const std::vector<Layer>& layers) const {
    for (const Layer& layer : layers | std::views::reverse) {
        const bool coversCard = layer.frame.width >= cardMM_.width && layer.frame.height >= cardMM_.height;
        if (layer.hidden || coversCard) continue;
        if (contains(rect(layer.frame).inset(-clickMargin, -clickMargin), point)) return &layer;
    }
    for (const Layer& layer : layers | std::views::reverse)
        if (!layer.hidden && contains(rect(layer.frame), point)) return &layer;
    return nullptr;
}

Frame CanvasGeometry::moved(Frame frame, const Frame& start, Size translation) const {
    frame.x = snapped(start.x + translation.width / scale_);
    frame.y = snapped(start.y + translation.height / scale_);
    return frame;
}

Frame CanvasGeometry::resized(Frame frame, const Frame& start, Size translation) const {
    frame.width = std::max(snapped(start.width + translation.width / scale_), leastMM);
    frame.height = std::max(snapped(start.height + translation.height / scale_), leastMM);
    return frame;
}

double CanvasGeometry::snapped(double mm) {
    return std::round(mm / grid) * grid;
}

bool contains(const Rect& rect, Point point) {
    return point.x >= rect.minX() && point.x < rect.maxX() && point.y >= rect.minY() && point.y < rect.maxY();
}

}  // namespace quorvel
