#pragma once

#include "Drawing/DrawingContext.h"
#include "Pictures/Assets.h"
#include "Templates/TextStyle.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace quorvel {

/// Squares of `size` in rows as wide as `rect` allows, in reading order, aligned by the style; lengths in points, y up.
std::vector<Rect> iconRects(std::size_t count, const TextStyle& style, double size, double spacing, const Rect& rect);

/// One icon: the icon folder's picture in its own colours, else the built-in shape in its own or the style's colour,
/// else the grey tile.
void drawIcon(std::string_view name, const TextStyle& style, Assets& assets, DrawingContext& context, const Rect& rect);

}  // namespace quorvel
