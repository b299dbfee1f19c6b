#include "Controls/SoftShadow.h"

#include "Controls/QtImage.h"
#include "Drawing/BitmapContext.h"
#include "Drawing/ShadowBlur.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace quorvel {
namespace {

/// Where an image is cut in three to be drawn longer than it is: its middle pixel is what is stretched.
struct Cuts {
    std::array<double, 4> from;
    std::array<double, 4> to;

    Cuts(int size, int longer)
        : from{0, double(size / 2), double(size / 2 + 1), double(size)},
          to{0, double(size / 2), double(size / 2 + 1 + longer), double(size + longer)} {}
};

QRectF between(const std::array<double, 4>& x, const std::array<double, 4>& y, std::size_t column, std::size_t row) {
    return {QPointF(x[column], y[row]), QPointF(x[column + 1], y[row + 1])};
}

int pixels(double length, double scale) {
    return std::max(int(std::lround(length * scale)), 1);
}

double sigma(double radius, double scale) {
    return radius / 2 * scale;
}

}  // namespace

void SoftShadow::paint(QPainter& painter, const QRectF& rect) {
    const double scale = painter.device()->devicePixelRatioF();
    const int reach = ShadowBlur::reach(sigma(look_.radius, scale));
    // Beyond its corners a shadow doesn't change along its edge.
    const int corner = reach + int(std::ceil(look_.cornerRadius * scale));
    const QSize whole(pixels(rect.width(), scale), pixels(rect.height(), scale));
    const QSize shape = whole.boundedTo({2 * corner + 1, 2 * corner + 1});
    prepare(shape, scale);
    if (image_.isNull()) return;

    const Cuts x(image_.width(), whole.width() - shape.width());
    const Cuts y(image_.height(), whole.height() - shape.height());
    // On whole pixels, so that its parts meet without a seam.
    const QPointF place = rect.topLeft() + look_.offset;
    const QPointF corners(std::round(place.x() * scale) - reach, std::round(place.y() * scale) - reach);
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column) {
            const QRectF target = between(x.to, y.to, column, row).translated(corners);
            painter.drawImage(QRectF(target.topLeft() / scale, target.size() / scale), image_,
                              between(x.from, y.from, column, row));
        }
}

void SoftShadow::prepare(QSize shape, double scale) {
    if (shape == shape_ && scale == scale_) return;
    shape_ = shape;
    scale_ = scale;
    image_ = {};
    const int reach = ShadowBlur::reach(sigma(look_.radius, scale));
    auto bitmap = BitmapContext::make(shape.width() + 2 * reach, shape.height() + 2 * reach);
    if (!bitmap) return;
    const Rect rect{double(reach), double(reach), double(shape.width()), double(shape.height())};
    bitmap->context().fill(Path().roundedRectangle(rect, look_.cornerRadius * scale), RGBA::black);
    if (const auto shadow = ShadowBlur::shadow(std::move(*bitmap).finish(), sigma(look_.radius, scale), look_.opacity))
        image_ = toQImage(*shadow);
}

}  // namespace quorvel
