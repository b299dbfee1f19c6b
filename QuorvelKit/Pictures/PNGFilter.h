#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quorvel {

/// The row filters of PNG: each turns a row into differences from its neighbours, which deflate better than the row.
/// Rows are fed from the top, through the buffer that `row` lends.
class PNGFilter {
public:
    /// Rows of `length` bytes whose pixels take `pixelSize` bytes. Throws std::bad_alloc.
    PNGFilter(std::size_t length, std::size_t pixelSize);

    /// Where the next row is to be written before `filter` is called: `length` bytes.
    std::uint8_t* row() { return current_; }

    /// Chooses the filter whose differences are least in sum, and writes its type and the filtered row to `out`
    /// (1 + `length` bytes).
    void filter(std::uint8_t* out);

private:
    std::size_t length_;
    std::size_t pixelSize_;
    std::vector<std::uint8_t> rows_;        ///< two rows, each with zeros in front for the pixel left of the first
    std::vector<std::uint8_t> candidates_;  ///< the row filtered by sub, up and Paeth
    std::uint8_t* current_;
    std::uint8_t* above_;
};

}  // namespace quorvel
