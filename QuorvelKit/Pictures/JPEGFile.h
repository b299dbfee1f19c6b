#pragma once

#include "Pictures/Orientation.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

/// What the segments of a JPEG file say, read without decoding anything.
struct JPEGFile {
    int width = 0;                       ///< pixels as stored
    int height = 0;                      ///< pixels as stored
    int components = 0;                  ///< 1 for grey, 3 for colour, 4 for inks
    bool baselineOrProgressive = false;  ///< eight bits a sample, Huffman-coded: what every reader can decode
    bool plainColor = false;             ///< grey, or luma and chroma without need of any mark that says so
    Orientation orientation = Orientation::upright;
    std::string profile;  ///< the embedded colour profile; empty without one
    std::size_t end = 0;  ///< behind the mark that ends the picture; 0 when the file stops before it

    /// Nothing when the bytes aren't a JPEG with a frame.
    static std::optional<JPEGFile> parse(std::string_view bytes);
};

}  // namespace quorvel
