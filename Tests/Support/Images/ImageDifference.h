#pragma once

#include "Drawing/Image.h"

namespace quorvel {

/// How far two images of one size lie apart, over all channels of all premultiplied pixels: 0 to 255.
struct ImageDifference {
    double mean = 0;
    int maximum = 0;
};

/// Images of different sizes are as far apart as can be.
ImageDifference differenceBetween(const Image& a, const Image& b);

/// Where the two differ, as a picture to look at: the darker, the further apart.
Image differencePicture(const Image& a, const Image& b);

}  // namespace quorvel
