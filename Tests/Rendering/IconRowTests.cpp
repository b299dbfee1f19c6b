#include "Drawing/BitmapContext.h"
#include "Foundation/Units.h"
#include "Pictures/IconSet.h"
#include "Rendering/IconRow.h"
#include "TestCards.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TextStyle style(TextAlign align = TextAlign::left, VerticalAlign vertical = VerticalAlign::top) {
    return TextStyle("", 10, RGBA::bytes(0, 0, 255), align, vertical);
}

TEST(IconRow, NoneWithoutIconsOrSize) {
    EXPECT_THAT(iconRects(0, style(), 5, 1, {0, 0, 20, 20}), IsEmpty());
    EXPECT_THAT(iconRects(3, style(), 0, 1, {0, 0, 20, 20}), IsEmpty());
    EXPECT_THAT(iconRects(3, style(), -1, 1, {0, 0, 20, 20}), IsEmpty());
    EXPECT_THAT(iconRects(3, style(), std::nan(""), 1, {0, 0, 20, 20}), IsEmpty());
}

TEST(IconRow, SevenOfFiveWithGapsOfOneInTwentyMakeThreeRows) {
    const auto rects = iconRects(7, style(), 5, 1, {100, 200, 20, 30});
    EXPECT_THAT(rects,
                ElementsAre(Rect{100, 225, 5, 5}, Rect{106, 225, 5, 5}, Rect{112, 225, 5, 5}, Rect{100, 219, 5, 5},
                            Rect{106, 219, 5, 5}, Rect{112, 219, 5, 5}, Rect{100, 213, 5, 5}));
}

TEST(IconRow, TheGapBehindTheLastIsNotCounted) {
    EXPECT_EQ(iconRects(4, style(), 5, 1, {0, 0, 23, 5})[3].y, 0);
    EXPECT_EQ(iconRects(4, style(), 5, 1, {0, 0, 22.99, 5})[3].y, -6);
}

TEST(IconRow, EveryRowIsAlignedByItself) {
    const Rect rect{0, 0, 20, 20};
    const auto centred = iconRects(5, style(TextAlign::center), 5, 1, rect);
    EXPECT_EQ(centred[0].x, 1.5);
    EXPECT_EQ(centred[3].x, 4.5);
    const auto right = iconRects(5, style(TextAlign::right), 5, 1, rect);
    EXPECT_EQ(right[0].x, 3);
    EXPECT_EQ(right[3].x, 9);
}

TEST(IconRow, TheBlockIsPlacedVertically) {
    const Rect rect{0, 100, 20, 20};
    EXPECT_EQ(iconRects(5, style(TextAlign::left, VerticalAlign::top), 5, 1, rect)[0].y, 115);
    EXPECT_EQ(iconRects(5, style(TextAlign::left, VerticalAlign::middle), 5, 1, rect)[0].y, 110.5);
    EXPECT_EQ(iconRects(5, style(TextAlign::left, VerticalAlign::bottom), 5, 1, rect)[0].y, 106);
}

TEST(IconRow, AnIconWiderThanTheFrameGetsARowOfItsOwn) {
    EXPECT_THAT(iconRects(2, style(), 5, 1, {0, 0, 3, 10}), ElementsAre(Rect{0, 5, 5, 5}, Rect{0, -1, 5, 5}));
    EXPECT_THAT(iconRects(2, style(), 5, 1, {0, 0, 0, 0}), ElementsAre(Rect{0, -5, 5, 5}, Rect{0, -11, 5, 5}));
}

TEST(IconRow, RowsOverflowTheFrame) {
    const auto rects = iconRects(100, style(), 5, 1, {0, 0, 5, 5});
    ASSERT_EQ(rects.size(), 100U);
    EXPECT_EQ(rects.back().y, -99 * 6);
}

TEST(IconRow, WideFramesHoldAllInOneRow) {
    const auto rects = iconRects(3, style(), 5, 1, {0, 0, 1e300, 5});
    EXPECT_EQ(rects[2], (Rect{12, 0, 5, 5}));
}

/// What one icon leaves on 20 × 20 pixels.
Image icon(std::string_view name, const TextStyle& style, Assets& assets, const Rect& rect = {0, 0, 20, 20}) {
    auto bitmap = BitmapContext::make(20, 20);
    drawIcon(name, style, assets, bitmap->context(), rect);
    return std::move(*bitmap).finish();
}

std::uint32_t word(const RGBA& color) {
    return 0xFF000000U | std::uint32_t(std::lround(color.r * 255)) << 16 |
           std::uint32_t(std::lround(color.g * 255)) << 8 | std::uint32_t(std::lround(color.b * 255));
}

bool has(const Image& image, std::uint32_t pixel) {
    for (int y = 0; y < image.height(); ++y) {
        if (std::ranges::find(image.row(y), pixel) != image.row(y).end()) return true;
    }
    return false;
}

TEST(DrawIcon, BuiltInIconsHaveTheirOwnColourOrTheStyles) {
    Assets assets;
    TextStyle own = style(), tinted = style();
    tinted.colorfulIcons = false;
    EXPECT_TRUE(has(icon("coin", own, assets), word(IconSet::color("coin"))));
    EXPECT_FALSE(has(icon("coin", own, assets), word(own.color)));
    EXPECT_TRUE(has(icon("coin", tinted, assets), word(tinted.color)));
    EXPECT_FALSE(has(icon("coin", tinted, assets), word(IconSet::color("coin"))));
}

TEST(DrawIcon, AnUnknownNameIsAGreyTileWhateverTheStyle) {
    Assets assets;
    TextStyle tinted = style();
    tinted.colorfulIcons = false;
    for (const auto& each : {style(), tinted}) {
        const Image tile = icon("nosuch", each, assets);
        EXPECT_FALSE(has(tile, word(each.color)));
        const std::uint32_t edge = pixelAt(tile, 10, 2);
        EXPECT_GT(edge >> 24, 0U);
        EXPECT_EQ(edge & 0xFF, (edge >> 8) & 0xFF);
        EXPECT_EQ(edge & 0xFF, (edge >> 16) & 0xFF);
    }
}

TEST(DrawIcon, APictureWinsAndKeepsItsColoursAndShape) {
    Assets assets;
    assets.register_(plainImage(40, 20, 0xFFFF8000U), "icon:coin");
    TextStyle tinted = style();
    tinted.colorfulIcons = false;
    for (const auto& each : {style(), tinted}) {
        const Image image = icon("coin", each, assets);
        EXPECT_EQ(pixelAt(image, 0, 10), 0xFFFF8000U);
        EXPECT_EQ(pixelAt(image, 19, 10), 0xFFFF8000U);
        EXPECT_EQ(pixelAt(image, 10, 4), 0U);
        EXPECT_EQ(pixelAt(image, 10, 15), 0U);
        EXPECT_EQ(pixelAt(image, 10, 5), 0xFFFF8000U);
        EXPECT_EQ(pixelAt(image, 10, 14), 0xFFFF8000U);
    }
}

}  // namespace
}  // namespace quorvel
