#include "Rendering/TextDrawing.h"

#include "Rendering/IconRow.h"
#include "Rendering/TextLayout.h"

#include <algorithm>
#include <cmath>

namespace quorvel {

namespace {

constexpr double smallestShrunk = 5;
constexpr double shrinkStep = 0.5;
constexpr double smallestDrawn = 1;   ///< also of the sides of a rectangle
constexpr double largestDrawn = 1e5;  ///< a letter as high as a tower; beyond it steps of half a point have no end

/// How far text may reach below its rectangle and still count as fitting. Drawing allows it too: it would be odd to
/// call a text fitting and then leave out its last line.
constexpr double tolerance = 0.5;

double designSize(const TextStyle& style) {
    return std::isnan(style.size) ? smallestDrawn : std::clamp(style.size, smallestDrawn, largestDrawn);
}

/// The height rounded up to a whole point, where the last bits of sums don't count.
double wholePoints(double height) {
    return std::ceil(height - 1e-6);
}

TextLayout layOut(std::string_view text, const TextStyle& style, const Rect& rect) {
    return TextLayout(text, style, designSize(style), rect.width, rect.height + 2 * tolerance);
}

/// Walks down from the design size until `layout`, which is at it, fits; leaves the layout at the size it returns.
double fit(TextLayout& layout, const TextStyle& style, const Rect& rect) {
    double size = designSize(style);
    if (!style.shrinkToFit) return size;
    const double limit = rect.height + tolerance;
    for (; size > smallestShrunk; size -= shrinkStep) {
        // Far from fitting, steps that can't be the last are passed over.
        if (layout.height() > 2 * limit && wholePoints(layout.leastHeight(size)) > limit) continue;
        layout.resize(size);
        if (wholePoints(layout.height()) <= limit) return size;
    }
    size = smallestShrunk;
    layout.resize(size);
    return size;
}

/// Where text that needs `needed` points of height lies in `rect`; text that is too tall starts at the top.
Rect placed(const Rect& rect, double needed, VerticalAlign align) {
    if (!(needed < rect.height)) return rect;
    switch (align) {
        case VerticalAlign::top:
            return {rect.x, rect.maxY() - needed, rect.width, needed};
        case VerticalAlign::middle:
            return {rect.x, rect.midY() - needed * 0.5, rect.width, needed};
        case VerticalAlign::bottom:
            break;
    }
    return {rect.x, rect.minY(), rect.width, needed};
}

/// The square of an inline icon, centred in the place that the layout holds for it.
Rect iconSquare(const TextLayout& layout, const TextLayout::Slot& slot, Point topLeft) {
    const double side = std::min(slot.ascent + slot.descent, slot.width);
    const double baseline = topLeft.y - layout.lines()[slot.line].baseline;
    return {topLeft.x + slot.x + (slot.width - side) * 0.5, baseline - slot.descent, side, side};
}

}  // namespace

double fittedFontSize(std::string_view text, const TextStyle& style, const Rect& rect) {
    if (!style.shrinkToFit) return designSize(style);
    TextLayout layout = layOut(text, style, rect);
    return fit(layout, style, rect);
}

void drawText(std::string_view text, const TextStyle& style, Assets& assets, DrawingContext& context,
              const Rect& rect) {
    if (!(rect.width > smallestDrawn && rect.height > smallestDrawn)) return;
    TextLayout layout = layOut(text, style, rect);
    fit(layout, style, rect);

    const Rect frame = placed(rect, wholePoints(layout.height()) + 1, style.verticalAlign);
    const Point topLeft{frame.minX(), frame.maxY()};
    const std::size_t count = layout.linesWithin(frame.height + tolerance);
    layout.draw(context, topLeft, count);
    for (const auto& slot : layout.slots()) {
        if (slot.line >= count) break;
        drawIcon(slot.icon, style, assets, context, iconSquare(layout, slot, topLeft));
    }
}

}  // namespace quorvel
