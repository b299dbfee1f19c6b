#include "Controls/Style.h"
#include "Controls/SymbolLabel.h"
#include "Support/Widgets/WindowTest.h"

#include <QApplication>
#include <QImage>

namespace quorvel {
namespace {

class SymbolLabelTest : public WindowTest {};

bool contains(const QImage& image, const QColor& color) {
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == color) return true;
    return false;
}

TEST_F(SymbolLabelTest, isDrawnInTheMiddleOfItsPlace) {
    SymbolLabel label(QStringLiteral("plus"), 48, Style::accent);
    EXPECT_EQ(label.sizeHint(), QSize(48, 48));
    show(label, {128, 96});
    const QImage image = label.grab().toImage();
    const int scale = int(image.devicePixelRatio());
    EXPECT_EQ(image.pixelColor(64 * scale, 48 * scale), Style::accent(label.palette()));
    EXPECT_NE(image.pixelColor(16 * scale, 48 * scale), Style::accent(label.palette()));
}

TEST_F(SymbolLabelTest, takesItsColourFromThePaletteOfTheTime) {
    SymbolLabel label(QStringLiteral("tablecells"), 44, Style::good);
    show(label, {44, 44});
    const QColor light = Style::good(label.palette());
    EXPECT_TRUE(contains(label.grab().toImage(), light));
    Style::apply(*qApp, Style::Appearance::dark);
    settle();
    EXPECT_TRUE(contains(label.grab().toImage(), Style::good(QApplication::palette())));
    EXPECT_FALSE(contains(label.grab().toImage(), light));
    Style::apply(*qApp, Style::Appearance::light);
}

}  // namespace
}  // namespace quorvel
