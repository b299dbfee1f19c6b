#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// The weighted sums of resampling. Everything is computed in whole numbers, so that each machine makes the same
/// pixels: rows are first summed into one row of columns, whose channels have 256 steps for each step of a byte, then
/// pixels across.
namespace quorvel::ResampleSums {

/// For sums of a few pixels, in sixteen bits throughout, as wide registers multiply them best. A sum loses less than a
/// 256th of a step for each pixel.
struct Narrow {
    using Weight = std::uint16_t;
    static constexpr double one = 65536;
    static constexpr std::size_t mostTaps = 64;
};

/// For sums of any number of pixels.
struct Wide {
    using Weight = std::uint32_t;
    static constexpr double one = 4294967296;
};

inline constexpr std::size_t channels = 4;

/// Sums across take this many channels at once: strides are multiples of it.
inline constexpr std::size_t lanes = 8;

/// columns[c] = the sum of rows[i][c] × weights[i], for `count` channels.
void sumRows(std::span<const std::uint8_t* const> rows, const Narrow::Weight* weights, std::size_t count,
             std::uint16_t* columns);
void sumRows(std::span<const std::uint8_t* const> rows, const Wide::Weight* weights, std::size_t count,
             std::uint16_t* columns);

/// A pixel made from `taps` pixels of the columns, the first at `begin`.
struct Sum {
    std::uint32_t begin = 0;
    std::uint32_t taps = 0;
};

/// One pixel for each of `sums`. Each has `stride` weights, one for every channel of its pixels, then zeros; the
/// columns can be read as far.
void sumAcross(const std::uint16_t* columns, std::span<const Sum> sums, const Narrow::Weight* weights,
               std::size_t stride, std::uint8_t* pixels);
void sumAcross(const std::uint16_t* columns, std::span<const Sum> sums, const Wide::Weight* weights, std::size_t stride,
               std::uint8_t* pixels);

}  // namespace quorvel::ResampleSums
