#include "Support/Images/ImageDifference.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace quorvel {
namespace {

int channelDistance(std::uint32_t a, std::uint32_t b, int shift) {
    return std::abs(int(a >> shift & 255) - int(b >> shift & 255));
}

}  // namespace

ImageDifference differenceBetween(const Image& a, const Image& b) {
    if (a.width() != b.width() || a.height() != b.height()) return {255, 255};
    ImageDifference difference;
    std::int64_t sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto rowA = a.row(y), rowB = b.row(y);
        for (std::size_t x = 0; x < rowA.size(); ++x)
            for (int shift = 0; shift < 32; shift += 8) {
                const int distance = channelDistance(rowA[x], rowB[x], shift);
                sum += distance;
                difference.maximum = std::max(difference.maximum, distance);
            }
    }
    difference.mean = double(sum) / (4.0 * a.width() * a.height());
    return difference;
}

Image differencePicture(const Image& a, const Image& b) {
    const int width = std::max(a.width(), b.width());
    const int height = std::max(a.height(), b.height());
    auto pixels = std::make_shared<std::uint32_t[]>(std::size_t(width) * std::size_t(height));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const bool common = x < std::min(a.width(), b.width()) && y < std::min(a.height(), b.height());
            int distance = common ? 0 : 255;
            for (int shift = 0; common && shift < 32; shift += 8)
                distance =
                    std::max(distance, channelDistance(a.row(y)[std::size_t(x)], b.row(y)[std::size_t(x)], shift));
            // Small differences must be seen too: a difference of 1 is already a light grey.
            const auto shade = std::uint32_t(distance == 0 ? 255 : 200 - distance * 200 / 255);
            pixels[std::size_t(y) * std::size_t(width) + std::size_t(x)] =
                0xFF000000u | shade << 16 | shade << 8 | shade;
        }
    return Image(width, height, std::move(pixels), Image::Alpha::opaque);
}

}  // namespace quorvel
