#include "Controls/Style.h"
#include "TemplateTab/CanvasPainter.h"

#include <QApplication>
#include <QPainter>
#include <cmath>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

/// What is painted over a card of one plain colour.
class CanvasPainterTest : public testing::Test {
protected:
    CanvasPainter painter;
    CanvasPainter::Scene scene;
    CardTemplate design{"Poker", CardSize::poker, {}, {}};
    std::vector<Layer> layers{{"box", LayerKind::shape, {20, 20, 25, 25}, ""},
                              {"line", LayerKind::shape, {10, 60, 40, 0}, ""}};

    CanvasPainterTest() {
        scene.surface = {500, 600};
        scene.palette = QApplication::palette();
        scene.picture = plain(0xFFF0F0F0);
        setLayers(nullptr);
    }

    static Image plain(std::uint32_t color) {
        auto pixels = allocatePixels(50, 70);
        std::fill_n(pixels.get(), 50 * 70, color);
        return {50, 70, pixels, Image::Alpha::opaque};
    }
    void setLayers(const Layer* selected, Outlines outlines = Outlines::all) {
        scene.geometry = CanvasGeometry(design, {double(scene.surface.width()), double(scene.surface.height())});
        scene.overlays = layerOverlays(layers, selected, outlines, scene.geometry);
    }
    QImage paint() { return paint(QRegion(QRect(QPoint(), scene.surface))); }
    QImage paint(const QRegion& region) {
        QImage image(scene.surface * scene.pixelRatio, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scene.pixelRatio);
        image.fill(Qt::magenta);
        QPainter on(&image);
        on.setClipRegion(region);
        painter.paint(on, scene, region);
        return image;
    }
    /// The pixel that the point lies in.
    static QColor at(const QImage& image, double x, double y) {
        const double ratio = image.devicePixelRatio();
        return image.pixelColor(int(std::floor(x * ratio)), int(std::floor(y * ratio)));
    }
    /// Of this colour over the card's.
    static QColor over(const QColor& color, double opacity) {
        const auto mix = [&](int value) { return int(std::lround(value * opacity + 0xF0 * (1 - opacity))); };
        return {mix(color.red()), mix(color.green()), mix(color.blue())};
    }
    static bool isNear(const QColor& found, const QColor& expected, int most = 3) {
        return std::abs(found.red() - expected.red()) <= most && std::abs(found.green() - expected.green()) <= most &&
               std::abs(found.blue() - expected.blue()) <= most;
    }
    /// How much of the line from one point to another, a pixel of it at a time, is of the colour.
    static double share(const QImage& image, Point from, Point to, const QColor& color) {
        int hits = 0, all = 0;
        for (; from.x < to.x || from.y<to.y; from.x += to.x> from.x, from.y += to.y > from.y, ++all)
            hits += isNear(at(image, from.x, from.y), color);
        return double(hits) / all;
    }

    static inline const QColor red{230, 30, 30}, blue{30, 90, 230}, gray{128, 128, 128}, card{0xF0, 0xF0, 0xF0};
};

TEST_F(CanvasPainterTest, TheCardLiesOnItsShadow) {
    const QImage image = paint();
    const Rect group = scene.geometry.group();
    const QColor page = Style::underPage(scene.palette);
    EXPECT_EQ(at(image, 1, 1), page);
    EXPECT_EQ(at(image, group.x + 4, group.y + 4), card);
    EXPECT_EQ(at(image, group.maxX() - 4, group.maxY() - 4), card);
    const int below = at(image, group.midX(), group.maxY() + 2).lightness();
    const int above = at(image, group.midX(), group.minY() - 3).lightness();
    EXPECT_LT(below, page.lightness() - 5);
    EXPECT_LT(below, above) << "it falls down";
    EXPECT_GT(below, page.lightness() * 0.8 - 1) << "and is black at a fifth";
    EXPECT_EQ(at(image, group.midX(), group.maxY() + 10), page);
}

TEST_F(CanvasPainterTest, WhileThereIsNoPictureThereIsItsPlace) {
    scene.picture.reset();
    const QImage image = paint();
    const Rect group = scene.geometry.group();
    const QColor page = Style::underPage(scene.palette), secondary = Style::secondary(scene.palette);
    const auto mix = [](int a, int b) { return int(std::lround(a * 0.9 + b * 0.1)); };
    EXPECT_TRUE(isNear(
        at(image, group.x + 4, group.y + 4),
        {mix(page.red(), secondary.red()), mix(page.green(), secondary.green()), mix(page.blue(), secondary.blue())}));
}

TEST_F(CanvasPainterTest, TheCutLineIsRedAndSolid) {
    const QImage image = paint();
    const Rect cut = scene.geometry.cutLine();
    EXPECT_EQ(share(image, {cut.x, cut.y + 5}, {cut.x, cut.maxY() - 5}, over(red, 0.8)), 1);
    EXPECT_EQ(share(image, {cut.x + 5, cut.y}, {cut.maxX() - 5, cut.y}, over(red, 0.8)), 1);
    EXPECT_EQ(at(image, cut.x - 2, cut.midY()), card);
    EXPECT_EQ(at(image, cut.x + 2, cut.midY()), card) << "one point wide";
}

TEST_F(CanvasPainterTest, TheSafeZoneIsBlueAndDashed) {
    const QImage image = paint();
    const Rect safe = scene.geometry.safeZone();
    const double drawn = share(image, {safe.x + 20, safe.y}, {safe.maxX() - 20, safe.y}, over(blue, 0.8));
    EXPECT_NEAR(drawn, 4.0 / 7, 0.06);
}

