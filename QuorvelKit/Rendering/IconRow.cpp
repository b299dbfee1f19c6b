#include "Rendering/IconRow.h"

#include "Pictures/IconSet.h"

#include <algorithm>
#include <cmath>

namespace quorvel {

namespace {

double extent(std::size_t count, double size, double spacing) {
    return size * double(count) + spacing * (double(count) - 1);
}

double top(const Rect& rect, double height, VerticalAlign align) {
    switch (align) {
        case VerticalAlign::top:
            return rect.maxY();
        case VerticalAlign::middle:
            return rect.midY() + height * 0.5;
        case VerticalAlign::bottom:
            break;
    }
    return rect.minY() + height;
}

double left(const Rect& rect, double width, TextAlign align) {
    switch (align) {
        case TextAlign::left:
            return rect.minX();
        case TextAlign::center:
            return rect.midX() - width * 0.5;
        case TextAlign::right:
            break;
    }
    return rect.maxX() - width;
}

/// The largest rectangle of the picture's shape in the middle of `rect`.
Rect within(const Rect& rect, const Image& picture) {
    const double scale = std::min(rect.width / picture.width(), rect.height / picture.height());
    const double width = picture.width() * scale, height = picture.height() * scale;
    return {rect.midX() - width * 0.5, rect.midY() - height * 0.5, width, height};
}

}  // namespace

std::vector<Rect> iconRects(std::size_t count, const TextStyle& style, double size, double spacing, const Rect& rect) {
    std::vector<Rect> rects;
    if (count < 1 || !(size > 0)) return rects;
    const double fitting = std::floor((rect.width + spacing) / (size + spacing));
    const std::size_t perRow = fitting >= double(count) ? count : fitting >= 1 ? std::size_t(fitting) : 1;
    const std::size_t rows = (count + perRow - 1) / perRow;
    const double blockTop = top(rect, extent(rows, size, spacing), style.verticalAlign);

    rects.reserve(count);
    for (std::size_t row = 0; row < rows; ++row) {
        const std::size_t n = std::min(perRow, count - row * perRow);
        const double rowLeft = left(rect, extent(n, size, spacing), style.align);
        const double y = blockTop - size * double(row + 1) - spacing * double(row);
        for (std::size_t k = 0; k < n; ++k) rects.push_back({rowLeft + (size + spacing) * double(k), y, size, size});
    }
    return rects;
}

void drawIcon(std::string_view name, const TextStyle& style, Assets& assets, DrawingContext& context,
              const Rect& rect) {
    if (const auto picture = assets.icon(name)) {
        context.drawImage(*picture, within(rect, *picture));
        return;
    }
    const bool ownColor = style.colorfulIcons && IconSet::isBuiltIn(name);
    IconSet::draw(name, ownColor ? IconSet::color(name) : style.color, context, rect);
}

}  // namespace quorvel
