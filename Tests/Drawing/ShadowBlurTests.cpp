#include "Drawing/ShadowBlur.h"

#include <cmath>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

constexpr int side = 121;
constexpr int middle = side / 2;

/// A square shape of `extent` opaque pixels a side around the middle.
Image square(int extent) {
    const auto pixels = allocatePixels(side, side);
    for (int y = middle - extent / 2; y <= middle + extent / 2; ++y)
        for (int x = middle - extent / 2; x <= middle + extent / 2; ++x)
            pixels[std::size_t(y * side + x)] = 0xff000000u;
    return Image(side, side, pixels, Image::Alpha::varying);
}

TEST(ShadowBlur, SpreadsLikeAGaussianOfTheSigma) {
    for (const double sigma : {1.0, 3.0, 9.0}) {
        const auto values = ShadowBlur::blurredAlpha(square(1), sigma);
        double sum = 0;
        double squares = 0;
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x) {
                const double value = values[std::size_t(y * side + x)];
                sum += value;
                squares += value * (x - middle) * (x - middle);
            }
        EXPECT_NEAR(sum, 255 * 256, 255 * 256 * 0.1) << sigma;
        EXPECT_NEAR(std::sqrt(squares / sum), sigma, 0.05 * sigma + 0.15) << sigma;
    }
}

TEST(ShadowBlur, IsTheSameOnAllSides) {
    const auto values = ShadowBlur::blurredAlpha(square(15), 9);
    const auto at = [&](int dx, int dy) { return values[std::size_t((middle + dy) * side + middle + dx)]; };
    for (int a = 0; a < 40; ++a)
        for (int b = 0; b < 40; ++b) {
            EXPECT_EQ(at(a, b), at(-a, b));
            EXPECT_EQ(at(a, b), at(a, -b));
        }
}

TEST(ShadowBlur, ReachesAsFarAsItSaysAndNoFurther) {
    const int reach = ShadowBlur::reach(9);
    EXPECT_GE(reach, 18);
    EXPECT_LE(reach, 30);
    const auto values = ShadowBlur::blurredAlpha(square(31), 9);
    const auto row = [&](int x) { return values[std::size_t(middle * side + x)]; };
    EXPECT_GT(row(middle + 15 + reach - 4), 0);
    EXPECT_EQ(row(middle + 15 + reach + 1), 0);
}

TEST(ShadowBlur, LeavesTheInsideOfALargeShapeOpaque) {
    EXPECT_EQ(ShadowBlur::blurredAlpha(square(81), 9)[std::size_t(middle * side + middle)], 255 * 256);
}

TEST(ShadowBlur, TakesShapesSmallerThanItsReach) {
    const auto pixels = allocatePixels(2, 1);
    pixels[0] = pixels[1] = 0xff000000u;
    const auto values = ShadowBlur::blurredAlpha(Image(2, 1, pixels, Image::Alpha::opaque), 9);
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0], values[1]);
    EXPECT_LT(values[0], 255 * 256 / 50);
}

}  // namespace
}  // namespace quorvel
