#pragma once

#include "Foundation/Geometry.h"

#include <span>
#include <variant>
#include <vector>

namespace quorvel {

/// An outline as a value. The coordinate system is the reader's; angles grow from the x axis towards the y axis.
class Path {
public:
    struct Move {
        Point to;
        bool operator==(const Move&) const = default;
    };
    struct Line {
        Point to;
        bool operator==(const Line&) const = default;
    };
    struct Curve {
        Point control1, control2, to;
        bool operator==(const Curve&) const = default;
    };
    struct Close {
        bool operator==(const Close&) const = default;
    };
    using Element = std::variant<Move, Line, Curve, Close>;

    enum class Sweep { growing, falling };  ///< the way the angle of an arc runs; growing is "not clockwise" with y up

    Path& move(Point to);
    Path& line(Point to);
    Path& curve(Point to, Point control1, Point control2);
    Path& quadratic(Point to, Point control);
    /// An arc in radians; a line leads to its start when the path has a current point.
    Path& arc(Point centre, double radius, double start, double end, Sweep sweep);
    Path& rectangle(const Rect& rect);
    /// Corners of a quarter circle, of half the shorter side at most; a radius of 0 or less gives the plain rectangle.
    Path& roundedRectangle(const Rect& rect, double radius);
    Path& ellipse(const Rect& rect);
    /// A move to the first point, then lines.
    Path& polyline(std::span<const Point> points);
    Path& close();

    const std::vector<Element>& elements() const { return elements_; }
    bool empty() const { return elements_.empty(); }

    bool operator==(const Path&) const = default;

private:
    Point current() const;

    std::vector<Element> elements_;
};

}  // namespace quorvel
