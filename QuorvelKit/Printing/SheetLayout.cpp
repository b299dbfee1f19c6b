#include "Printing/SheetLayout.h"

#include "Foundation/Units.h"

#include <algorithm>
#include <cmath>

namespace quorvel {

namespace {

/// Points by which an exact fit may miss: three cards of 2.5 inches add up to a hair more than the room for them.
constexpr double fitSlack = 0.01;

/// Cut lines nearer to each other than this, in points, are one line.
constexpr double sameCut = 0.01;

/// A Letter page of cards of 2.4 mm a side. Settings that ask for more are nonsense that would only exhaust memory.
constexpr double mostSlots = 10'000;

double lengthInPoints(double millimetres) {
    return millimetres > 0 ? Units::points(millimetres) : 0;
}

/// The measures of one axis.
struct Axis {
    double page = 0;
    double card = 0;
    double bleed = 0;
    double gutter = 0;
    Spacing spacing = Spacing::butted;

    /// From one trim edge to the same edge of the next card.
    double pitch() const { return spacing == Spacing::separated ? card + 2 * bleed + gutter : card; }

    /// How many cards fit; not-a-number and infinity come out of nonsense settings.
    double count(double margin) const {
        const double available = page - 2 * margin;
        if (!(card > 0) || !(available > 0)) return 0;
        const double room = spacing == Spacing::separated ? available + gutter : available - 2 * bleed;
        return std::floor((room + fitSlack) / pitch());
    }

    /// Where the trim of a card begins on a grid that begins at `origin`.
    double trimStart(double origin, int index) const {
        if (spacing == Spacing::separated) return origin + pitch() * index + bleed;
        return origin + bleed + card * index;
    }

    double length(int cards) const {
        if (spacing == Spacing::separated) return (card + 2 * bleed) * cards + gutter * (cards - 1);
        return 2 * bleed + card * cards;
    }
};

std::vector<double> cutLines(std::vector<double> edges) {
    std::ranges::sort(edges);
    std::vector<double> lines;
    for (double edge : edges)
        if (lines.empty() || edge - lines.back() > sameCut) lines.push_back(edge);
    return lines;
}

/// The trim and the bleed that shows: butted cards bleed only outward from the block, so that neighbours never paint
/// over each other and one cut serves both.
Rect artOf(const SheetLayout& layout, const SheetLayout::Slot& slot, Spacing spacing, double bleed) {
    if (spacing == Spacing::separated) return slot.trim.inset(-bleed, -bleed);
    const double left = slot.column == 0 ? bleed : 0;
    const double right = slot.column == layout.columns - 1 ? bleed : 0;
    const double top = slot.row == 0 ? bleed : 0;
    const double bottom = slot.row == layout.rows - 1 ? bleed : 0;
    return {slot.trim.x - left, slot.trim.y - top, slot.trim.width + left + right, slot.trim.height + top + bottom};
}

}  // namespace

std::optional<SheetLayout> SheetLayout::make(const SheetSettings& settings, double widthMM, double heightMM,
                                             double bleedMM) {
    std::optional<SheetLayout> best;
    for (bool turned : {false, true}) {
        if (settings.orientation == (turned ? Orientation::portrait : Orientation::landscape)) continue;
        auto layout = compute(settings, turned, widthMM, heightMM, bleedMM);
        if (layout && (!best || layout->slots.size() > best->slots.size())) best = std::move(layout);
    }
    return best;
}

std::optional<SheetLayout> SheetLayout::compute(const SheetSettings& settings, bool landscape, double widthMM,
                                                double heightMM, double bleedMM) {
    Size page = sizePoints(settings.paper);
    if (landscape) std::swap(page.width, page.height);
    const double margin = Units::points(settings.marginMM);
    const double bleed = settings.includeBleed ? lengthInPoints(bleedMM) : 0;
    const double gutter = settings.spacing == Spacing::separated ? lengthInPoints(settings.gutterMM) : 0;
    const Axis across{page.width, Units::points(widthMM), bleed, gutter, settings.spacing};
    const Axis down{page.height, Units::points(heightMM), bleed, gutter, settings.spacing};

    const double columns = across.count(margin);
    const double rows = down.count(margin);
    if (!(columns >= 1) || !(rows >= 1) || !(columns * rows <= mostSlots)) return std::nullopt;

    SheetLayout layout;
    layout.pageSize = page;
    layout.landscape = landscape;
    layout.columns = int(columns);
    layout.rows = int(rows);
    layout.grid.width = across.length(layout.columns);
    layout.grid.height = down.length(layout.rows);
    layout.grid.x = (page.width - layout.grid.width) * 0.5;
    layout.grid.y = (page.height - layout.grid.height) * 0.5;

    std::vector<double> edgesX;
    std::vector<double> edgesY;
    for (int row = 0; row < layout.rows; ++row) {
        for (int column = 0; column < layout.columns; ++column) {
            Slot slot;
            slot.column = column;
            slot.row = row;
            slot.trim = {across.trimStart(layout.grid.x, column), down.trimStart(layout.grid.y, row), across.card,
                         down.card};
            slot.art = artOf(layout, slot, settings.spacing, bleed);
            edgesX.insert(edgesX.end(), {slot.trim.minX(), slot.trim.maxX()});
            edgesY.insert(edgesY.end(), {slot.trim.minY(), slot.trim.maxY()});
            layout.slots.push_back(slot);
        }
    }
    layout.cutX = cutLines(std::move(edgesX));
    layout.cutY = cutLines(std::move(edgesY));
    return layout;
}

}  // namespace quorvel
