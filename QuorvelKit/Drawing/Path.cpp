#include "Drawing/Path.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quorvel {

namespace {

constexpr double turn = 2 * std::numbers::pi;

/// How far the controls of a quarter circle lie from its ends, as a share of the radius.
const double quarterControl = 4.0 / 3.0 * (std::numbers::sqrt2 - 1);

/// The signed angle from start to end in the given direction, one full turn at most.
double arcLength(double start, double end, Path::Sweep sweep) {
    double difference = sweep == Path::Sweep::growing ? end - start : start - end;
    if (difference < 0) difference += turn * std::ceil(-difference / turn);
    difference = std::min(difference, turn);
    return sweep == Path::Sweep::growing ? difference : -difference;
}

}  // namespace

Path& Path::move(Point to) {
    elements_.push_back(Move{to});
    return *this;
}

Path& Path::line(Point to) {
    elements_.push_back(Line{to});
    return *this;
}

Path& Path::curve(Point to, Point control1, Point control2) {
    elements_.push_back(Curve{control1, control2, to});
    return *this;
}

Path& Path::quadratic(Point to, Point control) {
    // The same curve as a cubic: its controls lie two thirds of the way to the quadratic's.
    const auto towards = [&](Point end) {
        return Point{end.x + (control.x - end.x) * 2 / 3, end.y + (control.y - end.y) * 2 / 3};
    };
    return curve(to, towards(current()), towards(to));
}

Path& Path::arc(Point centre, double radius, double start, double end, Sweep sweep) {
    const auto at = [&](double angle) {
        return Point{centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
    };
    empty() ? move(at(start)) : line(at(start));

    const double length = arcLength(start, end, sweep);
    if (!std::isfinite(length)) return *this;
    const int pieces = std::max(1, int(std::ceil(std::abs(length) / (turn / 4) - 1e-9)));
    const double step = length / pieces;
    const double reach = radius * 4 / 3 * std::tan(step / 4);
    for (int i = 0; i < pieces; ++i) {
        const double from = start + step * i;
        const double to = start + step * (i + 1);
        const Point a = at(from);
        const Point b = at(to);
        curve(b, {a.x - reach * std::sin(from), a.y + reach * std::cos(from)},
              {b.x + reach * std::sin(to), b.y - reach * std::cos(to)});
    }
    return *this;
}

Path& Path::rectangle(const Rect& rect) {
    move({rect.minX(), rect.minY()});
    line({rect.maxX(), rect.minY()});
    line({rect.maxX(), rect.maxY()});
    line({rect.minX(), rect.maxY()});
    return close();
}

Path& Path::roundedRectangle(const Rect& rect, double radius) {
    const double r = std::min({radius, rect.width / 2, rect.height / 2});
    if (!(r > 0)) return rectangle(rect);

    const double c = r * (1 - quarterControl);
    const double x0 = rect.minX(), x1 = rect.maxX(), y0 = rect.minY(), y1 = rect.maxY();
    move({x0 + r, y0});
    line({x1 - r, y0});
    curve({x1, y0 + r}, {x1 - c, y0}, {x1, y0 + c});
    line({x1, y1 - r});
    curve({x1 - r, y1}, {x1, y1 - c}, {x1 - c, y1});
    line({x0 + r, y1});
    curve({x0, y1 - r}, {x0 + c, y1}, {x0, y1 - c});
    line({x0, y0 + r});
    curve({x0 + r, y0}, {x0, y0 + c}, {x0 + c, y0});
    return close();
}

Path& Path::ellipse(const Rect& rect) {
    const double cx = rect.midX(), cy = rect.midY();
    const double x0 = rect.minX(), x1 = rect.maxX(), y0 = rect.minY(), y1 = rect.maxY();
    const double kx = rect.width / 2 * quarterControl, ky = rect.height / 2 * quarterControl;
    move({x1, cy});
    curve({cx, y1}, {x1, cy + ky}, {cx + kx, y1});
    curve({x0, cy}, {cx - kx, y1}, {x0, cy + ky});
    curve({cx, y0}, {x0, cy - ky}, {cx - kx, y0});
    curve({x1, cy}, {cx + kx, y0}, {x1, cy - ky});
    return close();
}

Path& Path::polyline(std::span<const Point> points) {
    for (std::size_t i = 0; i < points.size(); ++i) i == 0 ? move(points[i]) : line(points[i]);
    return *this;
}

Path& Path::close() {
    if (!empty()) elements_.push_back(Close{});
    return *this;
}

Point Path::current() const {
    // After a close the current point is where the closed outline began.
    bool closed = false;
    for (auto element = elements_.rbegin(); element != elements_.rend(); ++element) {
        if (const auto* m = std::get_if<Move>(&*element)) return m->to;
        if (closed) continue;
        if (const auto* l = std::get_if<Line>(&*element)) return l->to;
        if (const auto* c = std::get_if<Curve>(&*element)) return c->to;
        closed = true;
    }
    return {};
}

}  // namespace quorvel
