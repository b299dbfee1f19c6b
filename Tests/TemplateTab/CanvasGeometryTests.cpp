#include "TemplateTab/CanvasGeometry.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace quorvel {
namespace {

void expectNear(const Rect& found, const Rect& expected) {
    EXPECT_NEAR(found.x, expected.x, 1e-9);
    EXPECT_NEAR(found.y, expected.y, 1e-9);
    EXPECT_NEAR(found.width, expected.width, 1e-9);
    EXPECT_NEAR(found.height, expected.height, 1e-9);
}

CardTemplate poker() {
    return {"Poker", CardSize::poker, {}, {}};
}

Layer layer(const char* name, Frame frame) {
    return {name, LayerKind::shape, frame, ""};
}

std::string nameOf(const Layer* layer) {
    return layer ? layer->name : std::string();
}

TEST(CanvasGeometry, TheCardFillsNearlyAllOfTheSurfaceInTheMiddle) {
    const CanvasGeometry geometry(poker(), {500, 500});
    const double scale = 0.96 * (500 / 94.9);
    EXPECT_DOUBLE_EQ(geometry.scale(), scale);
    const Size size{scale * 69.5, scale * 94.9};
    expectNear(geometry.group(), {(500 - size.width) / 2, (500 - size.height) / 2, size.width, size.height});
    expectNear(geometry.cutLine(), geometry.group().inset(scale * 3, scale * 3));
    expectNear(geometry.safeZone(), geometry.group().inset(scale * 6, scale * 6));
}

TEST(CanvasGeometry, TheNarrowerDirectionLimits) {
    EXPECT_DOUBLE_EQ(CanvasGeometry(poker(), {200, 500}).scale(), 0.96 * (200 / 69.5));
    EXPECT_DOUBLE_EQ(CanvasGeometry(poker(), {5000, 500}).scale(), 0.96 * (500 / 94.9));
}

TEST(CanvasGeometry, IsNeverSmallerThanATenthOfAPointPerMillimetre) {
    EXPECT_DOUBLE_EQ(CanvasGeometry(poker(), {5, 5}).scale(), 0.1);
    EXPECT_DOUBLE_EQ(CanvasGeometry(poker(), {0, 0}).scale(), 0.1);
    CardTemplate vast = poker();
    vast.size.widthMM = 1e6;
    const CanvasGeometry geometry(vast, {400, 400});
    EXPECT_DOUBLE_EQ(geometry.scale(), 0.1);
    EXPECT_NEAR(geometry.group().midX(), 200, 1e-6) << "it reaches beyond both edges";
}

TEST(CanvasGeometry, ANegativeBleedIsNone) {
    CardTemplate bled = poker();
    bled.bleedMM = -200;
    CardTemplate unbled = poker();
    unbled.bleedMM = 0;
    EXPECT_EQ(CanvasGeometry(bled, {300, 300}), CanvasGeometry(unbled, {300, 300}));
}

TEST(CanvasGeometry, ACardWithoutASizeIsNoReasonToDivideByZero) {
    CardTemplate nothing = poker();
    nothing.bleedMM = 0;
    nothing.size.widthMM = nothing.size.heightMM = 0;
    EXPECT_TRUE(std::isfinite(CanvasGeometry(nothing, {300, 300}).scale()));
}

TEST(CanvasGeometry, LayersAreMeasuredFromTheTrimmedCorner) {
    const CanvasGeometry geometry(poker(), {700, 600});
    const double scale = geometry.scale();
    expectNear(geometry.rect({10, -2, 30, 4}),
               {geometry.group().x + scale * 13, geometry.group().y + scale * 1, scale * 30, scale * 4});
}

TEST(CanvasGeometry, OutlinesAreAtLeastTwoPointsWideAndHigh) {
    const CanvasGeometry geometry(poker(), {500, 500});
    for (const Frame& frame : {Frame{10, 20, 0, 0}, Frame{10, 20, 0.1, 0.3}, Frame{10, 20, -5, -5}}) {
        const Rect rect = geometry.rect(frame);
        expectNear(geometry.outline(frame), {rect.x, rect.y, 2, 2});
    }
    const Frame large{1, 1, 20, 30};
    EXPECT_EQ(geometry.outline(large), geometry.rect(large));
}

TEST(CanvasGeometry, TheHandleLiesInsideTheBottomRightCorner) {
    const CanvasGeometry geometry(poker(), {500, 500});
    const Frame frame{10, 20, 30, 40};
    const Rect rect = geometry.rect(frame);
    const Rect handle = geometry.handle(frame);
    expectNear(handle, {rect.maxX() - 12, rect.maxY() - 12, 12, 12});
    EXPECT_NEAR(handle.midX(), rect.maxX() - 6, 1e-9);
    EXPECT_NEAR(handle.midY(), rect.maxY() - 6, 1e-9);
}

// Clicks

class Hit : public testing::Test {
protected:
    CanvasGeometry geometry{poker(), {500, 500}};
    std::vector<Layer> layers{layer("background", {-3, -3, 69.5, 94.9}), layer("low", {10, 10, 30, 30}),
                              layer("high", {20, 20, 30, 30})};

