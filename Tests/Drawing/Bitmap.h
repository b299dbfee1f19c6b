#pragma once

#include "Drawing/BitmapContext.h"

#include <cstdint>
#include <functional>

namespace quorvel {

/// What `draw` leaves on a bitmap of this size.
inline Image drawn(int width, int height, const std::function<void(DrawingContext&)>& draw) {
    auto bitmap = BitmapContext::make(width, height);
    draw(bitmap->context());
    return std::move(*bitmap).finish();
}

/// The pixel `x` from the left and `y` from the bottom, as drawing counts.
inline std::uint32_t pixelAt(const Image& image, int x, int y) {
    return image.row(image.height() - 1 - y)[std::size_t(x)];
}

inline bool blank(const Image& image) {
    for (int y = 0; y < image.height(); ++y) {
        for (const std::uint32_t pixel : image.row(y)) {
            if (pixel != 0) return false;
        }
    }
    return true;
}

inline bool samePixels(const Image& a, const Image& b) {
    if (a.width() != b.width() || a.height() != b.height()) return false;
    for (int y = 0; y < a.height(); ++y) {
        if (!std::equal(a.row(y).begin(), a.row(y).end(), b.row(y).begin())) return false;
    }
    return true;
}

/// An image whose pixels, from the top left, are given by a function of x and y.
inline Image imageOf(int width, int height, const std::function<std::uint32_t(int, int)>& pixel,
                     Image::Alpha alpha = Image::Alpha::opaque) {
    const auto pixels = allocatePixels(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) pixels[std::size_t(y) * std::size_t(width) + std::size_t(x)] = pixel(x, y);
    }
    return Image(width, height, pixels, alpha);
}

inline Image evenImage(int width, int height, std::uint32_t pixel) {
    const auto alpha = pixel >> 24 == 255 ? Image::Alpha::opaque : Image::Alpha::varying;
    return imageOf(width, height, [=](int, int) { return pixel; }, alpha);
}

}  // namespace quorvel
