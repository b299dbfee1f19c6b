#include "Drawing/ResampleSums.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace quorvel::ResampleSums {
namespace {

/// Rows whose length is no multiple of anything, so that the ends of blocks are covered.
std::vector<std::vector<std::uint8_t>> randomRows(std::size_t rows, std::size_t count) {
    std::mt19937 random(7);
    std::vector<std::vector<std::uint8_t>> made(rows, std::vector<std::uint8_t>(count));
    for (auto& row : made) {
        for (auto& channel : row) channel = std::uint8_t(random());
    }
    return made;
}

template <typename Arithmetic>
void rowsAreSummedByWeight(std::size_t rowCount) {
    for (const std::size_t count : {4U, 36U, 68U, 1004U}) {
        const auto rows = randomRows(rowCount, count);
        std::vector<const std::uint8_t*> starts;
        for (const auto& row : rows) starts.push_back(row.data());
        const std::vector<typename Arithmetic::Weight> weights(
            rowCount, typename Arithmetic::Weight(Arithmetic::one / double(rowCount)));
        std::vector<std::uint16_t> columns(count);
        sumRows(starts, weights.data(), count, columns.data());
        for (std::size_t c = 0; c < count; ++c) {
            double exact = 0;
            for (const auto& row : rows) exact += double(row[c]) * weights[0] / Arithmetic::one * 256;
            ASSERT_NEAR(columns[c], exact, double(rowCount) / 2 + 1) << c;
        }
    }
}

TEST(ResampleSums, RowsAreSummedByWeight) {
    for (const std::size_t rows : {2U, 5U, 64U}) rowsAreSummedByWeight<Narrow>(rows);
    for (const std::size_t rows : {2U, 5U, 64U}) rowsAreSummedByWeight<Wide>(rows);
}

TEST(ResampleSums, BothWidthsGiveTheSamePixelsAcross) {
    std::mt19937 random(8);
    constexpr std::size_t taps = 5, stride = 24;
    std::vector<std::uint16_t> columns(200 * channels);
    for (auto& column : columns) column = std::uint16_t(random() % 65281);
    std::vector<Sum> sums;
    std::vector<Narrow::Weight> narrow;
    std::vector<Wide::Weight> wide;
    for (std::uint32_t i = 0; i + 6 < 200; ++i) {
        sums.push_back({i, taps});
        for (std::size_t k = 0; k < stride; ++k) {
            const std::uint32_t weight = k / channels < taps ? std::uint32_t(13107) : 0;
            narrow.push_back(std::uint16_t(weight));
            wide.push_back(weight << 16);
        }
    }
    std::vector<std::uint8_t> a(sums.size() * channels), b(sums.size() * channels);
    sumAcross(columns.data(), sums, narrow.data(), stride, a.data());
    sumAcross(columns.data(), sums, wide.data(), stride, b.data());
    for (std::size_t i = 0; i < a.size(); ++i) ASSERT_NEAR(int(a[i]), int(b[i]), 1) << i;
}

TEST(ResampleSums, TheBrightestGroundDoesNotOverflow) {
    for (const std::size_t taps : {1U, 2U, 63U, 64U}) {
        const std::vector<std::uint8_t> row(36, 255);
        const std::vector<const std::uint8_t*> rows(taps, row.data());
        std::vector<Narrow::Weight> weights(taps, Narrow::Weight(65536 / taps - (taps == 1)));
        weights[0] = Narrow::Weight(std::min<std::size_t>(65535, 65536 - (taps - 1) * weights[0]));
        std::vector<std::uint16_t> columns(36);
        sumRows(rows, weights.data(), 36, columns.data());
        for (const std::uint16_t column : columns) EXPECT_NEAR(column, 65280, 64);
    }
}

}  // namespace
}  // namespace quorvel::ResampleSums
