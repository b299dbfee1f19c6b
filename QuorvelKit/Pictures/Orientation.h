#pragma once

#include <cstddef>
#include <string_view>

namespace quorvel {

/// How a stored picture is to be turned and mirrored to stand upright, numbered as cameras write it into EXIF.
enum class Orientation {
    upright = 1,
    mirrored = 2,
    turned180 = 3,
    flipped = 4,
    transposed = 5,
    turned90 = 6,
    transversed = 7,
    turned270 = 8,
};

/// The orientation of a number; `upright` for any other than 1 to 8.
Orientation orientationOf(int number);

/// Whether width and height change places.
inline bool swapsSides(Orientation orientation) {
    return orientation >= Orientation::transposed;
}

/// The orientation that the first directory of an EXIF block (a TIFF header and what follows) names.
Orientation orientationOfExif(std::string_view tiff);

/// Where stored pixels go in the upright picture: the pixel (x, y) of `width` × `height` stored ones goes to the index
/// start + x × stepX + y × stepY.
struct UprightPlaces {
    std::ptrdiff_t start = 0;
    std::ptrdiff_t stepX = 1;
    std::ptrdiff_t stepY = 0;

    UprightPlaces(Orientation orientation, int width, int height);
};

}  // namespace quorvel
