#include "SheetsTab/DropShadow.h"

#include <QImage>
#include <QPainter>
#include <cmath>
#include <numbers>
#include <vector>

namespace quorvel {

namespace {

/// A shadow is dark inside and fades over `radius` on both sides of the rectangle's edge, as a Gaussian does whose
/// deviation is half of it.
double darkness(double inside, double radius) {
    return 0.5 * (1 + std::erf(inside / (radius / 2) / std::numbers::sqrt2));
}

/// The top left corner of a shadow: the corner point in the middle, one pixel of shadow for each of the device.
QImage corner(const DropShadow& shadow, int side, double scale) {
    std::vector<double> along(std::size_t(side), 0.0);
    for (int i = 0; i < side; ++i) along[std::size_t(i)] = darkness((i + 0.5 - side / 2.0) / scale, shadow.radius);
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const double opacity = shadow.opacity * along[std::size_t(x)] * along[std::size_t(y)];
            image.setPixel(x, y, qRgba(0, 0, 0, int(std::lround(255 * opacity))));
        }
    return image;
}

}  // namespace

void DropShadow::paint(QPainter& painter, const QRectF& rect) const {
    const double scale = painter.device()->devicePixelRatioF();
    const int side = int(std::ceil(4 * radius * scale));
    const double reach = side / scale / 2;
    const QRectF outer = rect.translated(offset).adjusted(-reach, -reach, reach, reach);
    if (outer.width() < 4 * reach || outer.height() < 4 * reach) return;

    const QImage topLeft = corner(*this, side, scale);
    const QImage topRight = topLeft.mirrored(true, false);
    const QImage bottomLeft = topLeft.mirrored(false, true);
    const QImage bottomRight = topLeft.mirrored(true, true);
    const double size = 2 * reach;
    const double left = outer.left(), right = outer.right() - size;
    const double top = outer.top(), bottom = outer.bottom() - size;
    const double width = right - left - size, height = bottom - top - size;

    painter.drawImage(QRectF(left, top, size, size), topLeft);
    painter.drawImage(QRectF(right, top, size, size), topRight);
    painter.drawImage(QRectF(left, bottom, size, size), bottomLeft);
    painter.drawImage(QRectF(right, bottom, size, size), bottomRight);
    // Between the corners a shadow doesn't change along its edge: the corner's last line, drawn out.
    const QRectF lastColumn(side - 1, 0, 1, side), lastRow(0, side - 1, side, 1);
    painter.drawImage(QRectF(left + size, top, width, size), topLeft, lastColumn);
    painter.drawImage(QRectF(left + size, bottom, width, size), bottomLeft, lastColumn);
    painter.drawImage(QRectF(left, top + size, size, height), topLeft, lastRow);
    painter.drawImage(QRectF(right, top + size, size, height), topRight, lastRow);
}

}  // namespace quorvel
