#include "CardsTab/CardTilePainter.h"
#include "Controls/Style.h"

#include <QPainter>
#include <algorithm>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

constexpr QRect picture(20, 20, 150, 210);
constexpr QRect caption(20, 236, 150, 14);
constexpr QPoint badgeSide(172, 24);  // within the badge, beside its text and the picture

Image plainImage(int width, int height, std::uint32_t color) {
    auto pixels = allocatePixels(width, height);
    std::fill_n(pixels.get(), width * height, color);
    return {width, height, std::move(pixels), Image::Alpha::opaque};
}

class CardTilePainterTest : public testing::Test {
protected:
    CardTilePainter painter;
    CardTile tile;

    CardTilePainterTest() {
        tile.aspect = 150.0 / 210;
        look(1);
    }

    void look(double ratio) {
        painter.setLook({QPalette(Qt::white), Style::font(Style::TextSize::caption),
                         Style::font(Style::TextSize::caption, QFont::Bold), 6, ratio});
        ratio_ = ratio;
    }

    QImage draw(CardTilePainter::Focus focus = CardTilePainter::Focus::no) {
        QImage canvas(QSize(190, 270) * ratio_, QImage::Format_ARGB32_Premultiplied);
        canvas.setDevicePixelRatio(ratio_);
        canvas.fill(Qt::white);
        QPainter onto(&canvas);
        wasBest = painter.paint(onto, {picture, caption}, tile, focus, 0);
        return canvas;
    }

    /// The colour of a logical place.
    QColor at(const QImage& canvas, QPoint place) const { return canvas.pixelColor(place * ratio_); }

    bool wasBest = false;

private:
    double ratio_ = 1;
};

TEST_F(CardTilePainterTest, ThePictureFillsItsPlaceOverAShadow) {
    painter.begin();
    tile.image = plainImage(400, 560, 0xff204060);
    const QImage canvas = draw();
    EXPECT_TRUE(wasBest);
    EXPECT_EQ(at(canvas, picture.center()), QColor(0x20, 0x40, 0x60));
    EXPECT_EQ(at(canvas, picture.topLeft()), QColor(0x20, 0x40, 0x60));
    EXPECT_EQ(at(canvas, picture.bottomRight()), QColor(0x20, 0x40, 0x60));
    const int below = at(canvas, {95, picture.bottom() + 2}).red();
    const int above = at(canvas, {95, picture.top() - 2}).red();
    EXPECT_LT(below, 255);
    EXPECT_GT(below, 255 - 46) << "never darker than 18 % of black";
    EXPECT_LT(below, above) << "the light comes from above";
    EXPECT_EQ(at(canvas, {95, picture.top() - 8}), QColor(Qt::white));
}

TEST_F(CardTilePainterTest, WithoutAPictureThereIsAPlaceholderWithASpinner) {
    painter.begin();
    const QImage canvas = draw();
    EXPECT_TRUE(wasBest);
    QColor expected = Style::panel(painter.look().palette, 0.12);
    const QColor drawn = at(canvas, picture.topLeft() + QPoint(30, 30));
    EXPECT_NEAR(drawn.red(), 255 + (expected.red() - 255) * 0.12, 2);
    EXPECT_EQ(at(canvas, picture.topLeft()), QColor(Qt::white)) << "rounded";
    const QRect sign = CardTilePainter::spinner(picture);
    EXPECT_TRUE(std::abs((sign.center() - picture.center()).manhattanLength()) <= 2);
    bool any = false;
    for (int y = sign.top(); y <= sign.bottom(); ++y)
        for (int x = sign.left(); x <= sign.right(); ++x) any |= at(canvas, {x, y}) != drawn;
    EXPECT_TRUE(any);
}

