#include "Drawing/ShadowBlur.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace quorvel::ShadowBlur {
namespace {

/// The odd widths of three boxes whose variances add up to nearly sigma².
std::array<int, 3> boxWidths(double sigma) {
    const double ideal = std::sqrt(4 * sigma * sigma + 1);
    int narrow = int(ideal);
    if (narrow % 2 == 0) --narrow;
    narrow = std::max(narrow, 1);
    const double excess = 12 * sigma * sigma - 3.0 * narrow * narrow - 12.0 * narrow - 9;
    const auto narrowCount = std::lround(excess / (-4.0 * narrow - 4));
    std::array<int, 3> widths{};
    for (std::size_t i = 0; i < widths.size(); ++i) widths[i] = long(i) < narrowCount ? narrow : narrow + 2;
    return widths;
}

/// The mean of `box` neighbours for each of `count` values, `stride` apart; what lies beyond the ends counts as clear.
void blurLine(const std::uint16_t* source, std::uint16_t* target, int count, std::size_t stride, int box) {
    const int radius = box / 2;
    const std::uint32_t divisor = std::uint32_t(box);
    std::uint32_t sum = 0;
    for (int i = 0; i < std::min(radius, count); ++i) sum += source[std::size_t(i) * stride];
    for (int i = 0; i < count; ++i) {
        if (i + radius < count) sum += source[std::size_t(i + radius) * stride];
        if (i - radius - 1 >= 0) sum -= source[std::size_t(i - radius - 1) * stride];
        target[std::size_t(i) * stride] = std::uint16_t((sum + divisor / 2) / divisor);
    }
}

}  // namespace

int reach(double sigma) {
    int sum = 0;
    for (const int width : boxWidths(sigma)) sum += width / 2;
    return sum;
}

std::vector<std::uint16_t> blurredAlpha(const Image& shape, double sigma) {
    const int width = shape.width();
    const int height = shape.height();
    const auto row = [width](int y) { return std::size_t(y) * std::size_t(width); };

    std::vector<std::uint16_t> values(row(height));
    for (int y = 0; y < height; ++y) {
        const auto pixels = shape.row(y);
        for (int x = 0; x < width; ++x)
            values[row(y) + std::size_t(x)] = std::uint16_t((pixels[std::size_t(x)] >> 24) << 8);
    }
    std::vector<std::uint16_t> passed(values.size());
    for (const int box : boxWidths(sigma)) {
        for (int y = 0; y < height; ++y) blurLine(&values[row(y)], &passed[row(y)], width, 1, box);
        for (int x = 0; x < width; ++x)
            blurLine(&passed[std::size_t(x)], &values[std::size_t(x)], height, std::size_t(width), box);
    }
    return values;
}

std::optional<Image> shadow(const Image& shape, double sigma, double opacity) {
    const auto pixels = allocatePixels(shape.width(), shape.height());
    if (!pixels) return std::nullopt;
    std::ranges::transform(blurredAlpha(shape, sigma), pixels.get(), [opacity](std::uint16_t alpha) {
        return std::uint32_t(std::lround(alpha * opacity / 256)) << 24;
    });
    return Image(shape.width(), shape.height(), pixels, Image::Alpha::varying);
}

}  // namespace quorvel::ShadowBlur
