#pragma once

#include "Drawing/DrawingContext.h"
#include "Drawing/Path.h"
#include "Foundation/RGBA.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

/// Twenty small symbols as vector paths, so that an icon is sharp at any size. Names are taken in any case.
namespace quorvel::IconSet {

extern const std::array<std::string_view, 20> names;

bool isBuiltIn(std::string_view name);

/// The shape in the unit square, y up, to be filled by the even-odd rule: a shape inside another is a hole.
std::optional<Path> path(std::string_view name);

/// The icon's own colour; a neutral grey (77, 77, 77) for an unknown name.
RGBA color(std::string_view name);

/// Fills the icon into `rect`; an unknown name shows as a grey tile with a round hole, whatever `color`.
void draw(std::string_view name, const RGBA& color, DrawingContext& context, const Rect& rect);

/// 2 × count points about (0.5, 0.5), the first straight up, radii outer and inner in turn.
std::vector<Point> starPoints(int count, double outer, double inner);

}  // namespace quorvel::IconSet
