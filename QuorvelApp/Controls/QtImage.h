#pragma once

#include "Drawing/Image.h"

#include <QImage>

namespace quorvel {

/// The image in the toolkit's form. Shares the pixels; they live as long as any copy of the result.
QImage toQImage(const Image& image);

}  // namespace quorvel
