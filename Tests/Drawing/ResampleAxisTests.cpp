#include "Drawing/ResampleAxis.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numeric>

namespace quorvel {
namespace {

double sum(const ResampleAxis::Tap& tap) {
    return std::accumulate(tap.weights.begin(), tap.weights.end(), 0.0);
}

struct AxisCase {
    int size;
    double start, end;
};

class ResampleAxisSums : public testing::TestWithParam<AxisCase> {};

TEST_P(ResampleAxisSums, WeightsOfAPixelSumToItsShareOfTheTarget) {
    const auto [size, start, end] = GetParam();
    const auto axis = ResampleAxis::make(size, start, end, -1000, 100000);
    ASSERT_TRUE(axis);
    EXPECT_EQ(axis->begin, int(std::floor(start)));
    EXPECT_EQ(axis->begin + axis->count(), int(std::ceil(end)));
    for (int i = 0; i < axis->count(); ++i) {
        const double low = std::max(double(axis->begin + i), start);
        const double high = std::min(axis->begin + i + 1.0, end);
        EXPECT_NEAR(sum(axis->taps[std::size_t(i)]), high - low, 1e-9) << i;
    }
}

TEST_P(ResampleAxisSums, OnlyPixelsOfThePictureAreLookedAtAndAllWhenReduced) {
    const auto [size, start, end] = GetParam();
    const auto axis = ResampleAxis::make(size, start, end, -1000, 100000);
    ASSERT_TRUE(axis);
    EXPECT_EQ(axis->sourceBegin, 0);
    EXPECT_EQ(axis->sourceEnd, size);
    std::size_t most = 0;
    for (const auto& tap : axis->taps) {
        EXPECT_GE(tap.begin, 0);
        EXPECT_LE(tap.begin + int(tap.weights.size()), size);
        for (const double weight : tap.weights) EXPECT_GE(weight, 0);
        most = std::max(most, tap.weights.size());
    }
    EXPECT_EQ(axis->mostTaps(), most);
}

INSTANTIATE_TEST_SUITE_P(, ResampleAxisSums,
                         testing::Values(AxisCase{2400, 59.3, 691.2}, AxisCase{10, 0, 10}, AxisCase{10, 0.5, 10.5},
                                         AxisCase{1, 0, 6000}, AxisCase{2400, 0, 1}, AxisCase{30000, 3.4, 3.6},
                                         AxisCase{7, -20.7, 33.1}, AxisCase{101, 0, 100}, AxisCase{100, 0, 101}));

TEST(ResampleAxis, TellsWhetherEveryPixelLiesWhollyInTheTarget) {
    EXPECT_TRUE(ResampleAxis::make(10, 2, 7, 0, 100)->covered);
    EXPECT_FALSE(ResampleAxis::make(10, 2.5, 7, 0, 100)->covered);
    EXPECT_FALSE(ResampleAxis::make(10, 2, 7.5, 0, 100)->covered);
    EXPECT_TRUE(ResampleAxis::make(10, 2.5, 7.5, 3, 7)->covered) << "the edges aren't visible";
}

}  // namespace
}  // namespace quorvel
