#include "Pictures/ColorProfile.h"
#include "TestProfiles.h"

#include <gtest/gtest.h>
#include <random>
#include <vips/vips.h>

namespace quorvel {
namespace {

using namespace TestProfiles;
using ColorProfile::Space;

std::string builtIn(const char* name) {
    vips_init("tests");
    VipsBlob* blob = nullptr;
    if (vips_profile_load(name, &blob, nullptr) != 0) return {};
    std::size_t size = 0;
    const void* data = vips_blob_get(blob, &size);
    std::string bytes(static_cast<const char*>(data), size);
    vips_area_unref(VIPS_AREA(blob));
    return bytes;
}

TEST(ColorProfile, knowsTheSpaceThatItDescribes) {
    EXPECT_EQ(ColorProfile::spaceOf(rgb(sRGBRed, sRGBGreen, sRGBBlue, sRGBTable(1024))), Space::rgb);
    EXPECT_EQ(ColorProfile::spaceOf(grey(power(2.2))), Space::grey);
    EXPECT_EQ(ColorProfile::spaceOf(builtIn("cmyk")), Space::cmyk);
    EXPECT_EQ(ColorProfile::spaceOf(""), std::nullopt);
    EXPECT_EQ(ColorProfile::spaceOf(std::string(4000, 'x')), std::nullopt);
    EXPECT_EQ(ColorProfile::spaceOf(grey(power(2.2)).substr(0, 131)), std::nullopt);
}

TEST(ColorProfile, recognisesSRGBInItsManyForms) {
    for (const std::string& curve : {sRGBTable(1024), sRGBTable(4096), sRGBTable(256), sRGBFormula()}) {
        EXPECT_TRUE(ColorProfile::isSRGB(rgb(sRGBRed, sRGBGreen, sRGBBlue, curve)));
        EXPECT_TRUE(ColorProfile::isSRGB(grey(curve)));
    }
    ASSERT_FALSE(builtIn("srgb").empty());
    EXPECT_TRUE(ColorProfile::isSRGB(builtIn("srgb")));
}

TEST(ColorProfile, tellsOthersFromSRGB) {
    const std::string curve = sRGBTable(1024);
    EXPECT_FALSE(ColorProfile::isSRGB(rgb(sRGBBlue, sRGBGreen, sRGBRed, curve)));
    EXPECT_FALSE(ColorProfile::isSRGB(rgb(adobeRed, adobeGreen, adobeBlue, power(2.19921875))));
    EXPECT_FALSE(ColorProfile::isSRGB(rgb(sRGBRed, sRGBGreen, sRGBBlue, power(2.2))));
    EXPECT_FALSE(ColorProfile::isSRGB(rgb(sRGBRed, sRGBGreen, sRGBBlue, power(1))));
    EXPECT_FALSE(ColorProfile::isSRGB(grey(power(1.8))));
    EXPECT_FALSE(ColorProfile::isSRGB(builtIn("p3")));
    EXPECT_FALSE(ColorProfile::isSRGB(builtIn("cmyk")));
}

TEST(ColorProfile, needsConversionOnlyWhereItDescribesThePicture) {
    const std::string swapped = rgb(sRGBBlue, sRGBGreen, sRGBRed, sRGBTable(64));
    EXPECT_TRUE(ColorProfile::needsConversion(swapped, 3));
    EXPECT_FALSE(ColorProfile::needsConversion(swapped, 1));
    EXPECT_FALSE(ColorProfile::needsConversion(swapped, 4));
    EXPECT_FALSE(ColorProfile::needsConversion(rgb(sRGBRed, sRGBGreen, sRGBBlue, sRGBTable(1024)), 3));
    EXPECT_TRUE(ColorProfile::needsConversion(grey(power(1.8)), 1));
    EXPECT_TRUE(ColorProfile::needsConversion(builtIn("cmyk"), 4));
    EXPECT_FALSE(ColorProfile::needsConversion("", 3));
    EXPECT_FALSE(ColorProfile::needsConversion("no profile", 3));
}

TEST(ColorProfile, takesNoHarmFromBrokenProfiles) {
    const std::string whole = rgb(sRGBRed, sRGBGreen, sRGBBlue, sRGBTable(1024));
    for (std::size_t length = 0; length < whole.size() - 4; ++length)
        EXPECT_FALSE(ColorProfile::isSRGB(std::string(whole, 0, length))) << length;
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        std::string broken = whole.substr(0, 600);
        for (int i = 0; i < 8; ++i) broken[128 + random() % (broken.size() - 128)] = char(random());
        ColorProfile::isSRGB(broken);
    }
}

}  // namespace
}  // namespace quorvel
