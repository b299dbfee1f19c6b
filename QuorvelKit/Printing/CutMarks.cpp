#include "Printing/CutMarks.h"

#include "Foundation/Units.h"

#include <algorithm>

namespace quorvel {

namespace {

// In points.
constexpr double gap = Units::points(1.5);  ///< from the grid's edge to the start of a mark
constexpr double longest = Units::points(6);
constexpr double keep = 2.0;  ///< kept from the page's edge; a mark this short isn't drawn

}  // namespace

Path cutMarks(const SheetLayout& layout) {
    const auto [width, height] = layout.pageSize;
    const Rect& grid = layout.grid;
    const auto lengthFor = [](double room) { return std::min(longest, room - gap - keep); };
    Path marks;
    const auto mark = [&](double x1, double y1, double x2, double y2) {
        marks.move({x1, height - y1}).line({x2, height - y2});
    };
    if (const double length = lengthFor(grid.minY()); length > keep)
        for (double x : layout.cutX) mark(x, grid.minY() - gap - length, x, grid.minY() - gap);
    if (const double length = lengthFor(height - grid.maxY()); length > keep)
        for (double x : layout.cutX) mark(x, grid.maxY() + gap, x, grid.maxY() + gap + length);
    if (const double length = lengthFor(grid.minX()); length > keep)
        for (double y : layout.cutY) mark(grid.minX() - gap - length, y, grid.minX() - gap, y);
    if (const double length = lengthFor(width - grid.maxX()); length > keep)
        for (double y : layout.cutY) mark(grid.maxX() + gap, y, grid.maxX() + gap + length, y);
    return marks;
}

}  // namespace quorvel