TEST_F(CardTilePainterTest, TheBadgeCountsTheCopies) {
    painter.begin();
    tile.image = plainImage(150, 210, 0xffffffff);
    tile.printed = 1;
    EXPECT_GT(at(draw(), badgeSide).lightness(), 230) << "one copy has none";
    tile.printed = 3;
    EXPECT_EQ(at(draw(), badgeSide), Style::accent(painter.look().palette));
    tile.printed = 0;
    const QColor gray = at(draw(), badgeSide);
    EXPECT_EQ(gray.saturation() < 16, true) << gray.name().toStdString();
    EXPECT_LT(gray.lightness(), 200);
}

TEST_F(CardTilePainterTest, ACardThatPrintsNoCopiesIsDimmedAsAWhole) {
    painter.begin();
    tile.image = plainImage(150, 210, 0xff000000);
    tile.printed = 0;
    EXPECT_NEAR(at(draw(), picture.center()).red(), 255 * 0.55, 2);
    tile.printed = 1;
    EXPECT_EQ(at(draw(), picture.center()), QColor(Qt::black));
}

TEST_F(CardTilePainterTest, TheRingIsDrawnAroundThePicture) {
    painter.begin();
    tile.image = plainImage(150, 210, 0xffffffff);
    const QPoint beside(picture.left() - 3, picture.center().y());
    EXPECT_NE(at(draw(), beside), Style::accent(painter.look().palette));
    EXPECT_EQ(at(draw(CardTilePainter::Focus::yes), beside), Style::accent(painter.look().palette));
}

TEST_F(CardTilePainterTest, ReducesAFewPicturesAtOnce) {
    painter.begin();
    for (int id = 0; id < CardTilePainter::reducedAtOnce + 3; ++id) {
        tile.card.id = id;
        tile.image = plainImage(300, 420, 0xff102030);
        draw();
        EXPECT_EQ(wasBest, id < CardTilePainter::reducedAtOnce);
        EXPECT_EQ(painter.drawnImage(id), tile.image->id());
    }
    painter.begin();
    draw();
    EXPECT_TRUE(wasBest) << "the next painting goes on";
}

TEST_F(CardTilePainterTest, ANewPictureIsNeverMistakenForTheOld) {
    painter.begin();
    tile.image = plainImage(150, 210, 0xff102030);
    for (int i = 0; i <= CardTilePainter::reducedAtOnce; ++i) {
        tile.card.id = i;
        draw();
    }
    tile.card.id = 0;
    tile.image = plainImage(150, 210, 0xff908070);
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(at(draw(), picture.center()), QColor(0x90, 0x80, 0x70));
        EXPECT_FALSE(wasBest);
    }
    painter.begin();
    EXPECT_EQ(at(draw(), picture.center()), QColor(0x90, 0x80, 0x70));
    EXPECT_TRUE(wasBest);
}

TEST_F(CardTilePainterTest, EveryPixelOfTheScreenIsUsed) {
    // Stripes of one pixel at twice the size must not blur.
    auto pixels = allocatePixels(300, 420);
    for (int i = 0; i < 300 * 420; ++i) pixels[std::size_t(i)] = i % 300 % 2 ? 0xffffffff : 0xff000000;
    tile.image = Image(300, 420, std::move(pixels), Image::Alpha::opaque);
    look(2);
    painter.begin();
    const QImage canvas = draw();
    EXPECT_EQ(canvas.pixelColor(140, 140), QColor(Qt::black));
    EXPECT_EQ(canvas.pixelColor(141, 140), QColor(Qt::white));
}

TEST_F(CardTilePainterTest, LetsGoOfWhatIsNotKept) {
    painter.begin();
    tile.image = plainImage(150, 210, 0xff102030);
    for (tile.card.id = 0; tile.card.id < 6; ++tile.card.id) draw();
    painter.keep({2, 4});
    for (int id = 0; id < 6; ++id) EXPECT_EQ(painter.drawnImage(id) != 0, id == 2 || id == 3) << id;
}

}  // namespace
}  // namespace quorvel
