#include "Bitmap.h"
#include "Drawing/ImageScaling.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace quorvel {
namespace {

constexpr Rect everywhere{-1e9, -1e9, 2e9, 2e9};
constexpr std::uint32_t redPixel = 0xFFFF0000, bluePixel = 0xFF0000FF;
const double infinity = std::numeric_limits<double>::infinity();

std::array<int, 4> channelsOf(std::uint32_t pixel) {
    return {int(pixel & 0xFF), int(pixel >> 8 & 0xFF), int(pixel >> 16 & 0xFF), int(pixel >> 24)};
}

TEST(ImageScaling, SameSizeOnWholePixelsIsTheImageItself) {
    std::mt19937 random(1);
    const Image image = imageOf(61, 43, [&](int, int) { return 0xFF000000U | std::uint32_t(random()) >> 8; });
    const auto placed = ImageScaling::place(image, {5, -7, 61, 43}, everywhere);
    ASSERT_TRUE(placed);
    EXPECT_EQ(placed->x, 5);
    EXPECT_EQ(placed->y, -7);
    EXPECT_EQ(placed->image.alpha(), Image::Alpha::opaque);
    EXPECT_TRUE(samePixels(placed->image, image));
}

TEST(ImageScaling, ReducingTakesTheMeanOfTheArea) {
    const Image image = imageOf(4, 2, [](int x, int) { return x < 3 ? 0xFF000000U : 0xFFFFFFFFU; });
    const auto placed = ImageScaling::place(image, {0, 0, 2, 1}, everywhere);
    ASSERT_TRUE(placed);
    EXPECT_EQ(placed->image.row(0)[0], 0xFF000000U);
    EXPECT_EQ(placed->image.row(0)[1], 0xFF808080U);
}

TEST(ImageScaling, ReducingSharesPixelsThatLieInTwo) {
    const Image image = imageOf(3, 1, [](int x, int) { return x == 1 ? 0xFFF0F0F0U : 0xFF000000U; });
    const auto placed = ImageScaling::place(image, {0, 0, 2, 1}, everywhere);
    ASSERT_TRUE(placed);
    EXPECT_EQ(placed->image.row(0)[0], 0xFF505050U);
    EXPECT_EQ(placed->image.row(0)[1], 0xFF505050U);
}

TEST(ImageScaling, EnlargingGoesSmoothlyBetweenCentres) {
    const Image image = imageOf(2, 1, [](int x, int) { return x == 0 ? 0xFF000000U : 0xFF808080U; });
    const auto placed = ImageScaling::place(image, {0, 0, 8, 1}, everywhere);
    ASSERT_TRUE(placed);
    const auto row = placed->image.row(0);
    EXPECT_EQ(row.front(), 0xFF000000U);
    EXPECT_EQ(row.back(), 0xFF808080U);
    EXPECT_TRUE(std::is_sorted(row.begin(), row.end()));
    EXPECT_EQ(row[2] & 0xFF, 0x10U);
    EXPECT_EQ(row[5] & 0xFF, 0x70U);
}

TEST(ImageScaling, EdgesWithinAPixelGetTheirShareAsAlpha) {
    for (const int side : {1, 6, 400}) {
        const auto placed = ImageScaling::place(evenImage(side, side, redPixel), {2.75, 3, 6, 4.5}, everywhere);
        ASSERT_TRUE(placed);
        EXPECT_EQ(placed->x, 2);
        EXPECT_EQ(placed->y, 3);
        EXPECT_EQ(placed->image.width(), 7);
        EXPECT_EQ(placed->image.height(), 5);
        EXPECT_EQ(placed->image.alpha(), Image::Alpha::varying);
        EXPECT_EQ(placed->image.row(0)[0], 0x40400000U);
        EXPECT_EQ(placed->image.row(0)[3], redPixel);
        EXPECT_EQ(placed->image.row(0)[6], 0xBFBF0000U);
        EXPECT_EQ(placed->image.row(4)[3], 0x80800000U);
        EXPECT_EQ(placed->image.row(4)[0], 0x20200000U);
    }
}

TEST(ImageScaling, EdgesThatMissTheGridByARoundingErrorLieOnIt) {
    const auto placed = ImageScaling::place(evenImage(40, 40, redPixel), {1.9999999999, 3.0000001, 10, 10}, everywhere);
    ASSERT_TRUE(placed);
    EXPECT_EQ(placed->image.width(), 10);
    EXPECT_EQ(placed->image.height(), 10);
    EXPECT_EQ(placed->image.alpha(), Image::Alpha::opaque);
}

TEST(ImageScaling, AnEvenImageStaysEvenAtEverySize) {
    for (const std::uint32_t pixel : {0xFFFFFFFFU, 0xFF010203U, 0xFF7F80FEU, 0x80402010U, 0x01010101U, 0x00000000U}) {
        for (const int side : {1, 2, 3, 7, 100, 333}) {
            const Image image = evenImage(side, side, pixel);
            for (const double size : {1.0, 2.0, 3.0, 5.0, 19.0, 64.0, 101.0, 250.0}) {
                const auto placed = ImageScaling::place(image, {0, 0, size, size}, everywhere);
                ASSERT_TRUE(placed);
                for (int y = 0; y < placed->image.height(); ++y) {
                    for (const std::uint32_t got : placed->image.row(y)) {
                        ASSERT_EQ(got, pixel) << side << " → " << size;
                    }
                }
            }
        }
    }
}

TEST(ImageScaling, IsWithinAStepOfTheExactMean) {
    std::mt19937 random(2);
    const int size = 200;
    const Image image = imageOf(size, size, [&](int, int) { return 0xFF000000U | std::uint32_t(random()) >> 8; });
    for (const int parts : {100, 50, 40, 10, 5, 2, 1}) {
        const auto placed = ImageScaling::place(image, {0, 0, double(parts), double(parts)}, everywhere);
        ASSERT_TRUE(placed);
        const int block = size / parts;
        for (int y = 0; y < parts; ++y) {
            for (int x = 0; x < parts; ++x) {
                std::array<double, 4> mean{};
                for (int j = 0; j < block; ++j) {
                    for (int i = 0; i < block; ++i) {
                        const auto channels = channelsOf(image.row(y * block + j)[std::size_t(x * block + i)]);
                        for (std::size_t c = 0; c < 4; ++c) mean[c] += channels[c] / double(block * block);
                    }
                }
                const auto got = channelsOf(placed->image.row(y)[std::size_t(x)]);
                for (std::size_t c = 0; c < 4; ++c) ASSERT_NEAR(got[c], mean[c], 0.8) << block;
            }
        }
    }
}

TEST(ImageScaling, ColorsNeverExceedTheirAlpha) {
    std::mt19937 random(3);
    const Image image = imageOf(
        97, 61,
        [&](int, int) {
            const std::uint32_t alpha = random() % 256;
            const auto channel = [&] { return std::uint32_t(random()) % (alpha + 1); };
            return alpha << 24 | channel() << 16 | channel() << 8 | channel();
        },
        Image::Alpha::varying);
    for (const Rect& target : {Rect{0.3, 0.7, 20.2, 15.9}, Rect{-3.5, 2, 200, 300}, Rect{0, 0, 1.5, 0.5}}) {
        const auto placed = ImageScaling::place(image, target, everywhere);
        ASSERT_TRUE(placed);
        for (int y = 0; y < placed->image.height(); ++y) {
            for (const std::uint32_t pixel : placed->image.row(y)) {
                const auto [b, g, r, a] = channelsOf(pixel);
                ASSERT_LE(std::max({r, g, b}), a);
            }
        }
    }
}

TEST(ImageScaling, OnlyWhatIsVisibleIsMade) {
    std::mt19937 random(4);
    const Image image = imageOf(300, 200, [&](int, int) { return 0xFF000000U | std::uint32_t(random()) >> 8; });
    const Rect target{-20.3, 10.6, 90.1, 70.2};
    const Rect visible{5, 20, 11, 13};
    const auto all = ImageScaling::place(image, target, everywhere);
    const auto part = ImageScaling::place(image, target, visible);
    ASSERT_TRUE(all && part);
    EXPECT_EQ(part->x, 5);
    EXPECT_EQ(part->y, 20);
    ASSERT_EQ(part->image.width(), 11);
    ASSERT_EQ(part->image.height(), 13);
    EXPECT_EQ(part->image.alpha(), Image::Alpha::opaque);
    for (int y = 0; y < 13; ++y) {
        for (int x = 0; x < 11; ++x) {
            ASSERT_EQ(part->image.row(y)[std::size_t(x)],
                      all->image.row(y + part->y - all->y)[std::size_t(x + part->x - all->x)]);
        }
    }
}

TEST(ImageScaling, AMirroredImageGivesTheMirroredResult) {
    std::mt19937 random(5);
    const int width = 150;
    const Image image = imageOf(width, 1, [&](int, int) { return 0xFF000000U | std::uint32_t(random()) >> 8; });
    const Image mirrored = imageOf(width, 1, [&](int x, int) { return image.row(0)[std::size_t(width - 1 - x)]; });
    for (const double size : {40.5, 149.0, 600.25}) {
        const auto one = ImageScaling::place(image, {10 - size / 2, 0, size, 1}, everywhere);
        const auto other = ImageScaling::place(mirrored, {10 - size / 2, 0, size, 1}, everywhere);
        ASSERT_TRUE(one && other);
        ASSERT_EQ(one->image.width(), other->image.width());
        for (int x = 0; x < one->image.width(); ++x) {
            const auto a = channelsOf(one->image.row(0)[std::size_t(x)]);
            const auto b = channelsOf(other->image.row(0)[std::size_t(one->image.width() - 1 - x)]);
            for (std::size_t c = 0; c < 4; ++c) ASSERT_NEAR(a[c], b[c], 1);
        }
    }
}

TEST(ImageScaling, VeryLargeFactors) {
    const Image stripes = imageOf(2400, 3, [](int x, int) { return x % 2 ? 0xFFFFFFFFU : 0xFF000000U; });
    const auto pixel = ImageScaling::place(stripes, {0, 0, 1, 1}, everywhere);
    ASSERT_TRUE(pixel);
    EXPECT_EQ(pixel->image.width(), 1);
    for (const int channel : channelsOf(pixel->image.row(0)[0] | 0xFF000000U)) EXPECT_GE(channel, 127);

    const auto band = ImageScaling::place(evenImage(1, 1, bluePixel), {0, 0, 6000, 2}, everywhere);
    ASSERT_TRUE(band);
    EXPECT_EQ(band->image.width(), 6000);
    EXPECT_EQ(band->image.row(1)[0], bluePixel);
    EXPECT_EQ(band->image.row(1)[5999], bluePixel);

    const auto mixed =
        ImageScaling::place(imageOf(5000, 1, [](int, int) { return redPixel; }), {0, 0, 1, 3000}, everywhere);
    ASSERT_TRUE(mixed);
    EXPECT_EQ(mixed->image.row(2999)[0], redPixel);
}

TEST(ImageScaling, LessThanAPixelKeepsItsShare) {
    const auto placed = ImageScaling::place(evenImage(50, 50, redPixel), {3.25, 4.25, 0.5, 0.5}, everywhere);
    ASSERT_TRUE(placed);
    EXPECT_EQ(placed->image.width(), 1);
    EXPECT_EQ(placed->image.row(0)[0], 0x40400000U);
}

TEST(ImageScaling, NothingWhereNoPixelIsTouched) {
    const Image image = evenImage(10, 10, redPixel);
    const Rect surface{0, 0, 100, 100};
    for (const Rect& target : {Rect{-20, 0, 20, 20}, Rect{100, 0, 20, 20}, Rect{0, -20, 5, 20}, Rect{0, 100, 5, 5},
                               Rect{1e300, 0, 5, 5}, Rect{5, 5, 0, 5}, Rect{5, 5, 5, -5}, Rect{5, 5, 1e-300, 5}}) {
        EXPECT_FALSE(ImageScaling::place(image, target, surface));
    }
    EXPECT_FALSE(ImageScaling::place(image, {0, 0, 10, 10}, {0, 0, 0, 0}));
}

TEST(ImageScaling, NothingForWhatIsNotFiniteOrTooLarge) {
    const Image image = evenImage(10, 10, redPixel);
    const Rect surface{0, 0, 100, 100};
    for (const double bad : {std::nan(""), infinity, -infinity}) {
        EXPECT_FALSE(ImageScaling::place(image, {bad, 0, 5, 5}, surface));
        EXPECT_FALSE(ImageScaling::place(image, {0, bad, 5, 5}, surface));
        EXPECT_FALSE(ImageScaling::place(image, {0, 0, bad, 5}, surface));
        EXPECT_FALSE(ImageScaling::place(image, {0, 0, 5, bad}, surface));
    }
    EXPECT_FALSE(ImageScaling::place(image, {0, 0, 1e9, 5}, everywhere));
    EXPECT_FALSE(ImageScaling::place(image, {1e308, 0, 1e308, 5}, surface));
}

TEST(ImageScaling, TargetsFarLargerThanTheSurfaceShowTheirPart) {
    for (const double far : {1e6, 1e12, 1e300}) {
        const auto placed =
            ImageScaling::place(evenImage(10, 10, redPixel), {-far, -far, 2 * far, 2 * far}, {0, 0, 100, 50});
        ASSERT_TRUE(placed);
        EXPECT_TRUE(samePixels(placed->image, evenImage(100, 50, redPixel)));
    }
}

}  // namespace
}  // namespace quorvel