    Point at(double xMM, double yMM) const {
        const Rect place = geometry.rect({xMM, yMM, 0, 0});
        return {place.x, place.y};
    }
    std::string hit(Point point) const { return nameOf(geometry.hit(point, layers)); }
    std::string hit(double xMM, double yMM) const { return hit(at(xMM, yMM)); }
};

TEST_F(Hit, TheTopmostOfTwoIsTaken) {
    EXPECT_EQ(hit(25, 25), "high");
    EXPECT_EQ(hit(15, 15), "low");
}

TEST_F(Hit, ALayerAsLargeAsTheCardIsInNobodysWay) {
    std::ranges::rotate(layers, layers.begin() + 1);  // on top now
    EXPECT_EQ(hit(25, 25), "high");
    EXPECT_EQ(hit(15, 15), "low");
    EXPECT_EQ(hit(60, 80), "background");
}

TEST_F(Hit, OneThatIsSmallerInOneDirectionIsALayerLikeOthers) {
    layers.push_back(layer("band", {0, 0, 63.5, 88.8}));
    EXPECT_EQ(hit(25, 25), "band");
    layers.back().frame.height = 88.9;
    EXPECT_EQ(hit(25, 25), "high");
    layers.back().frame.width = 63.4;
    EXPECT_EQ(hit(25, 25), "band");
}

TEST_F(Hit, TwoPointsBesideALayerAreStillOnIt) {
    layers.erase(layers.begin());
    const Rect low = geometry.rect(layers[0].frame);
    EXPECT_EQ(hit({low.minX() - 1.9, low.midY() - 40}), "low");
    EXPECT_EQ(hit({low.minX() - 2.1, low.midY() - 40}), "");
    EXPECT_EQ(hit({low.minX() + 5, low.minY() - 1.9}), "low");
    EXPECT_EQ(hit({low.minX() + 5, low.minY() - 2.1}), "");
    EXPECT_EQ(hit({low.minX() + 5, low.maxY() + 1.9}), "low");
    EXPECT_EQ(hit({low.minX() + 5, low.maxY() + 2.1}), "");
}

TEST_F(Hit, NotBesideOneThatCoversTheCard) {
    const Rect background = geometry.rect(layers[0].frame);
    EXPECT_EQ(hit({background.minX() + 0.5, background.midY()}), "background");
    EXPECT_EQ(hit({background.minX() - 0.5, background.midY()}), "");
}

TEST_F(Hit, TheMarginOfASmallLayerComesBeforeACoveringOne) {
    const Rect low = geometry.rect(layers[1].frame);
    EXPECT_EQ(hit({low.minX() - 1.5, low.minY() + 5}), "low");
}

TEST_F(Hit, ALayerWithoutHeightIsHitThroughItsMargin) {
    layers = {layer("line", {10, 50, 40, 0})};
    const Rect line = geometry.rect(layers[0].frame);
    EXPECT_EQ(hit({line.midX(), line.y + 1.9}), "line");
    EXPECT_EQ(hit({line.midX(), line.y - 1.9}), "line");
    EXPECT_EQ(hit({line.midX(), line.y + 2.1}), "");
}

TEST_F(Hit, HiddenLayersAreNotThere) {
    layers[2].hidden = true;
    EXPECT_EQ(hit(25, 25), "low");
    layers[1].hidden = true;
    EXPECT_EQ(hit(25, 25), "background");
    layers[0].hidden = true;
    EXPECT_EQ(hit(25, 25), "");
}

TEST_F(Hit, ALayerThatARuleHidesIsStillHit) {
    StyleRule always;
    always.hide = true;
    layers[2].rules = {always};
    EXPECT_EQ(hit(25, 25), "high");
}

TEST_F(Hit, ThereMayBeNothing) {
    EXPECT_EQ(hit({1, 1}), "");
    layers.clear();
    EXPECT_EQ(hit(25, 25), "");
}

// Drags

TEST(CanvasGeometry, SnapsToHalfMillimetresAwayFromZero) {
    for (const auto& [value, snapped] : std::initializer_list<std::pair<double, double>>{{0, 0},
                                                                                         {0.24, 0},
                                                                                         {0.25, 0.5},
                                                                                         {0.26, 0.5},
                                                                                         {0.74, 0.5},
                                                                                         {0.75, 1},
                                                                                         {10.3, 10.5},
                                                                                         {-0.25, -0.5},
                                                                                         {-0.24, 0},
                                                                                         {-0.75, -1},
                                                                                         {-10.3, -10.5},
                                                                                         {1e12 + 0.3, 1e12 + 0.5}})
        EXPECT_EQ(CanvasGeometry::snapped(value), snapped) << value;
}

TEST(CanvasGeometry, MovingTakesThePlaceOfTheStartAndTheSizeOfTheFrame) {
    const CanvasGeometry geometry(poker(), {500, 500});
    const double scale = geometry.scale();
    EXPECT_EQ(geometry.moved({1, 2, 30, 40}, {10.3, 20, 5, 6}, {0, scale * 3}), (Frame{10.5, 23, 30, 40}));
    EXPECT_EQ(geometry.moved({1, 2, 30, 40}, {0, 0, 5, 6}, {scale * -7.1, scale * -100.3}), (Frame{-7, -100.5, 30, 40}))
        << "frames are not kept on the card";
}

TEST(CanvasGeometry, ResizingKeepsThePlaceAndAMillimetre) {
    const CanvasGeometry geometry(poker(), {500, 500});
    const double scale = geometry.scale();
    EXPECT_EQ(geometry.resized({1, 2, 30, 40}, {10, 20, 5, 6.2}, {scale * 2, 0}), (Frame{1, 2, 7, 6}));
    EXPECT_EQ(geometry.resized({1, 2, 30, 40}, {10, 20, 30, 40}, {-1e6, -1e6}), (Frame{1, 2, 1, 1}));
    EXPECT_EQ(geometry.resized({1, 2, 0.2, 0}, {1, 2, 0.2, 0}, {0, 0}), (Frame{1, 2, 1, 1}));
    EXPECT_EQ(geometry.resized({1, 2, 3, 4}, {1, 2, 3, 4}, {scale * 500, 0}), (Frame{1, 2, 503, 4}));
}

TEST(CanvasGeometry, WhateverIsHitLiesUnderThePoint) {
    std::mt19937 random(7);
    const auto number = [&](double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(random);
    };
    for (int round = 0; round < 300; ++round) {
        CardTemplate design = poker();
        design.bleedMM = number(0, 8);
        const CanvasGeometry geometry(design, {number(50, 1500), number(50, 1500)});
        std::vector<Layer> layers;
        for (int i = 0; i < 12; ++i) {
            layers.push_back(layer("any", {number(-20, 60), number(-20, 90), number(0, 80), number(0, 110)}));
            layers.back().hidden = round % 3 == 0 && i % 2 == 0;
        }
        for (int i = 0; i < 20; ++i) {
            const Point point{number(0, 1500), number(0, 1500)};
            const Layer* hit = geometry.hit(point, layers);
            if (hit) {
                EXPECT_FALSE(hit->hidden);
                EXPECT_TRUE(contains(geometry.rect(hit->frame).inset(-2, -2), point));
            } else {
                for (const Layer& each : layers)
                    EXPECT_FALSE(!each.hidden && contains(geometry.rect(each.frame), point));
            }
        }
    }
}

}  // namespace
}  // namespace quorvel
