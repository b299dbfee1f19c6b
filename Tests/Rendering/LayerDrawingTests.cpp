#include "Foundation/Units.h"
#include "Rendering/LayerDrawing.h"
#include "Rendering/TestCards.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace quorvel {
namespace {

using namespace LayerDrawing;

void expectNear(const Rect& rect, const Rect& expected) {
    EXPECT_NEAR(rect.x, expected.x, 1e-9);
    EXPECT_NEAR(rect.y, expected.y, 1e-9);
    EXPECT_NEAR(rect.width, expected.width, 1e-9);
    EXPECT_NEAR(rect.height, expected.height, 1e-9);
}

Layer shapeLayer(ShapeKind shape, double cornerRadiusMM) {
    Layer layer("Shape", LayerKind::shape, {}, "");
    layer.shape = shape;
    layer.cornerRadiusMM = cornerRadiusMM;
    return layer;
}

TEST(LayerDrawing, FramesCountDownFromTheTopOfTheTrim) {
    const Rect trim{10, 20, 180, 252};
    expectNear(layerRect({0, 0, 25.4, 12.7}, trim), {10, 272 - 36, 72, 36});
    expectNear(layerRect({25.4, 25.4, 25.4, 25.4}, trim), {82, 272 - 144, 72, 72});
    expectNear(layerRect({-25.4, -25.4, 25.4, 25.4}, trim), {-62, 272, 72, 72});
}

TEST(LayerDrawing, NegativeSizesAreNoneButTheHeightStillMovesTheFrame) {
    const Rect trim{0, 0, 180, 252};
    expectNear(layerRect({0, 0, -25.4, 25.4}, trim), {0, 180, 0, 72});
    expectNear(layerRect({0, 0, 25.4, -25.4}, trim), {0, 252 + 72, 72, 0});
}

TEST(LayerDrawing, TheOutlineIsRoundedByHalfTheShorterSideAtMost) {
    const Rect rect{0, 0, Units::points(20), Units::points(10)};
    EXPECT_EQ(outlinePath(shapeLayer(ShapeKind::rectangle, 100), rect),
              Path().roundedRectangle(rect, Units::points(10) / 2));
    EXPECT_EQ(outlinePath(shapeLayer(ShapeKind::rectangle, 2), rect), Path().roundedRectangle(rect, Units::points(2)));
    EXPECT_EQ(outlinePath(shapeLayer(ShapeKind::rectangle, 0), rect), Path().rectangle(rect));
    EXPECT_EQ(outlinePath(shapeLayer(ShapeKind::rectangle, -3), rect), Path().rectangle(rect));
    EXPECT_EQ(outlinePath(shapeLayer(ShapeKind::ellipse, 3), rect), Path().ellipse(rect));
}

TEST(LayerDrawing, PicturesFillOrFitAndAreCentred) {
    const Rect rect{10, 20, 100, 50};
    expectNear(fitRect(ImageFit::fill, 10, 10, rect), {10, -5, 100, 100});
    expectNear(fitRect(ImageFit::fit, 10, 10, rect), {35, 20, 50, 50});
    expectNear(fitRect(ImageFit::fill, 400, 100, rect), {-40, 20, 200, 50});
    expectNear(fitRect(ImageFit::fit, 400, 100, rect), {10, 32.5, 100, 25});
    for (ImageFit fit : {ImageFit::fill, ImageFit::fit}) {
        EXPECT_EQ(fitRect(fit, 0, 10, rect), rect);
        EXPECT_EQ(fitRect(fit, 10, -1, rect), rect);
        EXPECT_EQ(fitRect(fit, std::numeric_limits<double>::quiet_NaN(), 10, rect), rect);
    }
}

TEST(LayerDrawing, OnlyEdgesUnderTheFrameSpillOver) {
    const Rect frame{10.3, 20.6, 30.2, 40.1};
    expectNear(spilledOver(frame, frame), {10, 20, 31, 41});
    expectNear(spilledOver({10.3, -5.2, 30.2, 100}, frame), {10, -6, 31, 101});
    expectNear(spilledOver({15.5, 20.6, 10.25, 40.1}, frame), {15.5, 20, 10.25, 41});
    expectNear(spilledOver({10, 20, 31, 41}, frame), {10, 20, 31, 41});
    expectNear(spilledOver({10 - 1e-12, 20, 31 + 2e-12, 41}, {10, 20, 31, 41}), {10, 20, 31, 41});
}

TEST(LayerDrawing, AMissingPictureIsNamedByItsFile) {
    const auto cards = cardsFrom({{"Title", "Art"}, {"Barrel", ""}});
    Layer layer("Artwork", LayerKind::image, {}, "{{art}}");
    EXPECT_EQ(missingLabel(layer, "art/barrel.png", &cards[0]), "barrel.png");
    EXPECT_EQ(missingLabel(layer, "art\\barrel.png", &cards[0]), "barrel.png");
    EXPECT_EQ(missingLabel(layer, "C:\\art/deep\\barrel.png/", nullptr), "barrel.png");
    EXPECT_EQ(missingLabel(layer, "[art]", nullptr), "[art]");
    EXPECT_EQ(missingLabel(layer, "", nullptr), "Artwork");
    EXPECT_EQ(missingLabel(layer, "", &cards[0]), std::nullopt);
}

}  // namespace
}  // namespace quorvel
