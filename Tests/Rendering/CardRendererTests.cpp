#include "Rendering/CardScene.h"
#include "Support/Images/ImageDifference.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace quorvel {
namespace {

TEST(CardRenderer, AnEmptySideIsItsBackgroundToTheBleed) {
    Scene scene;
    scene.renderer.template_.background = red;
    scene.renderer.template_.backBackground = blue;
    const Image front = scene.draw();
    EXPECT_EQ(at(front, 0.05, 0.05), redPixel);
    EXPECT_EQ(at(front, -2.95, -2.95), redPixel);
    EXPECT_EQ(at(front, 42.95, 32.95), redPixel);
    EXPECT_EQ(at(front, -3.05, 15), nothing);
    EXPECT_EQ(at(front, 43.05, 15), nothing);
    EXPECT_EQ(at(scene.draw(nullptr, Side::back), 20, 15), bluePixel);
}

TEST(CardRenderer, AClipAtTheTrimCutsTheBleed) {
    Scene scene;
    scene.renderer.template_.background = red;
    scene.clip = scene.trim();
    const Image image = scene.draw();
    EXPECT_EQ(at(image, 0.05, 0.05), redPixel);
    EXPECT_EQ(at(image, -0.05, 15), nothing);
    EXPECT_EQ(at(image, 20, 30.05), nothing);
}

TEST(CardRenderer, ANegativeBleedShrinksTheBackground) {
    Scene scene;
    scene.renderer.template_.bleedMM = -2;
    const Image image = scene.draw();
    EXPECT_EQ(at(image, 1.95, 15), nothing);
    EXPECT_EQ(at(image, 2.05, 15), white);
    scene.renderer.template_.bleedMM = -25;
    EXPECT_EQ(at(scene.draw(), 20, 15), nothing);
}

TEST(CardRenderer, TheFirstLayerLiesAtTheBottomAndFramesMayLeaveTheCard) {
    Scene scene;
    scene.add(LayerKind::shape, {10, 10, 10, 10}).fill = red;
    scene.add(LayerKind::shape, {15, 10, 30, 10}).fill = blue;
    const Image image = scene.draw();
    EXPECT_EQ(at(image, 10.05, 10.05), redPixel);
    EXPECT_EQ(at(image, 15.05, 10.05), bluePixel);
    EXPECT_EQ(at(image, 44.5, 15), bluePixel);
    EXPECT_EQ(at(image, 9.95, 15), white);
    EXPECT_EQ(at(image, 15, 20.05), white);
}

TEST(CardRenderer, LeavesTheStateAsItWas) {
    Scene scene;
    scene.add(LayerKind::image, {5, 5, 10, 10}, "no such picture").opacity = 0.5;
    scene.clip = Rect{0, 0, 10, 10};
    auto bitmap = BitmapContext::make(100, 100);
    DrawingContext& context = bitmap->context();
    scene.renderer.draw(nullptr, Side::front, context, scene.clip, scene.trim());
    EXPECT_EQ(context.alpha(), 1);
    EXPECT_EQ(context.visibleDeviceRect(), (Rect{0, 0, 100, 100}));
    EXPECT_EQ(context.deviceRect({0, 0, 10, 10}), (Rect{0, 90, 10, 10}));
}

TEST(CardRenderer, OpacityIsClampedAndActsOnEachMark) {
    const auto drawn = [](double opacity) {
        Scene scene;
        Layer& layer = scene.add(LayerKind::shape, {10, 10, 10, 10});
        layer.fill = blue;
        layer.stroke = red;
        layer.strokeWidth = Units::points(2);
        layer.opacity = opacity;
        return scene.draw();
    };
    const Image opaque = drawn(1);
    EXPECT_EQ(at(opaque, 15, 15), bluePixel);
    EXPECT_EQ(at(opaque, 10.5, 15), redPixel);
    EXPECT_EQ(at(opaque, 9.5, 15), redPixel);
    EXPECT_EQ(differenceBetween(drawn(1.5), opaque).maximum, 0);

    Scene empty;
    for (double none : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(differenceBetween(drawn(none), empty.draw()).maximum, 0) << none;

    // Where the stroke lies over the fill, both show: half red over (half blue over white).
    const Image half = drawn(0.5);
    const auto near = [](std::uint32_t pixel, int r, int g, int b) {
        return std::abs(int(pixel >> 16 & 255) - r) <= 2 && std::abs(int(pixel >> 8 & 255) - g) <= 2 &&
               std::abs(int(pixel & 255) - b) <= 2;
    };
    EXPECT_TRUE(near(at(half, 15, 15), 128, 128, 255));
    EXPECT_TRUE(near(at(half, 9.5, 15), 255, 128, 128));
    EXPECT_TRUE(near(at(half, 10.5, 15), 192, 64, 128));
}

TEST(CardRenderer, StrokeWidthIsInPointsAndCentred) {
    Scene scene;
    Layer& layer = scene.add(LayerKind::shape, {10, 10, 10, 10});
    layer.stroke = red;
    layer.strokeWidth = 72 / 25.4;  // a millimetre
    const Image image = scene.draw();
    EXPECT_EQ(at(image, 9.55, 15), redPixel);
    EXPECT_EQ(at(image, 10.45, 15), redPixel);
    EXPECT_EQ(at(image, 9.45, 15), white);
    EXPECT_EQ(at(image, 10.55, 15), white);
    for (double width : {0.0, -1.0}) {
        scene.renderer.template_.front[0].strokeWidth = width;
        EXPECT_EQ(at(scene.draw(), 10, 15), white);
    }
}

TEST(CardRenderer, TextOnAColouredBoxKeepsAMillimetreFromItsSides) {
    /// Where the ink of a text begins in a frame of this width, in millimetres from its left edge.
    const auto inkBegins = [](std::optional<RGBA> fill, std::optional<RGBA> stroke, double width) {
        Scene scene;
        Layer& layer = scene.add(LayerKind::text, {10, 10, width, 10}, "H");
        layer.style.size = 12;
        layer.style.color = blue;
        layer.fill = fill;
        layer.stroke = stroke;
        layer.strokeWidth = 0.1;
        const Image image = scene.draw();
        for (double x = 0.05; x < width; x += 0.1)
            for (double y = 0.05; y < 10; y += 0.1)
                if (at(image, 10 + x, 10 + y) == bluePixel) return x;
        return -1.0;
    };
    for (double width : {20.0, 4.0}) {
        const double bare = inkBegins(std::nullopt, std::nullopt, width);
        ASSERT_GE(bare, 0) << width;
        EXPECT_NEAR(inkBegins(RGBA::white, std::nullopt, width), bare + std::min(1.0, width / 10), 0.11) << width;
        EXPECT_NEAR(inkBegins(std::nullopt, red, width), bare, 0.11) << "a mere outline gives no inset";
    }
}

TEST(CardRenderer, TextThatResolvesToNothingStillHasItsBox) {
    const auto cards = cardsFrom({{"Title", "Text"}, {"Barrel", ""}});
    Scene scene;
    scene.add(LayerKind::text, {10, 10, 10, 10}, "{{text}}").fill = red;
    EXPECT_EQ(at(scene.draw(&cards[0]), 15, 15), redPixel);
}

TEST(CardRenderer, RulesActOnTheCardsThatMatch) {
    const auto cards = cardsFrom({{"Title", "Type"}, {"Barrel", "Trap"}, {"Cart", "Tool"}});
    Scene scene;
    Layer& layer = scene.add(LayerKind::shape, {10, 10, 10, 10});
    layer.fill = red;
    layer.rules = {StyleRule("type", StyleRule::Match::equals, "trap", std::nullopt, std::nullopt, std::nullopt, true),
                   StyleRule("type", StyleRule::Match::equals, "tool", blue, std::nullopt, std::nullopt, false)};
    EXPECT_EQ(at(scene.draw(&cards[0]), 15, 15), white);
    EXPECT_EQ(at(scene.draw(&cards[1]), 15, 15), bluePixel);
    EXPECT_EQ(at(scene.draw(nullptr), 15, 15), redPixel) << "rules never act without a card";
    scene.renderer.template_.front[0].hidden = true;
    EXPECT_EQ(at(scene.draw(&cards[1]), 15, 15), white);
}

TEST(CardRenderer, PicturesAreCutToTheOutlineAndLieBetweenFillAndStroke) {
    Scene scene;
    scene.renderer.assets->register_(plainImage(20, 20, greenPixel), "green");
    Layer& layer = scene.add(LayerKind::image, {10, 10, 20, 10}, " green\n");
    layer.shape = ShapeKind::ellipse;
    layer.cornerRadiusMM = 3;
    layer.fill = blue;
    layer.stroke = red;
    layer.strokeWidth = 72 / 25.4;
    const Image filled = scene.draw();
    EXPECT_EQ(at(filled, 20, 15), greenPixel);
    EXPECT_EQ(at(filled, 11, 11), white) << "outside the ellipse";
    EXPECT_EQ(at(filled, 10.2, 15), redPixel) << "the stroke lies above the picture";

    scene.renderer.template_.front[0].imageFit = ImageFit::fit;
    const Image fitted = scene.draw();
    EXPECT_EQ(at(fitted, 20, 15), greenPixel);
    EXPECT_EQ(at(fitted, 12.5, 15), bluePixel) << "the fill shows where the picture leaves room";
}

TEST(CardRenderer, FilledPicturesAreCroppedEquallyOnBothSides) {
    auto pixels = allocatePixels(40, 10);
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 40; ++x) pixels[std::size_t(y * 40 + x)] = x < 20 ? redPixel : bluePixel;
    Scene scene;
    scene.renderer.assets->register_(Image(40, 10, pixels, Image::Alpha::opaque), "halves");
    scene.add(LayerKind::image, {10, 10, 10, 10}, "halves");
    const Image image = scene.draw();
    EXPECT_EQ(at(image, 10.05, 10.05), redPixel);
    EXPECT_EQ(at(image, 13.5, 15), redPixel);
    EXPECT_EQ(at(image, 16.5, 15), bluePixel);
    EXPECT_GT(at(image, 14.8, 15) & 0xFF0000, at(image, 15.2, 15) & 0xFF0000) << "the middle stays in the middle";
    EXPECT_EQ(at(image, 19.95, 19.95), bluePixel);
    EXPECT_EQ(at(image, 9.95, 15), white);
    EXPECT_EQ(at(image, 20.05, 15), white);
    EXPECT_EQ(at(image, 15, 20.05), white);
}

// A picture over a box of the same frame must cover it at the edges, too, wherever they fall within a pixel.
TEST(CardRenderer, PicturesHaveNoSeamAgainstTheirOutline) {
    for (double offset : {0.0, 0.03, 0.05, 0.07}) {
        for (ShapeKind shape : {ShapeKind::rectangle, ShapeKind::ellipse}) {
            Scene picture;
            picture.renderer.assets->register_(plainImage(64, 64, 0xFF000000), "black");
            picture.add(LayerKind::image, {10 + offset, 10 + offset, 9.94, 9.94}, "black").shape = shape;
            Scene box;
            Layer& layer = box.add(LayerKind::shape, {10 + offset, 10 + offset, 9.94, 9.94});
            layer.fill = RGBA::black;
            layer.shape = shape;
            EXPECT_LE(differenceBetween(picture.draw(), box.draw()).maximum, 3) << offset;
        }
    }
}

TEST(CardRenderer, MissingPicturesAreMarkedOnlyOnRequest) {
    const auto cards = cardsFrom({{"Title", "Art"}, {"Barrel", "art/barrel.png"}, {"Cart", "  "}});
    Scene scene;
    Layer& layer = scene.add(LayerKind::image, {5, 5, 30, 20}, "{{art}}");
    layer.stroke = red;
    layer.strokeWidth = 2;

    const Image exported = scene.draw(&cards[0]);
    EXPECT_EQ(at(exported, 20, 10), white);
    EXPECT_EQ(at(exported, 5, 15), redPixel);

    scene.renderer.missingPictures = CardRenderer::MissingPictures::mark;
    const auto marked = [&](const Image& image) { return at(image, 20.5, 6.0) != white; };
    EXPECT_TRUE(marked(scene.draw(&cards[0])));
    EXPECT_FALSE(marked(scene.draw(&cards[1]))) << "a card that names no picture misses none";
    EXPECT_TRUE(marked(scene.draw(nullptr)));
    EXPECT_EQ(at(scene.draw(&cards[0]), 5, 15), redPixel) << "the stroke lies above the mark";
}

TEST(CardRenderer, WithoutACardNoPictureIsLookedFor) {
    Scene scene;
    scene.renderer.assets->register_(plainImage(8, 8, greenPixel), "[art]");
    scene.renderer.assets->register_(plainImage(8, 8, greenPixel), "logo");
    scene.add(LayerKind::image, {5, 5, 10, 10}, "{{art}}");
    scene.add(LayerKind::image, {20, 5, 10, 10}, "logo");
    const Image image = scene.draw();
    EXPECT_EQ(at(image, 10, 10), white);
    EXPECT_EQ(at(image, 25, 10), greenPixel);
}

TEST(CardRenderer, IconsAreAtLeastAMillimetre) {
    Scene scene;
    scene.renderer.assets->register_(plainImage(8, 8, greenPixel), "icon:dot");
    Layer& layer = scene.add(LayerKind::icons, {10, 10, 20, 10}, "2 dot");
    layer.fill = RGBA::white;
    layer.iconSizeMM = 0.5;
    layer.iconSpacingMM = -4;
    const Image image = scene.draw();
    EXPECT_EQ(at(image, 10.05, 10.05), greenPixel);
    EXPECT_EQ(at(image, 11.95, 10.95), greenPixel) << "a negative spacing counts as none";
    EXPECT_EQ(at(image, 12.05, 10.5), white);
    EXPECT_EQ(at(image, 10.5, 11.05), white);
}

TEST(CardRenderer, NonsenseInATemplateNeverHarms) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double values[] = {0,     -1,     1e-300,   1e9,       -1e9,
                             1e300, -1e300, infinity, -infinity, std::numeric_limits<double>::quiet_NaN()};
    for (double value : values) {
        for (LayerKind kind : {LayerKind::shape, LayerKind::image, LayerKind::icons, LayerKind::text}) {
            for (int field = 0; field < 8; ++field) {
                Scene scene;
                scene.renderer.missingPictures = CardRenderer::MissingPictures::mark;
                scene.renderer.assets->register_(plainImage(8, 8, greenPixel), "coin");
                for (const char* content : {"coin", "gone"}) {
                    Layer& layer = scene.add(kind, {5, 5, 10, 10}, content);
                    layer.fill = red;
                    layer.stroke = blue;
                    layer.shape = field % 2 ? ShapeKind::ellipse : ShapeKind::rectangle;
                    double* fields[] = {&layer.frame.x,       &layer.frame.y,     &layer.frame.width,
                                        &layer.frame.height,  &layer.strokeWidth, &layer.cornerRadiusMM,
                                        &layer.iconSpacingMM, &layer.opacity};
                    *fields[field] = value;
                }
                scene.draw();
            }
        }
        Scene bleeding;
        bleeding.renderer.template_.bleedMM = value;
        bleeding.draw();
        Scene icons;
        icons.add(LayerKind::icons, {5, 5, 10, 10}, "3 coin").iconSizeMM = value;
        icons.draw();
        auto bitmap = BitmapContext::make(10, 10);
        Scene().renderer.draw(nullptr, Side::front, bitmap->context(), Rect{value, 0, 10, 10}, {0, value, 10, 10});
    }
}

TEST(CardRenderer, AFrameAsLargeAsATownStillCoversTheCard) {
    Scene scene;
    scene.add(LayerKind::shape, {-1e6, -1e6, 2e6, 2e6}).fill = red;
    EXPECT_EQ(at(scene.draw(), 20, 15), redPixel);
}

}  // namespace
}  // namespace quorvel
