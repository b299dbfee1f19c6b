#pragma once

namespace quorvel {

/// A size in pixels.
struct PictureSize {
    int width = 0;
    int height = 0;
    bool operator==(const PictureSize&) const = default;
};

}  // namespace quorvel
