#include "Rendering/CardScene.h"
#include "Support/Images/GoldenImage.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

class CardRendererGolden : public testing::Test {
protected:
    Scene scene;
};

TEST_F(CardRendererGolden, Shapes) {
    Layer& box = scene.add(LayerKind::shape, {2, 2, 16, 12});
    box.fill = RGBA::bytes(0xC4, 0x7A, 0x2C);
    box.stroke = RGBA::black;
    box.cornerRadiusMM = 3;
    Layer& ellipse = scene.add(LayerKind::shape, {12, 8, 24, 18});
    ellipse.shape = ShapeKind::ellipse;
    ellipse.fill = RGBA::bytes(0x2F, 0x5D, 0x8A);
    ellipse.stroke = red;
    ellipse.strokeWidth = 6;
    ellipse.opacity = 0.5;
    EXPECT_TRUE(matchesGolden(scene.draw(), "Rendering/shapes"));
}

TEST_F(CardRendererGolden, Texts) {
    scene.renderer.assets->register_(plainImage(8, 8, greenPixel), "icon:green");
    Layer& title = scene.add(LayerKind::text, {2, 2, 36, 7}, "Rain **Barrel** *ripe*");
    title.style = {"Georgia", 14, RGBA::bytes(0x33, 0x38, 0x4D), TextAlign::center, VerticalAlign::middle};
    title.fill = RGBA::bytes(0xF3, 0xE6, 0xC8);
    Layer& rules = scene.add(LayerKind::text, {2, 11, 36, 17},
                             "Gain 2 {icon:coin} for each {icon:green} and one {icon:leaf}.\nThis text is so long that "
                             "it has to shrink until all its lines fit into the frame below the title.");
    rules.stroke = blue;
    rules.style.size = 14;
    EXPECT_TRUE(matchesGolden(scene.draw(), "Rendering/texts"));
}

TEST_F(CardRendererGolden, Pictures) {
    auto pixels = allocatePixels(64, 48);
    for (int y = 0; y < 48; ++y)
        for (int x = 0; x < 64; ++x)
            pixels[std::size_t(y * 64 + x)] = 0xFF000000u | std::uint32_t(x * 4) << 16 | std::uint32_t(y * 5) << 8 |
                                              ((x / 8 + y / 8) % 2 ? 0xFFu : 0x40u);
    scene.renderer.assets->register_(Image(64, 48, pixels, Image::Alpha::opaque), "checks");
    scene.add(LayerKind::image, {1, 1, 18, 28}, "checks").cornerRadiusMM = 4;
    Layer& fitted = scene.add(LayerKind::image, {21, 1, 18, 28}, "checks");
    fitted.imageFit = ImageFit::fit;
    fitted.fill = RGBA::bytes(0xF3, 0xE6, 0xC8);
    fitted.stroke = RGBA::black;
    fitted.opacity = 0.6;
    EXPECT_TRUE(matchesGolden(scene.draw(), "Rendering/pictures"));
}

TEST_F(CardRendererGolden, Icons) {
    Layer& colourful = scene.add(LayerKind::icons, {1, 1, 38, 12}, "3 coin, leaf, sun, nosuch, gem");
    colourful.fill = RGBA::bytes(0xF3, 0xE6, 0xC8);
    colourful.style.align = TextAlign::center;
    colourful.style.verticalAlign = VerticalAlign::middle;
    Layer& tinted = scene.add(LayerKind::icons, {1, 15, 38, 14}, "sword, shield, heart");
    tinted.iconSizeMM = 9;
    tinted.style.color = blue;
    tinted.style.colorfulIcons = false;
    tinted.style.align = TextAlign::right;
    EXPECT_TRUE(matchesGolden(scene.draw(), "Rendering/icons"));
}

TEST_F(CardRendererGolden, MissingMark) {
    const auto cards = cardsFrom({{"Title", "Art"}, {"Barrel", "art/barrel.png"}});
    scene.renderer.missingPictures = CardRenderer::MissingPictures::mark;
    Layer& layer = scene.add(LayerKind::image, {4, 4, 32, 22}, "{{art}}");
    layer.cornerRadiusMM = 4;
    layer.stroke = RGBA::black;
    EXPECT_TRUE(matchesGolden(scene.draw(&cards[0]), "Rendering/missing-mark"));
}

}  // namespace
}  // namespace quorvel
