#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace quorvel {

/// A baseline or progressive JPEG file that a document can store byte for byte: upright, grey or RGB in sRGB, whole.
struct EncodedPicture {
    std::shared_ptr<const std::string> jpeg;
    int width = 0;  ///< pixels
    int height = 0;
    std::uint64_t id = 0;  ///< from nextImageId()
};

}  // namespace quorvel
