#include "Rendering/CardImage.h"
#include "Rendering/TestCards.h"
#include "Support/Images/ImageDifference.h"
#include "Support/Images/ReadPNG.h"

#include <gtest/gtest.h>
#include <limits>

namespace quorvel {
namespace {

using CardImage::Bleed;
using CardImage::Corners;
using CardImage::PixelSize;

CardRenderer rendererOf(CardSize size) {
    CardRenderer renderer;
    renderer.template_ = CardTemplate("Test", size, {}, {});
    renderer.template_.background = RGBA::bytes(255, 0, 0);
    return renderer;
}

TEST(CardImage, PixelSizes) {
    CardTemplate design("Test", CardSize::poker, {}, {});
    EXPECT_EQ(CardImage::pixelSize(design, Bleed::none, 300), (PixelSize{750, 1050}));
    EXPECT_EQ(CardImage::pixelSize(design, Bleed::included, 300), (PixelSize{821, 1121}));
    EXPECT_EQ(CardImage::pixelSize(design, Bleed::none, 600), (PixelSize{1500, 2100}));
    design.bleedMM = -3;
    EXPECT_EQ(CardImage::pixelSize(design, Bleed::included, 300), (PixelSize{750, 1050}));
    design.size = CardSize::tarot;
    EXPECT_EQ(CardImage::pixelSize(design, Bleed::none, 300), (PixelSize{825, 1425}));
    design.size = CardSize::mini;
    EXPECT_EQ(CardImage::pixelSize(design, Bleed::none, 300), (PixelSize{525, 750}));
}

TEST(CardImage, SizesThatNoBitmapHasAreNone) {
    for (double side :
         {1e9, 1e300, -1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        const auto renderer = rendererOf({CardSize::Preset::custom, side, 88.9});
        EXPECT_EQ(CardImage::pixelSize(renderer.template_, Bleed::included, 300).width, 0) << side;
        EXPECT_FALSE(CardImage::render(nullptr, Side::front, renderer, Bleed::included, Corners::square, 300)) << side;
    }
    for (double side : {0.0, -5.0, 0.01, 2775.0, 1e5}) {
        const auto renderer = rendererOf({CardSize::Preset::custom, side, 88.9});
        EXPECT_FALSE(CardImage::render(nullptr, Side::front, renderer, Bleed::none, Corners::square, 300)) << side;
    }
    const auto huge = rendererOf({CardSize::Preset::custom, 2700, 2700});
    EXPECT_FALSE(CardImage::render(nullptr, Side::front, huge, Bleed::none, Corners::square, 300));
    const auto poker = rendererOf(CardSize::poker);
    for (double dpi : {0.0, -300.0, 1e12, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_FALSE(CardImage::render(nullptr, Side::front, poker, Bleed::none, Corners::square, dpi)) << dpi;
}

TEST(CardImage, TheCardFillsItsBitmapExactly) {
    for (CardSize size : {CardSize::poker, CardSize::bridge, CardSize::tarot, CardSize::mini, CardSize::square}) {
        for (Bleed bleed : {Bleed::none, Bleed::included}) {
            for (double dpi : {72.0, 97.0, 300.0}) {
                const auto image =
                    CardImage::render(nullptr, Side::front, rendererOf(size), bleed, Corners::square, dpi);
                ASSERT_TRUE(image);
                EXPECT_EQ(image->alpha(), Image::Alpha::opaque);
                for (int y : {0, image->height() - 1})
                    for (int x : {0, image->width() - 1}) EXPECT_EQ(pixelAt(*image, x, y), 0xFFFF0000u);
            }
        }
    }
}

TEST(CardImage, CornersAreRoundedOnlyWithoutBleed) {
    auto renderer = rendererOf(CardSize::poker);
    const auto corner = [&](Bleed bleed, Corners corners) {
        return pixelAt(*CardImage::render(nullptr, Side::front, renderer, bleed, corners, 300), 0, 0);
    };
    EXPECT_EQ(corner(Bleed::none, Corners::rounded), 0u);
    EXPECT_EQ(corner(Bleed::none, Corners::square), 0xFFFF0000u);
    EXPECT_EQ(corner(Bleed::included, Corners::rounded), 0xFFFF0000u);
    const auto rounded = CardImage::render(nullptr, Side::front, renderer, Bleed::none, Corners::rounded, 300);
    EXPECT_EQ(pixelAt(*rounded, 749, 1049), 0u);
    EXPECT_EQ(pixelAt(*rounded, 375, 0), 0xFFFF0000u);
    // 3 mm are 35.4 pixels; on the diagonal the arc passes 0.293 of them from the corner.
    EXPECT_EQ(pixelAt(*rounded, 8, 8), 0u);
    EXPECT_EQ(pixelAt(*rounded, 12, 12), 0xFFFF0000u);
    renderer.template_.cornerRadiusMM = 0;
    EXPECT_EQ(corner(Bleed::none, Corners::rounded), 0xFFFF0000u);
    renderer.template_.cornerRadiusMM = 1e6;
    EXPECT_TRUE(CardImage::render(nullptr, Side::front, renderer, Bleed::none, Corners::rounded, 30));
}

TEST(CardImage, ABackgroundWithAlphaStaysTransparent) {
    auto renderer = rendererOf(CardSize::poker);
    renderer.template_.background = RGBA(0, 0, 1, 0.5);
    const auto image = CardImage::render(nullptr, Side::front, renderer, Bleed::none, Corners::square, 100);
    EXPECT_EQ(pixelAt(*image, 50, 50) >> 24, 128u);
    const auto png = CardImage::pngData(*image, 100);
    ASSERT_TRUE(png);
    EXPECT_EQ(pixelAt(decodePNG(*png), 50, 50) >> 24, 128u);
}

TEST(CardImage, ThePNGHoldsTheSamePixels) {
    auto renderer = rendererOf(CardSize::mini);
    renderer.template_.front.emplace_back("Text", LayerKind::text, Frame{2, 2, 40, 60}, "Rain **Barrel** {icon:coin}");
    const auto image = CardImage::render(nullptr, Side::front, renderer, Bleed::included, Corners::square, 150);
    EXPECT_EQ(differenceBetween(*image, decodePNG(*CardImage::pngData(*image, 150))).maximum, 0);
}

TEST(CardImage, FileNames) {
    EXPECT_EQ(CardImage::fileName(7, "Rain Barrel"), "007 Rain Barrel");
    EXPECT_EQ(CardImage::fileName(1234, ""), "1234");
    EXPECT_EQ(CardImage::fileName(1, "a/b:c"), "001 a b c");
    EXPECT_EQ(CardImage::fileName(2, "**Bold** {icon:coin}"), "002 Bold [coin]");
    EXPECT_EQ(CardImage::fileName(3, "///"), "003");
    EXPECT_EQ(CardImage::fileName(4, "a//b"), "004 a  b") << "runs aren't collapsed";
    EXPECT_EQ(CardImage::fileName(5, "\\\\ ?*\"<>|a\nb\rc\td\t "), "005 a b c d")
        << "a backslash is gone with the rest";
    EXPECT_EQ(CardImage::fileName(6, std::string_view("a\0b\x1F", 4)), "006 a b") << "no file name holds these";
    EXPECT_EQ(CardImage::fileName(7, "../../etc/passwd"), "007 .. .. etc passwd");
}

TEST(CardImage, SixtyCharactersOfATitleAreKept) {
    EXPECT_EQ(CardImage::fileName(1, std::string(80, 'x')), "001 " + std::string(60, 'x'));
    std::string accented, expected = "001 ";
    for (int i = 0; i < 80; ++i) accented += "e\u0301";
    for (int i = 0; i < 60; ++i) expected += "e\u0301";
    EXPECT_EQ(CardImage::fileName(1, accented), expected) << "counted as a person counts";
    EXPECT_EQ(CardImage::fileName(1, std::string(59, 'x') + " yz"), "001 " + std::string(59, 'x') + " ")
        << "a blank left by the cut stays";
}

}  // namespace
}  // namespace quorvel
