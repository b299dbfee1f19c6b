#pragma once

#include "Drawing/Image.h"
#include "Foundation/Geometry.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// A page of a PDF (from 0) on white paper at `dpi`, its size rounded to whole pixels. Throws std::runtime_error when
/// the bytes are no PDF or the page isn't there.
Image renderPDFPage(std::string_view bytes, int page, double dpi);

/// The size of every page in points.
std::vector<Size> pdfPageSizes(std::string_view bytes);

/// The text of a page as a reader would copy it.
std::string pdfPageText(std::string_view bytes, int page);

}  // namespace quorvel
