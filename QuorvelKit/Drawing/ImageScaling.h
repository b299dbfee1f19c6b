#pragma once

#include "Drawing/Image.h"
#include "Foundation/Geometry.h"

#include <optional>

namespace quorvel {

/// An image that was resampled for one place on a bitmap: its top-left pixel stands at (x, y), y down.
struct PlacedImage {
    Image image;
    int x = 0;
    int y = 0;
};

namespace ImageScaling {

/// `image` resampled into `target`, a rectangle in pixels of the bitmap with y down that need not lie on whole pixels;
/// only what lies inside `visible` is made. Reduces by area, enlarges smoothly; edges that fall within a pixel get its
/// share as alpha. Nothing when no pixel is touched or the sizes aren't finite.
std::optional<PlacedImage> place(const Image& image, const Rect& target, const Rect& visible);

}  // namespace ImageScaling
}  // namespace quorvel
