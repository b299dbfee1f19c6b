#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace quorvel {

/// How one axis of a bitmap is made from one axis of a picture.
struct ResampleAxis {
    struct Tap {
        int begin = 0;                ///< the first pixel of the picture that is looked at
        std::vector<double> weights;  ///< of it and those after it; their sum is the pixel's share of the target
    };

    int begin = 0;          ///< the first pixel of the bitmap that is touched
    std::vector<Tap> taps;  ///< of it and those after it
    int sourceBegin = 0;    ///< the pixels of the picture that any of them looks at
    int sourceEnd = 0;
    bool covered = true;  ///< whether every pixel lies wholly in the target

    int count() const { return int(taps.size()); }
    std::size_t mostTaps() const;  ///< pixels of the picture for one of the bitmap

    /// For `size` pixels spread from `start` to `end`, as far as they lie between `visibleStart` and `visibleEnd`. A
    /// pixel of the bitmap is the mean of what lies in it; where the picture is enlarged, it lies between the centres
    /// of two. Nothing when no pixel is touched, too many are, or the ends aren't finite.
    static std::optional<ResampleAxis> make(int size, double start, double end, double visibleStart, double visibleEnd);
};

}  // namespace quorvel
