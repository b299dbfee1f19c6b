#pragma once

#include "Drawing/Image.h"

#include <optional>
#include <string_view>

/// The pictures of the sample deck, painted in code: no picture file comes with the program.
namespace quorvel::SampleArt {

/// A landscape in the type's colours with an icon before it. The same words always give the same picture, to the pixel.
/// Sides in pixels; nothing when the bitmap can't be made. Safe from any thread.
std::optional<Image> draw(std::string_view title, std::string_view type, std::string_view icon, int width, int height);

}  // namespace quorvel::SampleArt
