#pragma once

#include "Drawing/DrawingContext.h"
#include "Pictures/Assets.h"
#include "Templates/TextStyle.h"

#include <string_view>

namespace quorvel {

/// The first of the sizes from style.size down to 5 pt, in steps of half a point, at which the text's height fits
/// `rect`; style.size (at least 1) when it doesn't shrink. 5 pt isn't tested: what doesn't fit before is drawn at it.
double fittedFontSize(std::string_view text, const TextStyle& style, const Rect& rect);

/// Text with markup and inline icons in `rect` (points, y up). Lines that don't fit are left out; a rectangle of 1 pt
/// or less in either direction draws nothing.
void drawText(std::string_view text, const TextStyle& style, Assets& assets, DrawingContext& context, const Rect& rect);

}  // namespace quorvel
