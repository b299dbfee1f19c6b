#pragma once

#include "Drawing/Image.h"

#include <cstdint>
#include <optional>
#include <vector>

/// The soft edge of a shadow.
namespace quorvel::ShadowBlur {

/// How far beyond a shape its blurred shadow reaches, in pixels.
int reach(double sigma);

/// The alpha of `shape` blurred by three box passes that come to a Gaussian of about `sigma` pixels (above 0). One
/// value a pixel, rows from the top, 255 × 256 being opaque: the eight bits below the byte keep three passes from
/// adding up their rounding. In whole numbers throughout, so that every machine gives the same shadow.
std::vector<std::uint16_t> blurredAlpha(const Image& shape, double sigma);

/// The black shadow of `shape`, of the same size: leave `reach` around what is drawn in it. `opacity` from 0 to 1.
/// Nothing when there isn't the memory.
std::optional<Image> shadow(const Image& shape, double sigma, double opacity);

}  // namespace quorvel::ShadowBlur
