#pragma once

#include "Foundation/Geometry.h"
#include "Templates/CardTemplate.h"

#include <vector>

namespace quorvel {

/// Where a card and its layers lie on the surface that shows them, as large as they fit. Rectangles, points and sizes
/// are in points of the surface, from its top left corner, y down; frames are in millimetres. A value, made anew for
/// each size and each design.
class CanvasGeometry {
public:
    CanvasGeometry() : CanvasGeometry(CardTemplate(), {}) {}
    /// A negative bleed is none, as in pictures of the card.
    CanvasGeometry(const CardTemplate& template_, Size surface);

    double scale() const { return scale_; }           ///< points per millimetre, at least 0.1
    const Rect& group() const { return group_; }      ///< the card with its bleed, in the middle of the surface
    const Rect& cutLine() const { return cutLine_; }  ///< the trimmed card
    const Rect& safeZone() const { return safeZone_; }

    /// A layer's rectangle, exactly.
    Rect rect(const Frame& frame) const;
    /// As it is drawn and grabbed: the same, but never lower or narrower than `leastSide`.
    Rect outline(const Frame& frame) const;
    static constexpr double leastSide = 2;
    /// What resizes the layer: a square of `handleSide` inside the bottom right corner of its rectangle.
    Rect handle(const Frame& frame) const;
    static constexpr double handleSide = 12;

    /// The layer that a click selects, one of `layers` (the first lies at the bottom); null when it hits none. Hidden
    /// layers are never hit.
    ///
    /// 1. Of the layers smaller than the card in at least one direction, the topmost whose rectangle, grown by
    ///    `clickMargin` on each side, holds the point.
    /// 2. Else of all layers the topmost whose rectangle holds it. So a picture that fills the card is in nobody's way,
    ///    and is selected where nothing smaller lies.
    const Layer* hit(Point point, const std::vector<Layer>& layers) const;
    static constexpr double clickMargin = 2;

    /// `frame` at the place of `start` moved by `translation`, on the grid of `grid` millimetres.
    Frame moved(Frame frame, const Frame& start, Size translation) const;
    /// `frame` as large as `start` with its bottom right corner moved by `translation`, on the grid and at least
    /// `leastMM` wide and high. It stays where it is.
    Frame resized(Frame frame, const Frame& start, Size translation) const;
    static constexpr double grid = 0.5;
    static constexpr double leastMM = 1;

    /// The nearest place on the grid; halfway, the one further from zero.
    static double snapped(double mm);

    bool operator==(const CanvasGeometry&) const = default;

private:
    Size cardMM_;
    double scale_ = 0;
    Rect group_;
    Rect cutLine_;
    Rect safeZone_;
};

/// Whether the point lies in the rectangle: on its top or left edge it does, on the others it doesn't.
bool contains(const Rect& rect, Point point);

}  // namespace quorvel
