#pragma once

#include <QImage>
#include <QSizeF>

namespace quorvel {

/// A black shadow of a rounded rectangle, blurred. All lengths in pixels; the shape stands `reach` inside the image's
/// edges. `opacity` from 0 to 1.
QImage softShadow(QSize shape, double cornerRadius, int reach, double blur, double opacity);

}  // namespace quorvel
