#include "Foundation/RGBA.h"
#include "Pictures/IconSet.h"
#include "Samples/SampleArt.h"
#include "Samples/SampleTemplates.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace quorvel {
namespace {

constexpr int width = 900;
constexpr int height = 620;

Image painted(std::string_view title, std::string_view type, std::string_view icon, int w = width, int h = height) {
    auto image = SampleArt::draw(title, type, icon, w, h);
    if (!image) throw std::runtime_error("no picture");
    return *image;
}

std::uint32_t wordOf(const RGBA& color) {
    const auto byte = [](double channel) { return std::uint32_t(std::lround(channel * 255)); };
    return 0xff000000u | byte(color.r) << 16 | byte(color.g) << 8 | byte(color.b);
}

/// The pixel at a place measured from the bottom left.
std::uint32_t pixel(const Image& image, double x, double y) {
    return image.row(image.height() - 1 - int(y))[std::size_t(x)];
}

int channel(std::uint32_t word, int shift) {
    return int(word >> shift & 255u);
}

int lightness(std::uint32_t word) {
    return channel(word, 16) + channel(word, 8) + channel(word, 0);
}

testing::AssertionResult isNear(std::uint32_t actual, std::uint32_t expected, int tolerance) {
    for (const int shift : {24, 16, 8, 0})
        if (std::abs(channel(actual, shift) - channel(expected, shift)) > tolerance)
            return testing::AssertionFailure() << std::hex << actual << " instead of " << expected;
    return testing::AssertionSuccess();
}

bool samePixels(const Image& a, const Image& b) {
    return a.width() == b.width() && a.height() == b.height() &&
           std::equal(a.pixels(), a.pixels() + a.byteCount() / 4, b.pixels());
}

TEST(SampleArt, TheSameWordsGiveTheSamePicture) {
    EXPECT_TRUE(samePixels(painted("Rain Barrel", "Tool", "drop"), painted("Rain Barrel", "Tool", "drop")));
}

TEST(SampleArt, EachWordChangesThePicture) {
    const Image picture = painted("Rain Barrel", "Tool", "drop");
    EXPECT_FALSE(samePixels(picture, painted("Lost Map", "Tool", "drop")));
    EXPECT_FALSE(samePixels(picture, painted("Rain Barrel", "Event", "drop")));
    EXPECT_FALSE(samePixels(picture, painted("Rain Barrel", "Tool", "key")));
}

TEST(SampleArt, IsOpaqueThroughout) {
    const Image picture = painted("Fog Bell", "Event", "moon");
    EXPECT_EQ(picture.width(), width);
    EXPECT_EQ(picture.height(), height);
    EXPECT_EQ(picture.alpha(), Image::Alpha::opaque);
}

TEST(SampleArt, TheSkyRunsFromTopToBottomInTheTypesColours) {
    const auto [r, g, b, a] = *SampleTemplates::typeColor("Harvest");
    const Image picture = painted("Seed Vault", "Harvest", "leaf");
    EXPECT_TRUE(
        isNear(pixel(picture, width - 1, height - 1), wordOf(RGBA(0.6 * r + 0.4, 0.6 * g + 0.4, 0.6 * b + 0.45)), 1));
    // Half-way up at the right edge there is sky still: the far hill ends at 0.22 of the height.
    const RGBA middle((0.6 * r + 0.4 + r + 0.3) / 2, (0.6 * g + 0.4 + g + 0.3) / 2, (0.6 * b + 0.45 + b + 0.25) / 2);
    EXPECT_TRUE(isNear(pixel(picture, width - 1, height / 2), wordOf(middle), 2));
}

TEST(SampleArt, AnUnknownTypeIsGreyBlue) {
    const RGBA base(0.4, 0.4, 0.45098039);
    const Image picture = painted("Seed Vault", "Weather", "leaf");
    EXPECT_EQ(pixel(picture, 0, 0), wordOf(RGBA(0.4 * base.r, 0.4 * base.g + 0.05, 0.4 * base.b)));
}

TEST(SampleArt, TheNearHillCoversTheFoot) {
    for (const std::string_view type : {"Harvest", "Courier", "Tool", "Event"}) {
        const auto [r, g, b, a] = *SampleTemplates::typeColor(type);
        const Image picture = painted("Old Mule", type, "arrow");
        const std::uint32_t hill = wordOf(RGBA(0.4 * r, 0.4 * g + 0.05, 0.4 * b));
        for (const int x : {0, width / 4, width - 1}) EXPECT_EQ(pixel(picture, x, 0), hill) << type << " " << x;
    }
}

/// The place of the sun and the heights of the hills follow from the title's scalars, so these are worked out by hand:
/// "A" is 65, "AB" is 65 × 31 + 66 = 2081, "é" is 233.
TEST(SampleArt, TheTitlePlacesTheSunAndTheHills) {
    const struct {
        std::string_view title;
        double sunX;      ///< left edge of its box as a share of the width
        double nearLeft;  ///< height of the near hill at the left edge
        double farLeft;
    } cases[] = {
        {"", 0.15, 0.3, 0.3},
        {"A", 0.05 + 0.15, 0.5 * (8 % 7) / 20.0 + 0.3, 0.5 * (65 % 7) / 20.0 + 0.3},
        {"AB", 0.41 + 0.15, 0.5 * (260 % 7) / 20.0 + 0.3, 0.5 * (2081 % 7) / 20.0 + 0.3},
        {"é", 0.53 + 0.15, 0.5 * (29 % 7) / 20.0 + 0.3, 0.5 * (233 % 7) / 20.0 + 0.3},
    };
    const auto [r, g, b, a] = *SampleTemplates::typeColor("Courier");
    const std::uint32_t nearHill = wordOf(RGBA(0.4 * r, 0.4 * g + 0.05, 0.4 * b));
    const std::uint32_t farHill = wordOf(RGBA(0.55 * r, 0.55 * g + 0.05, 0.55 * b));
    for (const auto& each : cases) {
        const Image picture = painted(each.title, "Courier", "minus");
        const double centre = each.sunX * width + 0.1 * height;
        const int sun = lightness(pixel(picture, centre, 0.72 * height));
        EXPECT_GT(sun, lightness(pixel(picture, centre, 0.84 * height)) + 60) << each.title;
        EXPECT_GT(sun, lightness(pixel(picture, centre + 0.12 * height, 0.72 * height)) + 60) << each.title;
        EXPECT_GT(sun, lightness(pixel(picture, centre - 0.12 * height, 0.72 * height)) + 60) << each.title;

        EXPECT_EQ(pixel(picture, 0, each.nearLeft * height - 3), nearHill) << each.title;
        if (each.farLeft > each.nearLeft + 0.01) {
            EXPECT_EQ(pixel(picture, 0, each.farLeft * height - 3), farHill) << each.title;
        }
        EXPECT_GT(lightness(pixel(picture, 0, std::max(each.farLeft, each.nearLeft) * height + 4)),
                  lightness(farHill) + 60)
            << each.title;
    }
}

TEST(SampleArt, TheIconStandsInTheMiddleInItsOwnColour) {
    const Image picture = painted("Copper Scale", "Tool", "coin");
    const double side = 0.5 * height;
    const auto at = [&](double x, double y) {
        return pixel(picture, width / 2.0 - side / 2 + x * side, 0.2 * height + y * side);
    };
    const std::uint32_t gold = wordOf(IconSet::color("coin"));
    EXPECT_EQ(at(0.5, 0.5), gold);
    EXPECT_EQ(at(0.5, 0.9), gold);
    EXPECT_NE(at(0.5, 0.75), gold) << "the ring between two circles is open";
}

TEST(SampleArt, AnUnknownIconIsAGreyTileWithAHole) {
    const Image picture = painted("Copper Scale", "Tool", "teapot");
    const double side = 0.5 * height;
    const auto at = [&](double x, double y) {
        return pixel(picture, width / 2.0 - side / 2 + x * side, 0.2 * height + y * side);
    };
    const std::uint32_t grey = 0xff999999u;
    EXPECT_EQ(at(0.2, 0.5), grey);
    EXPECT_EQ(at(0.8, 0.8), grey);
    EXPECT_NE(at(0.5, 0.5), grey);
    EXPECT_NE(at(0.05, 0.5), grey);
    EXPECT_NE(at(0.11, 0.11), grey) << "the corners are round";
}

TEST(SampleArt, TheShadowFallsDownwardsAndStaysNear) {
    // The tile is alike above and below, so what differs between the two edges is the shadow's offset.
    const Image tile = painted("Bramble Gate", "Tool", "teapot");
    const Image bar = painted("Bramble Gate", "Tool", "minus");
    const double side = 0.5 * height;
    const double bottom = 0.2 * height + 0.1 * side;
    const double x = width / 2.0;
    const auto darkened = [&](double y) { return lightness(pixel(bar, x, y)) - lightness(pixel(tile, x, y)); };
    EXPECT_GT(darkened(bottom - 6), 15);
    EXPECT_GT(darkened(bottom - 6), darkened(bottom - 14));
    EXPECT_GT(darkened(bottom - 14), darkened(bottom - 24));
    EXPECT_EQ(darkened(bottom - 40), 0);
    EXPECT_EQ(pixel(tile, width / 2.0 - side / 2 - 40, 0.4 * height),
              pixel(bar, width / 2.0 - side / 2 - 40, 0.4 * height));
}

TEST(SampleArt, AnySizeThatABitmapCanHave) {
    EXPECT_EQ(painted("Lost Map", "Event", "key", 1, 1).width(), 1);
    EXPECT_EQ(painted("Lost Map", "Event", "key", 40, 2).height(), 2);
    EXPECT_EQ(painted("Lost Map", "Event", "key", 3, 41).height(), 41);
    for (const int side : {0, -1, 1 << 20}) {
        EXPECT_FALSE(SampleArt::draw("Lost Map", "Event", "key", side, 10)) << side;
        EXPECT_FALSE(SampleArt::draw("Lost Map", "Event", "key", 10, side)) << side;
    }
}

TEST(SampleArt, TakesAnyBytesForATitle) {
    EXPECT_TRUE(SampleArt::draw("\xff\xfe\x80", "\xff", "\xff", 30, 20));
    EXPECT_TRUE(SampleArt::draw(std::string(100'000, 'x'), "Tool", "", 30, 20));
}

}  // namespace
}  // namespace quorvel
