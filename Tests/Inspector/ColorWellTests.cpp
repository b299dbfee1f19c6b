#include "Inspector/ColorWell.h"

#include <QColorDialog>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>
#include <optional>

namespace quorvel {

TEST(ColorWell, PicksOpaqueColoursWhereOpacityIsNotOffered) {
    for (const auto opacity : {ColorWell::Opacity::none, ColorWell::Opacity::offered}) {
        ColorWell well("Colour", opacity);
        std::optional<RGBA> picked;
        QObject::connect(&well, &ColorWell::colorPicked, &well, [&](const RGBA& color) { picked = color; });
        well.show();
        QTest::keyClick(&well, Qt::Key_Space);
        auto* dialog = well.window()->findChild<QColorDialog*>();
        ASSERT_TRUE(dialog);
        EXPECT_EQ(dialog->testOption(QColorDialog::ShowAlphaChannel), opacity == ColorWell::Opacity::offered);
        dialog->setCurrentColor(QColor(10, 20, 30, 40));
        EXPECT_EQ(picked, RGBA::bytes(10, 20, 30, opacity == ColorWell::Opacity::offered ? 40 : 255));
    }
}

TEST(ColorWell, ShowingAColourPicksNone) {
    ColorWell well("Colour", ColorWell::Opacity::offered);
    int picks = 0;
    QObject::connect(&well, &ColorWell::colorPicked, &well, [&] { ++picks; });
    well.show();
    QTest::mouseClick(&well, Qt::LeftButton);
    well.setColor(RGBA::bytes(1, 2, 3, 4));
    EXPECT_EQ(picks, 0);
    EXPECT_EQ(well.accessibleDescription(), "#01020304");
    EXPECT_EQ(well.window()->findChild<QColorDialog*>()->currentColor(), QColor(1, 2, 3, 4));
}

TEST(ColorWell, TheDialogLeavesTheWindowInSightWhereItCan) {
    QWidget window;
    ColorWell well("Colour", ColorWell::Opacity::none, &window);
    const QRect screen = window.screen()->availableGeometry();
    const auto dialogIn = [&](const QRect& place) {
        window.setGeometry(place);
        window.show();
        well.closeDialog();
        QTest::mouseClick(&well, Qt::LeftButton);
        const auto dialogs = window.findChildren<QColorDialog*>();
        return dialogs.back()->frameGeometry();
    };
    const QSize dialog = dialogIn({screen.topLeft(), QSize(100, 300)}).size();
    ASSERT_LT(dialog.width() + 100, screen.width());
    const QRect atTheLeft(screen.topLeft(), QSize(100, 300));
    EXPECT_FALSE(dialogIn(atTheLeft).intersects(atTheLeft));
    const QRect atTheRight(screen.topRight() - QPoint(99, 0), QSize(100, 300));
    EXPECT_FALSE(dialogIn(atTheRight).intersects(atTheRight));
    EXPECT_EQ(dialogIn(screen).left(), screen.left());
    for (const QRect& each : {atTheLeft, atTheRight, screen}) EXPECT_TRUE(screen.contains(dialogIn(each)));
}

}  // namespace quorvel
