#include "Controls/Spinner.h"
#include "Controls/Style.h"
#include "Support/Widgets/WindowTest.h"

#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QTimerEvent>

namespace quorvel {
namespace {

QImage painted(double turn) {
    QImage image(32, 32, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    Spinner::paint(painter, QRectF(0, 0, 32, 32), Qt::black, turn);
    return image;
}

class SpinnerTest : public WindowTest {
protected:
    /// Lets the toolkit's timer of this widget fire without waiting for it. Few numbers are in use at a time.
    static void tick(Spinner& spinner) {
        for (int timer = 1; timer < 1000; ++timer) {
            QTimerEvent event(timer);
            QCoreApplication::sendEvent(&spinner, &event);
        }
    }
};

TEST_F(SpinnerTest, turns) {
    EXPECT_NE(painted(0), painted(0.125));
    EXPECT_EQ(painted(0), painted(1));
}

TEST_F(SpinnerTest, staysWithinItsPlace) {
    for (const QPoint corner : {QPoint(0, 0), QPoint(31, 0), QPoint(0, 31), QPoint(31, 31)})
        EXPECT_EQ(qAlpha(painted(0).pixel(corner)), 0);
}

TEST_F(SpinnerTest, leavesThePainterAsItWas) {
    QImage image(8, 8, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    const QTransform before = painter.transform();
    Spinner::paint(painter, QRectF(1, 1, 6, 6), Qt::black, 0.3);
    EXPECT_EQ(painter.transform(), before);
}

TEST_F(SpinnerTest, turnsWhileItIsSeen) {
    Style::setReduceMotion(false);
    Spinner spinner;
    EXPECT_EQ(spinner.sizeHint(), QSize(16, 16));
    show(spinner, spinner.sizeHint());
    const QImage before = spinner.grab().toImage();
    tick(spinner);
    const QImage after = spinner.grab().toImage();
    EXPECT_NE(before, after);
    spinner.hide();
    tick(spinner);
    EXPECT_EQ(spinner.grab().toImage(), after);
}

TEST_F(SpinnerTest, standsStillForWhoAskedForIt) {
    Spinner spinner;
    show(spinner, spinner.sizeHint());
    const QImage before = spinner.grab().toImage();
    tick(spinner);
    EXPECT_EQ(spinner.grab().toImage(), before);
}

}  // namespace
}  // namespace quorvel
