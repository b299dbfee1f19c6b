#include "Drawing/Image.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <set>

namespace quorvel {
namespace {

TEST(Image, AllocatedPixelsAreZero) {
    const auto pixels = allocatePixels(33, 7);
    ASSERT_TRUE(pixels);
    EXPECT_TRUE(std::all_of(pixels.get(), pixels.get() + 33 * 7, [](std::uint32_t pixel) { return pixel == 0; }));
}

TEST(Image, NoPixelsForSizesThatCannotBe) {
    constexpr int most = std::numeric_limits<int>::max();
    EXPECT_FALSE(allocatePixels(0, 1));
    EXPECT_FALSE(allocatePixels(1, 0));
    EXPECT_FALSE(allocatePixels(-1, 1));
    EXPECT_FALSE(allocatePixels(-4, -4));
    EXPECT_FALSE(allocatePixels(most, most));
}

TEST(Image, RowsRunFromTheTopWithoutGaps) {
    const auto pixels = allocatePixels(2, 3);
    for (std::uint32_t i = 0; i < 6; ++i) pixels[i] = i;
    const Image image(2, 3, pixels, Image::Alpha::varying);
    EXPECT_EQ(image.row(0).size(), 2U);
    EXPECT_EQ(image.row(0)[0], 0U);
    EXPECT_EQ(image.row(1)[0], 2U);
    EXPECT_EQ(image.row(2)[1], 5U);
    EXPECT_EQ(image.byteCount(), 24U);
}

TEST(Image, CopiesShareIdAndPixelsAndOthersDoNot) {
    const Image image(1, 1, allocatePixels(1, 1), Image::Alpha::varying);
    const Image copy = image;
    const Image other(1, 1, allocatePixels(1, 1), Image::Alpha::varying);
    EXPECT_EQ(copy.id(), image.id());
    EXPECT_EQ(copy.pixels(), image.pixels());
    EXPECT_NE(other.id(), image.id());
    EXPECT_EQ((std::set{image.id(), other.id(), nextImageId(), nextImageId()}).size(), 4U);
}

}  // namespace
}  // namespace quorvel