TEST_F(CanvasPainterTest, WithoutGuidesThereAreNone) {
    scene.guides = false;
    const QImage image = paint();
    const Rect cut = scene.geometry.cutLine(), safe = scene.geometry.safeZone();
    EXPECT_EQ(share(image, {cut.x, cut.y}, {cut.x, cut.maxY()}, card), 1);
    EXPECT_EQ(share(image, {safe.x, safe.y}, {safe.x, safe.maxY()}, card), 1);
}

TEST_F(CanvasPainterTest, ASafeZoneThatLeavesNothingIsNotDrawn) {
    design.safeMM = 50;
    setLayers(nullptr);
    scene.overlays.clear();
    const QImage image = paint();
    const Rect cut = scene.geometry.cutLine();
    EXPECT_EQ(share(image, {cut.midX(), cut.y + 3}, {cut.midX(), cut.maxY() - 3}, card), 1);
}

TEST_F(CanvasPainterTest, OutlinesAreGrayAndDashed) {
    const QImage image = paint();
    const Rect box = scene.geometry.rect(layers[0].frame);
    const double drawn = share(image, {box.x + 10, box.y}, {box.maxX() - 10, box.y}, over(gray, 0.6 * 0.75));
    EXPECT_NEAR(drawn, 0.5, 0.08);
    const Rect line = scene.geometry.outline(layers[1].frame);
    EXPECT_GT(share(image, {line.x + 10, line.y}, {line.maxX() - 10, line.y}, over(gray, 0.6 * 0.75)), 0.3)
        << "also of a layer without height";
}

TEST_F(CanvasPainterTest, TheSelectedLayerIsOutlinedInTheAccentColour) {
    setLayers(&layers[0]);
    const QImage image = paint();
    const QColor accent = Style::accent(scene.palette);
    const Rect box = scene.geometry.rect(layers[0].frame);
    for (const double beside : {-0.5, 0.5})
        EXPECT_EQ(share(image, {box.x + 5, std::round(box.y) + beside}, {box.maxX() - 15, std::round(box.y) + beside},
                        accent),
                  1);
    const Rect handle = scene.geometry.handle(layers[0].frame);
    EXPECT_TRUE(isNear(at(image, handle.midX(), handle.midY()), accent));
    EXPECT_TRUE(isNear(at(image, handle.midX(), handle.minY() + 0.75), Qt::white, 60));
    setLayers(nullptr);
    EXPECT_EQ(at(paint(), handle.midX(), handle.midY()), card);
}

TEST_F(CanvasPainterTest, WhatIsDrawnOfAnOverlayLiesWithinItsReach) {
    for (const double ratio : {1.0, 1.5, 2.0}) {
        scene.pixelRatio = ratio;
        setLayers(nullptr, Outlines::selectedOnly);
        const QImage without = paint();
        setLayers(&layers[0], Outlines::all);
        const QImage with = paint();
        QRegion reach;
        for (const LayerOverlay& overlay : scene.overlays) reach += CanvasPainter::reach(overlay);
        int different = 0;
        for (int y = 0; y < with.height(); ++y)
            for (int x = 0; x < with.width(); ++x) {
                if (with.pixel(x, y) == without.pixel(x, y)) continue;
                ++different;
                ASSERT_TRUE(reach.contains(QPoint(int(x / ratio), int(y / ratio))))
                    << x << ", " << y << " at " << ratio;
            }
        EXPECT_GT(different, 300);
    }
}

TEST_F(CanvasPainterTest, DrawnInPartsItIsTheSame) {
    setLayers(&layers[0]);
    const QImage whole = paint();
    QImage parts = whole;
    const QRegion region = CanvasPainter::reach(scene.overlays[0]) + CanvasPainter::reach(scene.overlays[1]);
    QPainter(&parts).fillRect(parts.rect(), Qt::magenta);
    const QImage part = paint(region);
    for (int y = 0; y < whole.height(); ++y)
        for (int x = 0; x < whole.width(); ++x)
            if (region.contains(QPoint(x, y))) {
                ASSERT_TRUE(isNear(part.pixelColor(x, y), whole.pixelColor(x, y), 1)) << x << ", " << y;
            }
}

TEST_F(CanvasPainterTest, AnotherPictureIsDrawnAtOnce) {
    paint();
    scene.picture = plain(0xFF102030);
    const Rect group = scene.geometry.group();
    EXPECT_EQ(at(paint(), group.x + 4, group.y + 4), QColor(0x10, 0x20, 0x30));
    scene.surface = {700, 500};
    setLayers(nullptr);
    const Rect resized = scene.geometry.group();
    EXPECT_EQ(at(paint(), resized.maxX() - 4, resized.maxY() - 4), QColor(0x10, 0x20, 0x30));
}

TEST_F(CanvasPainterTest, SizesBeyondAllReasonAreDrawnAsFarAsTheyAreSeen) {
    for (const double size : {1e4, 1e7, 1e12, 1e300}) {
        design.size.widthMM = design.size.heightMM = size;
        layers[0].frame = {-size, -size, 2 * size, 2 * size};
        layers[1].frame = {size / 2, size / 2, -size, size};
        setLayers(&layers[0]);
        paint();
    }
    design.size = CardSize();
    layers[0].frame = {-1e300, 10, 1e300, 5};
    layers[1].frame = {5, 5, 1e300, 1e300};
    setLayers(&layers[0]);
    const Rect group = scene.geometry.group();
    EXPECT_EQ(at(paint(), group.x + 4, group.maxY() - 4), card);
}

}  // namespace
}  // namespace quorvel
