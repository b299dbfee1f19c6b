#include "CardSurfaceTest.h"

#include <QHelpEvent>
#include <QToolTip>

namespace quorvel {
namespace {

// Clicks

TEST_F(CardSurfaceTest, AClickSelectsTheLayerUnderIt) {
    click(middle("Title"));
    EXPECT_EQ(selected(), "Title");
    click(middle("Badge"));
    EXPECT_EQ(selected(), "Badge");
    click(at(30, 45));
    EXPECT_EQ(selected(), "Background");
    click(middle("Ghost"));
    EXPECT_EQ(selected(), "Background") << "hidden layers aren't there";
    click(middle("Line"));
    EXPECT_EQ(selected(), "Line");
    click({2, 2});
    EXPECT_EQ(selected(), "");
    EXPECT_FALSE(model.state()._selectedLayer);
    EXPECT_EQ(undo->undoCount(), 0u);
}

TEST_F(CardSurfaceTest, AClickIsSelectedOnRelease) {
    press(middle("Title"));
    EXPECT_EQ(selected(), "");
    release(middle("Title"));
    EXPECT_EQ(selected(), "Title");
}

TEST_F(CardSurfaceTest, OnlyTheLeftButtonClicks) {
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        field.setFocus();
        QTest::mouseClick(&surface, button, {}, middle("Title"));
        EXPECT_EQ(selected(), "");
        EXPECT_TRUE(field.hasFocus());
    }
}

TEST_F(CardSurfaceTest, ADoubleClickIsTwoClicks) {
    click(middle("Title"));
    QTest::mouseDClick(&surface, Qt::LeftButton, {}, middle("Badge"));
    release(middle("Badge"));
    EXPECT_EQ(selected(), "Badge");
    // The second may also begin a drag.
    QTest::mouseDClick(&surface, Qt::LeftButton, {}, middle("Badge"));
    moveTo(middle("Badge") + QPoint(0, 50));
    release({});
    EXPECT_GT(frame("Badge").y, 20);
}

TEST_F(CardSurfaceTest, APressOnNothingThatIsDraggedAwayIsNoClick) {
    select("Title");
    press({2, 2});
    moveTo({80, 2});
    release({80, 2});
    EXPECT_EQ(selected(), "Title");
    press({2, 2});
    moveTo({5, 3});
    release({5, 3});
    EXPECT_EQ(selected(), "") << "a hand isn't that steady";
}

TEST_F(CardSurfaceTest, TheSideDecidesWhatIsClicked) {
    model.setSide(Side::back);
    click(at(25, 25));
    EXPECT_EQ(selected(), "Pattern");
    click(at(3, 3));
    EXPECT_EQ(selected(), "");
}

TEST_F(CardSurfaceTest, TheSelectionOutlivesAnotherCard) {
    open("cards.csv", "Name\nFire\nWater\n");
    model.setTemplate(design());
    select("Title");
    model.setCanvasCard(1);
    settle();
    EXPECT_EQ(selected(), "Title");
    EXPECT_TRUE(surface.overlays().at(1).isSelected());
    model.setSide(Side::back);
    model.setSide(Side::front);
    EXPECT_EQ(selected(), "");
}

// Under the pointer

TEST_F(CardSurfaceTest, TheHandleHasATooltipOfItsOwn) {
    select("Badge");
    const auto tip = [this](QPoint place) {
        QToolTip::hideText();
        QHelpEvent event(QEvent::ToolTip, place, surface.mapToGlobal(place));
        QApplication::sendEvent(&surface, &event);
        return QToolTip::text();
    };
    EXPECT_EQ(tip(handle("Badge")), "Drag to resize");
    EXPECT_EQ(tip(middle("Title")),
              "Click a layer to select it. Drag to move, drag the corner to resize, arrow keys nudge (Shift: 2 mm).");
    QToolTip::hideText();
}

TEST_F(CardSurfaceTest, ThePointerShowsTheHandle) {
    select("Badge");
    const auto hover = [this](QPoint place) {
        QMouseEvent event(QEvent::MouseMove, place, surface.mapToGlobal(place), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(&surface, &event);
        return surface.cursor().shape();
    };
    EXPECT_EQ(hover(handle("Badge")), Qt::SizeFDiagCursor);
    EXPECT_EQ(hover(middle("Title")), Qt::ArrowCursor);
}

}  // namespace
}  // namespace quorvel
