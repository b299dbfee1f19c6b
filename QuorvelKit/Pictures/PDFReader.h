#pragma once

#include "Drawing/Image.h"
#include "Pictures/PictureSize.h"

#include <optional>
#include <string_view>

namespace quorvel::PDFReader {

/// The first page by its crop box, upright, the longer side `longestSide` pixels, on clear ground. Nothing when the
/// bytes are no PDF, want a password, or the box has no area.
std::optional<Image> firstPage(std::string_view bytes, int longestSide);

/// The size that `firstPage` would have, without drawing it.
std::optional<PictureSize> firstPageSize(std::string_view bytes, int longestSide);

/// The number of pages, 0 when the bytes are no readable PDF.
int pageCount(std::string_view bytes);

}  // namespace quorvel::PDFReader
