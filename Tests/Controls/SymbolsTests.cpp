#include "Controls/Style.h"
#include "Controls/Symbols.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace quorvel {
namespace {

/// Every colour in it is this one, more or less opaque.
void expectOnly(const QImage& image, const QColor& color, const std::string& name) {
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    int marked = 0;
    for (int y = 0; y < plain.height(); ++y)
        for (int x = 0; x < plain.width(); ++x) {
            const QColor pixel = plain.pixelColor(x, y);
            if (pixel.alpha() < 128) continue;
            ++marked;
            ASSERT_NEAR(pixel.red(), color.red(), 2) << name;
            ASSERT_NEAR(pixel.green(), color.green(), 2) << name;
            ASSERT_NEAR(pixel.blue(), color.blue(), 2) << name;
        }
    EXPECT_GT(marked, 0) << name << " is empty";
}

bool touchesEdge(const QImage& image) {
    const int last = image.width() - 1;
    for (int at = 0; at <= last; ++at)
        for (const QPoint point : {QPoint(at, 0), QPoint(at, last), QPoint(0, at), QPoint(last, at)})
            if (qAlpha(image.pixel(point)) > 0) return true;
    return false;
}

TEST(Symbols, hasEveryNameThatTheProgramUses) {
    const QStringList names = Symbols::names();
    for (const char* name : {"arrow.down",
                             "arrow.up",
                             "checkmark.circle",
                             "chevron.left",
                             "chevron.right",
                             "exclamationmark.triangle",
                             "eye",
                             "eye.slash",
                             "hand.raised",
                             "minus",
                             "number",
                             "paintpalette",
                             "photo",
                             "photo.badge.exclamationmark",
                             "plus",
                             "plus.square.on.square",
                             "printer",
                             "rectangle.and.pencil.and.ellipsis",
                             "rectangle.grid.3x2",
                             "rectangle.portrait.on.rectangle.portrait",
                             "rectangle.portrait.on.rectangle.portrait.angled",
                             "rectangle.portrait.slash",
                             "square.and.arrow.up",
                             "square.on.circle",
                             "star.square.on.square",
                             "tablecells",
                             "tablecells.badge.ellipsis",
                             "text.aligncenter",
                             "text.alignleft",
                             "text.alignright",
                             "textformat",
                             "trash"})
        EXPECT_TRUE(names.contains(QLatin1String(name))) << name;
}

TEST(Symbols, areTheDrawingsOfTheSourceTree) {
    QDir folder(QStringLiteral(QUORVEL_SOURCE_DIR "/QuorvelApp/Controls/Symbols"));
    QStringList files = folder.entryList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
    QStringList names;
    for (const QString& file : files) {
        names += file.chopped(4);
        QFile drawn(QStringLiteral(":/symbols/") + file);
        QFile source(folder.filePath(file));
        ASSERT_TRUE(drawn.open(QIODevice::ReadOnly) && source.open(QIODevice::ReadOnly)) << file.toStdString();
        EXPECT_EQ(drawn.readAll(), source.readAll()) << file.toStdString();
    }
    EXPECT_EQ(Symbols::names(), names);
}

TEST(Symbols, areOneFamily) {
    for (const QString& name : Symbols::names()) {
        QFile file(QStringLiteral(":/symbols/%1.svg").arg(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        for (const char* part : {"viewBox=\"0 0 24 24\"", "stroke-width=\"1.75\"", "stroke-linejoin=\"round\""})
            EXPECT_TRUE(text.contains(part)) << name.toStdString() << ": " << part;
        EXPECT_EQ(text.count("stroke-width"), 1) << name.toStdString();
    }
}

TEST(Symbols, areDrawnInTheirColourAtEveryScale) {
    const QColor color(200, 30, 90);
    for (const QString& name : Symbols::names())
        for (const double scale : {1.0, 1.5, 2.0}) {
            const QPixmap pixmap = Symbols::pixmap(name, 24, color, scale);
            EXPECT_EQ(pixmap.devicePixelRatio(), scale);
            EXPECT_EQ(pixmap.size(), QSize(int(24 * scale), int(24 * scale)));
            expectOnly(pixmap.toImage(), color, name.toStdString());
        }
}

TEST(Symbols, stayWithinTheirSquare) {
    for (const QString& name : Symbols::names())
        EXPECT_FALSE(touchesEdge(Symbols::pixmap(name, 48, Qt::black, 1).toImage())) << name.toStdString();
}

TEST(Symbols, areAllDifferent) {
    std::vector<QImage> drawings;
    for (const QString& name : Symbols::names()) {
        const QImage drawing = Symbols::pixmap(name, 24, Qt::black, 1).toImage();
        for (const QImage& other : drawings) EXPECT_NE(drawing, other) << name.toStdString();
        drawings.push_back(drawing);
    }
}

QImage drawn(const QIcon& icon, QIcon::Mode mode) {
    return icon.pixmap(QSize(16, 16), 1, mode).toImage();
}

TEST(Symbols, iconsFollowThePaletteAndTheState) {
    const QIcon icon = Symbols::icon(u"trash");
    for (const Style::Appearance appearance : {Style::Appearance::dark, Style::Appearance::light}) {
        Style::apply(*qApp, appearance);
        const QPalette palette = QApplication::palette();
        expectOnly(drawn(icon, QIcon::Normal), palette.color(QPalette::Active, QPalette::ButtonText), "normal");
        expectOnly(drawn(icon, QIcon::Active), palette.color(QPalette::Active, QPalette::ButtonText), "active");
        expectOnly(drawn(icon, QIcon::Disabled), palette.color(QPalette::Disabled, QPalette::ButtonText), "disabled");
        expectOnly(drawn(icon, QIcon::Selected), palette.color(QPalette::HighlightedText), "selected");
    }
}

TEST(Symbols, iconsAreSharpOnADenseScreen) {
    const QPixmap pixmap = Symbols::icon(u"eye").pixmap(QSize(16, 16), 2.0);
    EXPECT_EQ(pixmap.size(), QSize(32, 32));
    EXPECT_EQ(pixmap.devicePixelRatio(), 2.0);
    EXPECT_EQ(pixmap.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied),
              Symbols::pixmap(u"eye", 16, QApplication::palette().color(QPalette::ButtonText), 2)
                  .toImage()
                  .convertToFormat(QImage::Format_ARGB32_Premultiplied));

    QImage screen(64, 64, QImage::Format_ARGB32_Premultiplied);
    screen.setDevicePixelRatio(2);
    screen.fill(Qt::transparent);
    QPainter painter(&screen);
    Symbols::icon(u"eye").paint(&painter, QRect(0, 0, 32, 32));
    painter.end();
    EXPECT_EQ(screen, Symbols::pixmap(u"eye", 32, QApplication::palette().color(QPalette::ButtonText), 2)
                          .toImage()
                          .convertToFormat(QImage::Format_ARGB32_Premultiplied));
}

TEST(Symbols, aSquareIsCentredInAPlaceThatIsNone) {
    const QImage wide = Symbols::icon(u"plus").pixmap(QSize(40, 16), 1.0).toImage();
    ASSERT_EQ(wide.size(), QSize(40, 16));
    EXPECT_GT(qAlpha(wide.pixel(20, 8)), 0);
    EXPECT_EQ(qAlpha(wide.pixel(8, 8)), 0);
}

TEST(Symbols, anUnknownNameIsReported) {
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(Symbols::icon(u"no.such.symbol").isNull()), "no symbol is called");
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(Symbols::pixmap(u"", 16, Qt::black, 1).isNull()), "no symbol is called");
}

TEST(Symbols, ofNoSizeIsNothing) {
    EXPECT_TRUE(Symbols::pixmap(u"plus", 0, Qt::black, 1).isNull());
    EXPECT_TRUE(Symbols::icon(u"plus").pixmap(QSize(0, 0), 1.0).isNull());
}

}  // namespace
}  // namespace quorvel
