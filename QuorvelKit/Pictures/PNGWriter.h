#pragma once

#include "Drawing/Image.h"

#include <optional>
#include <string>

namespace quorvel::PNGWriter {

/// The image as a PNG with its physical resolution. Alpha is kept where there is any; an opaque image is stored without
/// it, and one without colour as grey. Nothing when there isn't the memory. The same image gives the same bytes.
std::optional<std::string> encode(const Image& image, double dpi);

}  // namespace quorvel::PNGWriter
