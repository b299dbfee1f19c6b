#pragma once

#include "Drawing/Image.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace quorvel {

/// How dark a pixel is, 0 for white and 1 for black.
inline double darknessAt(const Image& image, int x, int y) {
    const std::uint32_t pixel = image.row(y)[static_cast<std::size_t>(x)];
    const double sum = double(pixel >> 16 & 255) + double(pixel >> 8 & 255) + double(pixel & 255);
    return 1 - sum / (3 * 255);
}

enum class Along { row, column };

/// Where dark stretches begin and end along a row or column of pixels, in points. An edge within a pixel is placed by
/// the pixel's share of darkness.
inline std::vector<double> darkEdges(const Image& image, Along along, double place, double dpi) {
    const int fixed = int(place / 72 * dpi);
    const int length = along == Along::row ? image.width() : image.height();
    const auto darkness = [&](int i) {
        return along == Along::row ? darknessAt(image, i, fixed) : darknessAt(image, fixed, i);
    };
    double most = 0;
    for (int i = 0; i < length; ++i) most = std::max(most, darkness(i));
    std::vector<double> edges;
    bool inside = false;
    for (int i = 0; i < length; ++i) {
        const double share = darkness(i) / most;
        if (!inside && share > 0.02) {
            // A stretch begins in this pixel unless it covers less than this pixel's end.
            edges.push_back((i + (1 - share)) / dpi * 72);
            inside = true;
        } else if (inside && share < 0.98) {
            edges.push_back((i + share) / dpi * 72);
            inside = false;
        }
    }
    return edges;
}

}  // namespace quorvel
