#include "Bitmap.h"
#include "Drawing/BitmapContext.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

TEST(BitmapContext, StartsTransparent) {
    const Image image = drawn(5, 4, [](DrawingContext&) {});
    EXPECT_EQ(image.width(), 5);
    EXPECT_EQ(image.height(), 4);
    EXPECT_EQ(image.alpha(), Image::Alpha::varying);
    EXPECT_TRUE(blank(image));
}

TEST(BitmapContext, RefusesSizesWithoutPixelsAndBeyondTheLimit) {
    for (const auto& [width, height] : {std::pair{0, 1}, {1, 0}, {-1, 5}, {32768, 1}, {1, 32768}}) {
        EXPECT_FALSE(BitmapContext::make(width, height)) << width << " × " << height;
    }
    EXPECT_TRUE(BitmapContext::make(32767, 1));
    EXPECT_TRUE(BitmapContext::make(1, 32767));
}

TEST(BitmapContext, FindsWhetherEveryPixelIsOpaque) {
    const Rect all{0, 0, 37, 21};
    EXPECT_EQ(drawn(37, 21, [&](auto& c) { c.fill(all, RGBA::white); }).alpha(), Image::Alpha::opaque);
    EXPECT_EQ(drawn(37, 21, [&](auto& c) { c.fill(all, RGBA::bytes(255, 255, 255, 254)); }).alpha(),
              Image::Alpha::varying);
    for (const auto& hole : {Rect{0, 0, 37, 20}, Rect{0, 1, 37, 20}, Rect{1, 0, 36, 21}, Rect{0, 0, 36.5, 21}}) {
        EXPECT_EQ(drawn(37, 21, [&](auto& c) { c.fill(hole, RGBA::white); }).alpha(), Image::Alpha::varying);
    }
}

TEST(BitmapContext, ACardScaledToItsRoundedPixelsFillsThemAll) {
    const double width = 63.5 / 25.4 * 72, height = 88.9 / 25.4 * 72;
    for (const auto& [pixelsWide, pixelsHigh] : {std::pair{750, 1050}, {821, 1121}, {149, 210}, {1500, 2100}}) {
        const Image image = drawn(pixelsWide, pixelsHigh, [&](DrawingContext& context) {
            context.scale(pixelsWide / width, pixelsHigh / height);
            context.fill(Rect{0, 0, width, height}, RGBA::bytes(10, 20, 30));
        });
        EXPECT_EQ(image.alpha(), Image::Alpha::opaque) << pixelsWide;
        EXPECT_EQ(image.row(0).front(), 0xFF0A141EU);
        EXPECT_EQ(image.row(pixelsHigh - 1).back(), 0xFF0A141EU);
    }
}

TEST(BitmapContext, HandsItsPixelsOnWithoutACopy) {
    auto bitmap = BitmapContext::make(4, 4);
    cairo_surface_t* surface = cairo_get_target(bitmap->context().cairo());
    const auto* before = reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface));
    EXPECT_EQ(std::move(*bitmap).finish().pixels(), before);
}

}  // namespace
}  // namespace quorvel
