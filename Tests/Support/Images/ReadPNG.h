#pragma once

#include "Drawing/Image.h"

#include <filesystem>
#include <string_view>

namespace quorvel {

/// A PNG as an image, decoded by another library than the kit's own reader, so that one can check the other. Throws
/// std::runtime_error when it isn't one.
Image readPNG(const std::filesystem::path& file);
Image decodePNG(std::string_view bytes);

/// Writes the image as a PNG, without the kit's own writer. Makes the folders on the way.
void writePNG(const Image& image, const std::filesystem::path& file);

}  // namespace quorvel
