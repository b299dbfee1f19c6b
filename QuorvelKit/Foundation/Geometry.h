#pragma once

#include <algorithm>

namespace quorvel {

struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size&) const = default;
};

/// A rectangle by its corner of least x and y. Whether y grows up or down is said where one is used.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Rect&) const = default;

    double minX() const { return x; }
    double minY() const { return y; }
    double midX() const { return x + width * 0.5; }
    double midY() const { return y + height * 0.5; }
    double maxX() const { return x + width; }
    double maxY() const { return y + height; }

    /// The edges moved inward by dx and dy; negative values move them outward.
    Rect inset(double dx, double dy) const { return {x + dx, y + dy, width - 2 * dx, height - 2 * dy}; }
};

/// The same rectangle seen from the other vertical end of a surface `surfaceHeight` high: y up becomes y down and back.
inline Rect flipped(const Rect& rect, double surfaceHeight) {
    return {rect.x, surfaceHeight - rect.maxY(), rect.width, rect.height};
}

}  // namespace quorvel
