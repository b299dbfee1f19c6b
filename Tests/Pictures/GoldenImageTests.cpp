// The comparison with reference pictures must be able to fail.

#include "Support/Images/GoldenImage.h"
#include "Support/Images/ImageDifference.h"
#include "Support/Images/ReadPNG.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

Image plainImage(int width, int height, std::uint32_t pixel) {
    auto pixels = allocatePixels(width, height);
    std::fill_n(pixels.get(), width * height, pixel);
    return Image(width, height, pixels, Image::Alpha::varying);
}

TEST(GoldenImage, measuresDifferencesOverAllChannels) {
    const Image grey = plainImage(4, 2, 0xFF808080u);
    EXPECT_EQ(differenceBetween(grey, grey).mean, 0);
    const ImageDifference difference = differenceBetween(grey, plainImage(4, 2, 0xFF80808Cu));
    EXPECT_EQ(difference.mean, 3);
    EXPECT_EQ(difference.maximum, 12);
    EXPECT_EQ(differenceBetween(grey, plainImage(2, 4, 0xFF808080u)).maximum, 255);
    const Image picture = differencePicture(grey, plainImage(5, 2, 0xFF808080u));
    EXPECT_EQ(picture.row(0)[3], 0xFFFFFFFFu);
    EXPECT_EQ(picture.row(0)[4], 0xFF000000u);
}

TEST(GoldenImage, failsWithoutAReferenceOrWithAnother) {
    ASSERT_EQ(std::getenv("QUORVEL_UPDATE_GOLDEN"), nullptr) << "references aren't compared now";
    EXPECT_FALSE(matchesGolden(plainImage(4, 4, 0), "Pictures/no-such-reference"));
    const Image icons = readPNG(std::filesystem::path(QUORVEL_SOURCE_DIR) / "Tests/Golden/Pictures/icons.png");
    EXPECT_TRUE(matchesGolden(icons, "Pictures/icons"));
    EXPECT_FALSE(matchesGolden(plainImage(icons.width(), icons.height(), 0xFFFFFFFFu), "Pictures/icons"));
    EXPECT_FALSE(matchesGolden(plainImage(10, 10, 0xFFFFFFFFu), "Pictures/icons"));
}

}  // namespace
}  // namespace quorvel
