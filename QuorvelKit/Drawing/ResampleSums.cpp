#include "Drawing/ResampleSums.h"

#include <bit>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace quorvel::ResampleSums {

namespace {

// Eight channels side by side: a type that compilers lower to whatever registers the machine has.
using Channels = std::uint16_t __attribute__((vector_size(16)));
using HalfBytes = std::uint8_t __attribute__((vector_size(8)));
using Bytes = std::uint8_t __attribute__((vector_size(16)));

template <typename Vector>
Vector load(const void* from) {
    Vector vector;
    std::memcpy(&vector, from, sizeof vector);
    return vector;
}

Channels allOf(std::uint16_t value) {
    return Channels{} + value;
}

struct TwiceChannels {
    Channels first, second;
};

/// Sixteen bytes, each times 256.
TwiceChannels loadBytes(const std::uint8_t* from) {
    const auto b = load<Bytes>(from);
    const Bytes zero{};
    if constexpr (std::endian::native == std::endian::little) {
        return {reinterpret_cast<Channels>(
                    __builtin_shufflevector(zero, b, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23)),
                reinterpret_cast<Channels>(
                    __builtin_shufflevector(zero, b, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31))};
    } else {
        return {reinterpret_cast<Channels>(
                    __builtin_shufflevector(b, zero, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23)),
                reinterpret_cast<Channels>(
                    __builtin_shufflevector(b, zero, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31))};
    }
}

/// The upper half of each product. Written out for the machines that have an instruction which compilers don't find.
Channels upperHalf(Channels a, Channels b) {
#ifdef __SSE2__
    return reinterpret_cast<Channels>(_mm_mulhi_epu16(reinterpret_cast<__m128i>(a), reinterpret_cast<__m128i>(b)));
#else
    Channels product{};
    for (std::size_t i = 0; i < lanes; ++i) product[i] = std::uint16_t(std::uint32_t(a[i]) * b[i] >> 16);
    return product;
#endif
}

/// What makes up for the halves that the products lose, on average.
std::uint16_t lostByProducts(std::size_t taps) {
    return std::uint16_t((taps + 1) / 2);
}

std::uint16_t sumColumn(std::span<const std::uint8_t* const> rows, const Narrow::Weight* weights, std::size_t c) {
    std::uint32_t sum = lostByProducts(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) sum += (std::uint32_t(rows[i][c]) << 8) * weights[i] >> 16;
    return std::uint16_t(sum);
}

}  // namespace

void sumRows(std::span<const std::uint8_t* const> rows, const Narrow::Weight* weights, std::size_t count,
             std::uint16_t* columns) {
    const Channels start = allOf(lostByProducts(rows.size()));
    std::size_t c = 0;
    for (; c + 4 * lanes <= count; c += 4 * lanes) {
        Channels sums[4] = {start, start, start, start};
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const Channels weight = allOf(weights[i]);
            const auto [first, second] = loadBytes(rows[i] + c);
            const auto [third, fourth] = loadBytes(rows[i] + c + 2 * lanes);
            sums[0] += upperHalf(first, weight);
            sums[1] += upperHalf(second, weight);
            sums[2] += upperHalf(third, weight);
            sums[3] += upperHalf(fourth, weight);
        }
        std::memcpy(columns + c, sums, sizeof sums);
    }
    for (; c < count; ++c) columns[c] = sumColumn(rows, weights, c);
}

void sumRows(std::span<const std::uint8_t* const> rows, const Wide::Weight* weights, std::size_t count,
             std::uint16_t* columns) {
    constexpr std::size_t block = 64;
    for (std::size_t begin = 0; begin < count; begin += block) {
        const std::size_t size = count - begin < block ? count - begin : block;
        std::uint64_t sums[block] = {};
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const std::uint8_t* row = rows[i] + begin;
            for (std::size_t c = 0; c < size; ++c) sums[c] += std::uint64_t(row[c]) * weights[i];
        }
        for (std::size_t c = 0; c < size; ++c) columns[begin + c] = std::uint16_t((sums[c] + (1U << 23)) >> 24);
    }
}

void sumAcross(const std::uint16_t* columns, std::span<const Sum> sums, const Narrow::Weight* weights,
               std::size_t stride, std::uint8_t* pixels) {
    for (const Sum& sum : sums) {
        const std::uint16_t* from = columns + sum.begin * channels;
        Channels total{};
        for (std::size_t k = 0; k < stride; k += lanes) {
            total += upperHalf(load<Channels>(from + k), load<Channels>(weights + k));
        }
        const Channels other = __builtin_shufflevector(total, total, 4, 5, 6, 7, 0, 1, 2, 3);
        const Channels rounded = total + other + allOf(std::uint16_t(lostByProducts(sum.taps) + 128));
        const auto bytes = __builtin_convertvector(rounded >> 8, HalfBytes);
        std::memcpy(pixels, &bytes, channels);
        weights += stride;
        pixels += channels;
    }
}

void sumAcross(const std::uint16_t* columns, std::span<const Sum> sums, const Wide::Weight* weights, std::size_t stride,
               std::uint8_t* pixels) {
    for (const Sum& sum : sums) {
        const std::uint16_t* from = columns + sum.begin * channels;
        std::uint64_t totals[channels] = {};
        for (std::size_t k = 0; k < stride; ++k) totals[k % channels] += std::uint64_t(from[k]) * weights[k];
        for (std::size_t c = 0; c < channels; ++c) {
            pixels[c] = std::uint8_t((totals[c] + (std::uint64_t(1) << 39)) >> 40);
        }
        weights += stride;
        pixels += channels;
    }
}

}  // namespace quorvel::ResampleSums
