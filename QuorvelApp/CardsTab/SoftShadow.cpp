#include "CardsTab/SoftShadow.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

namespace quorvel {
namespace {

/// The mean of `2 * radius + 1` neighbours along each line. Three of them come close to a bell curve.
void blurLines(std::vector<float>& values, int lines, int length, int lineStep, int step, int radius) {
    std::vector<float> line(std::size_t(length), 0.0f);
    for (int l = 0; l < lines; ++l) {
        float* const start = values.data() + std::ptrdiff_t(l) * lineStep;
        float sum = 0;
        for (int i = 0; i < std::min(radius, length); ++i) sum += start[std::ptrdiff_t(i) * step];
        for (int i = 0; i < length; ++i) {
            if (i + radius < length) sum += start[std::ptrdiff_t(i + radius) * step];
            if (i - radius - 1 >= 0) sum -= start[std::ptrdiff_t(i - radius - 1) * step];
            line[std::size_t(i)] = sum / float(2 * radius + 1);
        }
        for (int i = 0; i < length; ++i) start[std::ptrdiff_t(i) * step] = line[std::size_t(i)];
    }
}

}  // namespace

QImage softShadow(QSize shape, double cornerRadius, int reach, double blur, double opacity) {
    QImage mask(shape + QSize(2 * reach, 2 * reach), QImage::Format_Alpha8);
    if (mask.isNull()) return {};
    mask.fill(0);
    {
        QPainter painter(&mask);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        painter.drawRoundedRect(QRectF(QPointF(reach, reach), QSizeF(shape)), cornerRadius, cornerRadius);
    }
    const int width = mask.width();
    const int height = mask.height();
    std::vector<float> values(std::size_t(width) * std::size_t(height));
    for (int y = 0; y < height; ++y)
        std::copy_n(mask.constScanLine(y), width, values.begin() + std::ptrdiff_t(y) * width);
    const int radius = std::max(int(std::lround(blur / 2)), 1);
    for (int pass = 0; pass < 3; ++pass) {
        blurLines(values, height, width, width, 1, radius);
        blurLines(values, width, height, 1, width, radius);
    }
    QImage shadow(mask.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < height; ++y) {
        auto* const row = reinterpret_cast<QRgb*>(shadow.scanLine(y));
        const float* const from = values.data() + std::ptrdiff_t(y) * width;
        for (int x = 0; x < width; ++x) row[x] = QRgb(std::lround(from[x] * float(opacity))) << 24;
    }
    return shadow;
}

}  // namespace quorvel
