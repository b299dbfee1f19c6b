#include "Controls/SoftShadow.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

constexpr int side = 200;

/// White paper with the shadow of a rectangle, in device pixels.
QImage painted(SoftShadow& shadow, const QRectF& rect, double scale = 1) {
    QImage image(QSize(side, side) * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    shadow.paint(painter, rect);
    return image;
}

QImage painted(const SoftShadow::Look& look, const QRectF& rect, double scale = 1) {
    SoftShadow shadow(look);
    return painted(shadow, rect, scale);
}

/// From 0 (none) to 255 (black).
int darkness(const QImage& image, int x, int y) {
    return 255 - qGray(image.pixel(x, y));
}

const QRectF middle(60, 50, 80, 100);

TEST(SoftShadow, IsAsDarkAsToldAndFadesHalfWayAtTheEdge) {
    const QImage image = painted({.radius = 8, .offset = {}, .opacity = 0.4}, middle);
    EXPECT_NEAR(darkness(image, 100, 100), 0.4 * 255, 1);
    EXPECT_NEAR((darkness(image, 59, 100) + darkness(image, 60, 100)) / 2.0, 0.2 * 255, 1.5);
    EXPECT_EQ(darkness(image, 40, 100), 0);
    int before = 0;
    for (int x = 40; x <= 80; ++x) {
        EXPECT_GE(darkness(image, x, 100), before) << x;
        before = darkness(image, x, 100);
    }
}

TEST(SoftShadow, FallsWhereItIsTold) {
    const QImage still = painted({.radius = 6, .offset = {}, .opacity = 0.5}, middle);
    const QImage moved = painted({.radius = 6, .offset = {3, -5}, .opacity = 0.5}, middle);
    EXPECT_EQ(moved.copy(3, 0, side - 3, side - 5), still.copy(0, 5, side - 3, side - 5));
}

TEST(SoftShadow, IsTheSameOnAllSides) {
    const QImage image = painted({.radius = 6, .offset = {}, .opacity = 0.5, .cornerRadius = 12}, middle);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            ASSERT_NEAR(darkness(image, x, y), darkness(image, side - 1 - x, y), 1) << x << ' ' << y;
            ASSERT_NEAR(darkness(image, x, y), darkness(image, x, side - 1 - y), 1) << x << ' ' << y;
        }
}

TEST(SoftShadow, LeavesOutTheCorners) {
    const QImage square = painted({.radius = 4, .offset = {}, .opacity = 0.5}, middle);
    const QImage round = painted({.radius = 4, .offset = {}, .opacity = 0.5, .cornerRadius = 20}, middle);
    EXPECT_GT(darkness(square, 61, 51), 20);
    EXPECT_EQ(darkness(round, 61, 51), 0);
    EXPECT_EQ(round.copy(90, 0, 20, side), square.copy(90, 0, 20, side));
}

/// What is stretched looks as if it had been drawn at that size: no seam, no smear.
TEST(SoftShadow, AnySizeLooksAlikeAtItsEdges) {
    for (const double scale : {1.0, 1.5, 2.0})
        for (const double corner : {0.0, 7.0}) {
            SoftShadow shadow({.radius = 6, .offset = {0, 2}, .opacity = 0.25, .cornerRadius = corner});
            const QImage large = painted(shadow, {40, 40, 120, 120}, scale);
            const QImage small = painted(shadow, {40, 40, 60, 80}, scale);
            const int part = int(65 * scale);
            EXPECT_EQ(small.copy(0, 0, part, part), large.copy(0, 0, part, part)) << scale << ' ' << corner;
            for (int x = int(70 * scale); x < int(130 * scale); ++x)
                ASSERT_EQ(large.pixel(x, int(39 * scale)), large.pixel(int(70 * scale), int(39 * scale))) << x;
        }
}

TEST(SoftShadow, ARectangleSmallerThanItsShadowHasAFaintOne) {
    const QImage image = painted({.radius = 12, .offset = {}, .opacity = 1}, {98, 98, 4, 4});
    EXPECT_GT(darkness(image, 100, 100), 0);
    EXPECT_LT(darkness(image, 100, 100), 60);
    EXPECT_EQ(image.mirrored(true, true), image);
}

TEST(SoftShadow, IsSharpAtTwice) {
    const SoftShadow::Look look{.radius = 6, .offset = {0, 2}, .opacity = 0.4, .cornerRadius = 4};
    const QImage once = painted(look, middle, 1);
    const QImage twice = painted(look, middle, 2);
    // The same shadow, in twice as many steps.
    for (int x = 45; x < 60; ++x) {
        const int mean = (darkness(twice, 2 * x, 200) + darkness(twice, 2 * x + 1, 200)) / 2;
        EXPECT_NEAR(darkness(once, x, 100), mean, 4) << x;
    }
    int steps = 0;
    for (int x = 100; x < 140; ++x) steps += darkness(twice, x, 200) != darkness(twice, x + 1, 200);
    EXPECT_GT(steps, 16);
}

}  // namespace
}  // namespace quorvel
