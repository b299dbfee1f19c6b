#include "Pictures/IconSet.h"

#include "Foundation/Text.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <unordered_map>

namespace quorvel::IconSet {
namespace {

constexpr double pi = std::numbers::pi;
constexpr Point centre{0.5, 0.5};

struct Icon {
    RGBA color;
    Path path;
};

Point around(Point middle, double radius, double angle) {
    return {middle.x + radius * std::cos(angle), middle.y + radius * std::sin(angle)};
}

void addPolygon(Path& path, const std::vector<Point>& points) {
    path.polyline(points).close();
}

Path polygon(const std::vector<Point>& points) {
    Path path;
    addPolygon(path, points);
    return path;
}

Path coin() {
    Path path;
    path.ellipse({0.05, 0.05, 0.9, 0.9}).ellipse({0.2, 0.2, 0.6, 0.6}).ellipse({0.3, 0.3, 0.4, 0.4});
    return path;
}

Path heart() {
    Path path;
    path.move({0.5, 0.08})
        .curve({0.04, 0.62}, {0.3, 0.25}, {0.04, 0.4})
        .curve({0.5, 0.75}, {0.04, 0.92}, {0.4, 0.98})
        .curve({0.96, 0.62}, {0.6, 0.98}, {0.96, 0.92})
        .curve({0.5, 0.08}, {0.96, 0.4}, {0.7, 0.25})
        .close();
    return path;
}

Path drop() {
    Path path;
    path.move({0.5, 0.97})
        .curve({0.18, 0.35}, {0.4, 0.75}, {0.18, 0.55})
        .arc({0.5, 0.35}, 0.32, pi, 0, Path::Sweep::growing)
        .curve({0.5, 0.97}, {0.82, 0.55}, {0.6, 0.75})
        .close();
    return path;
}

Path leaf() {
    Path path;
    path.move({0.1, 0.1})
        .curve({0.92, 0.92}, {0.1, 0.75}, {0.45, 0.95})
        .curve({0.1, 0.1}, {0.95, 0.45}, {0.75, 0.1})
        .close();
    path.move({0.16, 0.13}).line({0.8, 0.77}).line({0.77, 0.8}).line({0.13, 0.16}).close();
    return path;
}

Path flame() {
    Path path;
    path.move({0.5, 0.03})
        .curve({0.15, 0.4}, {0.28, 0.03}, {0.15, 0.2})
        .curve({0.5, 0.97}, {0.15, 0.65}, {0.42, 0.75})
        .curve({0.68, 0.55}, {0.55, 0.8}, {0.5, 0.65})
        .curve({0.85, 0.4}, {0.75, 0.6}, {0.85, 0.55})
        .curve({0.5, 0.03}, {0.85, 0.2}, {0.72, 0.03})
        .close();
    return path;
}

Path shield() {
    Path path;
    path.move({0.5, 0.97})
        .line({0.88, 0.82})
        .curve({0.5, 0.03}, {0.88, 0.4}, {0.7, 0.15})
        .curve({0.12, 0.82}, {0.3, 0.15}, {0.12, 0.4})
        .close();
    return path;
}

// The parts touch and never overlap: by the even-odd rule an overlap would be a hole.
Path sword() {
    Path path = polygon({{0.5, 0.98}, {0.58, 0.86}, {0.58, 0.32}, {0.42, 0.32}, {0.42, 0.86}});
    path.rectangle({0.24, 0.25, 0.52, 0.07}).rectangle({0.45, 0.08, 0.1, 0.17}).ellipse({0.42, 0.0, 0.16, 0.08});
    return path;
}

Path gem() {
    Path path = polygon({{0.25, 0.85}, {0.75, 0.85}, {0.95, 0.6}, {0.5, 0.05}, {0.05, 0.6}});
    addPolygon(path, {{0.3, 0.6}, {0.7, 0.6}, {0.5, 0.25}});
    return path;
}

Path sun() {
    Path path;
    path.ellipse({0.28, 0.28, 0.44, 0.44});
    for (int i = 0; i < 8; ++i) {
        const double angle = i * pi * 0.25;
        addPolygon(path,
                   {around(centre, 0.3, angle - 0.22), around(centre, 0.48, angle), around(centre, 0.3, angle + 0.22)});
    }
    return path;
}

Path moon() {
    Path path;
    path.arc({0.5, 0.5}, 0.45, 1.6020122240156682, -0.5878152152309948, Path::Sweep::growing)
        .arc({0.68, 0.6}, 0.4, -1.063090768701302, 2.0772877774859757, Path::Sweep::falling)
        .close();
    return path;
}

Path gear() {
    std::vector<Point> points;
    for (int i = 0; i < 32; ++i) points.push_back(around(centre, i & 2 ? 0.36 : 0.48, (i * pi * 2) * 0.03125));
    Path path = polygon(points);
    path.ellipse({0.36, 0.36, 0.28, 0.28});
    return path;
}

Path eye() {
    Path path;
    path.move({0.03, 0.5}).quadratic({0.97, 0.5}, {0.5, 1.0}).quadratic({0.03, 0.5}, {0.5, 0.0}).close();
    path.ellipse({0.33, 0.33, 0.34, 0.34}).ellipse({0.43, 0.43, 0.14, 0.14});
    return path;
}

Path key() {
    Path path;
    path.ellipse({0.03, 0.32, 0.36, 0.36}).ellipse({0.13, 0.42, 0.16, 0.16});
    path.rectangle({0.39, 0.45, 0.57, 0.1}).rectangle({0.78, 0.28, 0.08, 0.17}).rectangle({0.64, 0.32, 0.07, 0.13});
    return path;
}

Path plus() {
    Path path;
    path.rectangle({0.4, 0.1, 0.2, 0.8}).rectangle({0.1, 0.4, 0.3, 0.2}).rectangle({0.6, 0.4, 0.3, 0.2});
    return path;
}

Path minus() {
    Path path;
    path.rectangle({0.1, 0.4, 0.8, 0.2});
    return path;
}

const std::unordered_map<std::string, Icon>& icons() {
    static const std::unordered_map<std::string, Icon> table{
        {"coin", {RGBA::bytes(217, 166, 33), coin()}},
        {"heart", {RGBA::bytes(214, 48, 64), heart()}},
        {"star", {RGBA::bytes(245, 181, 26), polygon(starPoints(5, 0.48, 0.2))}},
        {"bolt",
         {RGBA::bytes(250, 199, 0),
          polygon({{0.6, 0.97}, {0.18, 0.45}, {0.45, 0.45}, {0.35, 0.03}, {0.82, 0.58}, {0.54, 0.58}})}},
        {"drop", {RGBA::bytes(41, 128, 219), drop()}},
        {"leaf", {RGBA::bytes(61, 153, 69), leaf()}},
        {"flame", {RGBA::bytes(237, 105, 28), flame()}},
        {"shield", {RGBA::bytes(84, 110, 148), shield()}},
        {"sword", {RGBA::bytes(115, 120, 133), sword()}},
        {"gem", {RGBA::bytes(143, 69, 199), gem()}},
        {"sun", {RGBA::bytes(245, 181, 26), sun()}},
        {"moon", {RGBA::bytes(97, 102, 179), moon()}},
        {"gear", {RGBA::bytes(107, 107, 115), gear()}},
        {"hourglass",
         {RGBA::bytes(153, 115, 64), polygon({{0.18, 0.95},
                                              {0.82, 0.95},
                                              {0.82, 0.88},
                                              {0.55, 0.5},
                                              {0.82, 0.12},
                                              {0.82, 0.05},
                                              {0.18, 0.05},
                                              {0.18, 0.12},
                                              {0.45, 0.5},
                                              {0.18, 0.88}})}},
        {"arrow",
         {RGBA::bytes(46, 140, 115),
          polygon({{0.05, 0.4}, {0.55, 0.4}, {0.55, 0.18}, {0.95, 0.5}, {0.55, 0.82}, {0.55, 0.6}, {0.05, 0.6}})}},
        {"eye", {RGBA::bytes(51, 115, 140), eye()}},
        {"crown",
         {RGBA::bytes(217, 166, 33),
          polygon({{0.1, 0.2}, {0.05, 0.78}, {0.3, 0.55}, {0.5, 0.9}, {0.7, 0.55}, {0.95, 0.78}, {0.9, 0.2}})}},
        {"key", {RGBA::bytes(179, 140, 51), key()}},
        {"plus", {RGBA::bytes(46, 140, 115), plus()}},
        {"minus", {RGBA::bytes(191, 64, 64), minus()}},
    };
    return table;
}

const Icon* find(std::string_view name) {
    const auto found = icons().find(Text::lowercased(name));
    return found == icons().end() ? nullptr : &found->second;
}

const Path& neutralTile() {
    static const Path tile = [] {
        Path path;
        path.roundedRectangle({0.1, 0.1, 0.8, 0.8}, 0.15).ellipse({0.3, 0.3, 0.4, 0.4});
        return path;
    }();
    return tile;
}

}  // namespace

const std::array<std::string_view, 20> names{"coin",   "heart", "star",  "bolt", "drop", "leaf", "flame",
                                             "shield", "sword", "gem",   "sun",  "moon", "gear", "hourglass",
                                             "arrow",  "eye",   "crown", "key",  "plus", "minus"};

bool isBuiltIn(std::string_view name) {
    return find(name) != nullptr;
}

std::optional<Path> path(std::string_view name) {
    const Icon* icon = find(name);
    return icon ? std::optional(icon->path) : std::nullopt;
}

RGBA color(std::string_view name) {
    const Icon* icon = find(name);
    return icon ? icon->color : RGBA::bytes(77, 77, 77);
}

void draw(std::string_view name, const RGBA& color, DrawingContext& context, const Rect& rect) {
    const bool hasArea = std::isfinite(rect.width) && std::isfinite(rect.height) && rect.width != 0 && rect.height != 0;
    if (!hasArea) return;  // a scale of 0 would spoil the context for everything that follows
    const Icon* icon = find(name);
    const SavedState saved(context);
    context.translate(rect.minX(), rect.minY());
    context.scale(rect.width, rect.height);
    if (icon)
        context.fill(icon->path, color, FillRule::evenOdd);
    else
        context.fill(neutralTile(), RGBA(0.6, 0.6, 0.6), FillRule::evenOdd);
}

std::vector<Point> starPoints(int count, double outer, double inner) {
    std::vector<Point> points;
    for (int i = 0; i < 2 * count; ++i)
        points.push_back(around(centre, i % 2 == 0 ? outer : inner, i * pi / count + pi / 2));
    return points;
}

}  // namespace quorvel::IconSet
