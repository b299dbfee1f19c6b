#include "CardSurfaceTest.h"

#include <QDialog>
#include <gmock/gmock.h>
#include <random>

namespace quorvel {
namespace {

// Moving

TEST_F(CardSurfaceTest, ADragMovesTheSelectedLayer) {
    click(middle("Title"));
    drag(middle("Title"), {60, 130});
    EXPECT_EQ(frame("Title"), (Frame{snapped(5, 60), snapped(5, 130), 40, 10}));
    EXPECT_EQ(selected(), "Title");
    EXPECT_EQ(undo->undoCount(), 1u);
    EXPECT_EQ(undoName(), "Move Layer");
    model.undo();
    EXPECT_EQ(frame("Title"), (Frame{5, 5, 40, 10}));
    EXPECT_EQ(undo->redoName(), "Edit Template");
    expectNoDrag();
}

TEST_F(CardSurfaceTest, ADragBeginsAfterAPoint) {
    select("Title");
    const QPoint start = middle("Title");
    press(start);
    moveExactly(QPointF(start) + QPointF(0.6, 0.7));
    EXPECT_FALSE(undo->canUndo());
    moveExactly(QPointF(start) + QPointF(0.6, 0.9));
    EXPECT_TRUE(undo->canUndo());
    release(start);
    // Less than that is a click.
    press(middle("Badge"));
    moveExactly(QPointF(middle("Badge")) + QPointF(0, 0.9));
    release(middle("Badge"));
    EXPECT_EQ(selected(), "Badge");
    EXPECT_EQ(undo->undoCount(), 1u);
}

TEST_F(CardSurfaceTest, TheFirstMovementSnaps) {
    Layer odd = layer("Title");
    odd.frame.x = 10.3;
    odd.frame.y = -3.2;
    model.updateLayer(odd);
    select("Title");
    const QPoint start = middle("Title");
    press(start);
    moveTo(start + QPoint(0, 1));
    EXPECT_EQ(frame("Title").x, 10.5);
    EXPECT_EQ(frame("Title").y, snapped(-3.2, 1));
    release(start);
}

TEST_F(CardSurfaceTest, ADragThatEndsWhereItBeganLeavesAStep) {
    const CardTemplate before = model.template_();
    select("Title");
    const QPoint start = middle("Title");
    press(start);
    moveTo(start + QPoint(70, 0));
    EXPECT_NE(model.template_(), before);
    moveTo(start);
    release(start);
    EXPECT_EQ(model.template_(), before);
    EXPECT_EQ(undo->undoCount(), 1u);
    EXPECT_EQ(undoName(), "Move Layer");
}

TEST_F(CardSurfaceTest, ADragWithNothingSelectedMovesNothingAndLeavesAStep) {
    const CardTemplate before = model.template_();
    drag(middle("Title"), {40, 40});
    EXPECT_EQ(model.template_(), before);
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(undo->undoCount(), 1u);
    EXPECT_EQ(undoName(), "Move Layer");
    expectNoDrag();
}

TEST_F(CardSurfaceTest, ADragOnAnotherLayerPutsTheSelectedOneThere) {
    select("Badge");
    drag(at(8, 8), {30, 20});
    EXPECT_EQ(frame("Title"), (Frame{5, 5, 40, 10}));
    EXPECT_EQ(frame("Badge"), (Frame{snapped(5, 30), snapped(5, 20), 12, 12}));
    EXPECT_EQ(selected(), "Badge");
    EXPECT_EQ(undo->undoCount(), 1u);
}

TEST_F(CardSurfaceTest, WithoutOutlinesOnlyTheSelectedLayerIsGrabbed) {
    surface.setOutlines(Outlines::selectedOnly);
    drag(middle("Title"), {40, 40});
    EXPECT_EQ(undo->undoCount(), 0u);
    click(middle("Title"));
    EXPECT_EQ(selected(), "Title");
    drag(middle("Title"), {0, 60});
    EXPECT_EQ(frame("Title").y, snapped(5, 60));
    EXPECT_EQ(undo->undoCount(), 1u);
}

TEST_F(CardSurfaceTest, AHiddenLayerCantBeGrabbed) {
    select("Ghost");
    const QPoint start = middle("Ghost");
    drag(start, {40, 0});
    EXPECT_NE(frame("Ghost"), (Frame{5, 70, 20, 10})) << "the background was grabbed, and the selected layer follows";
    EXPECT_EQ(frame("Ghost").x, snapped(-3, 40));
}

TEST_F(CardSurfaceTest, FramesMayLeaveTheCard) {
    select("Title");
    drag(middle("Title"), {-400, -500});
    EXPECT_EQ(frame("Title").x, snapped(5, -400));
    EXPECT_EQ(frame("Title").y, snapped(5, -500));
}

TEST_F(CardSurfaceTest, TheOutlineRunsAheadOfThePicture) {
    select("Title");
    const auto picture = model.state()._canvasImage->id();
    const QPoint start = middle("Title");
    press(start);
    moveTo(start + QPoint(50, 0));
    EXPECT_EQ(surface.overlays().at(1).outline, surface.geometry().rect(frame("Title")));
    EXPECT_EQ(model.state()._canvasImage->id(), picture);
    release(start + QPoint(50, 0));
    settle();
    EXPECT_NE(model.state()._canvasImage->id(), picture);
}

// Resizing

TEST_F(CardSurfaceTest, TheHandleResizes) {
    click(middle("Badge"));
    drag(handle("Badge"), {50, 90});
    EXPECT_EQ(frame("Badge"), (Frame{45, 20, snapped(12, 50), snapped(12, 90)}));
    EXPECT_EQ(undo->undoCount(), 1u);
    EXPECT_EQ(undoName(), "Move Layer");
    expectNoDrag();
}

TEST_F(CardSurfaceTest, ResizingStopsAtAMillimetre) {
    select("Title");
    drag(handle("Title"), {-500, -500});
    EXPECT_EQ(frame("Title"), (Frame{5, 5, 1, 1}));
}

TEST_F(CardSurfaceTest, WithoutASelectionThereIsNoHandle) {
    click(handle("Badge"));
    EXPECT_EQ(selected(), "Badge");
    click(handle("Badge"));
    EXPECT_EQ(selected(), "Badge") << "a click on the handle is a click";
    EXPECT_EQ(undo->undoCount(), 0u);
}

// What comes between

/// Grabs the title and moves it, with the button still down.
class OpenDrag : public CardSurfaceTest {
protected:
    QPoint start = middle("Title");
    Frame there;

    OpenDrag() {
        select("Title");
        press(start);
        moveTo(start + QPoint(60, 60));
        there = frame("Title");
    }
};

TEST_F(OpenDrag, EndsWithTheButton) {
    release(start + QPoint(60, 60));
    EXPECT_EQ(frame("Title"), there);
    expectNoDrag();
}

TEST_F(OpenDrag, EndsWhenTheWindowIsLeft) {
    QEvent leave(QEvent::WindowDeactivate);
    QApplication::sendEvent(&surface, &leave);
    EXPECT_EQ(frame("Title"), there);
    expectNoDrag();
    release(start);
    EXPECT_EQ(selected(), "Title");
}

TEST_F(OpenDrag, EndsWhenADialogComes) {
    QDialog dialog(&window);
    dialog.open();
    settle();
    expectNoDrag();
    EXPECT_EQ(frame("Title"), there);
}

TEST_F(OpenDrag, EndsWhenAnotherTabIsShown) {
    surface.hide();
    EXPECT_EQ(frame("Title"), there);
    surface.show();
    expectNoDrag();
}

TEST_F(OpenDrag, EndsWithTheDeck) {
    const UUID deck = *model.state()._selection;
    model.newDeck(SampleTemplates::Kind::classic, "Other");
    select(model.layers(Side::front).at(1).name);
    expectNoDrag();
    release(start);
    model.setSelection(deck);
    EXPECT_EQ(frame("Title"), there);
}

TEST_F(OpenDrag, EndsWhenTheReleaseWasLost) {
    QMouseEvent hover(QEvent::MouseMove, QPointF(5, 5), surface.mapToGlobal(QPointF(5, 5)), Qt::NoButton, Qt::NoButton,
                      {});
    QApplication::sendEvent(&surface, &hover);
    EXPECT_EQ(frame("Title"), there);
    expectNoDrag();
}

TEST_F(OpenDrag, AnotherButtonChangesNothing) {
    press(start + QPoint(60, 60), Qt::RightButton);
    release(start + QPoint(60, 60), Qt::RightButton);
    moveTo(start + QPoint(90, 60));
    EXPECT_EQ(frame("Title").x, snapped(5, 90));
    release(start + QPoint(90, 60));
    EXPECT_EQ(undo->undoCount(), 1u);
}

TEST_F(OpenDrag, EscapeIsNotForTheCanvas) {
    QTest::keyClick(&surface, Qt::Key_Escape);
    EXPECT_EQ(window.unhandled, std::vector<int>{Qt::Key_Escape});
    moveTo(start + QPoint(90, 60));
    EXPECT_EQ(frame("Title").x, snapped(5, 90));
    release(start);
}

TEST_F(OpenDrag, OutlivesWhatTheKeyboardDoesMeanwhile) {
    model.undo();
    EXPECT_EQ(frame("Title"), there) << "not during a drag";
    model.deleteSelectedLayer();
    moveTo(start + QPoint(90, 60));
    release(start);
    EXPECT_THAT(names(), testing::Not(testing::Contains("Title")));
    EXPECT_EQ(undo->undoCount(), 1u) << "it joins the drag";
    model.undo();
    EXPECT_EQ(frame("Title"), (Frame{5, 5, 40, 10}));
    expectNoDrag();
}

TEST_F(OpenDrag, AnotherSideHasNothingThatIsDragged) {
    const CardTemplate before = model.template_();
    model.setSide(Side::back);
    moveTo(start + QPoint(90, 60));
    EXPECT_EQ(model.template_(), before);
    release(start);
    expectNoDrag();
}

TEST_F(OpenDrag, FollowsTheSizeOfTheWindow) {
    window.resize(400, 500);
    moveTo(start + QPoint(60, 60));
    EXPECT_EQ(frame("Title").x, snapped(5, 60));
    release(start);
    EXPECT_EQ(undo->undoCount(), 1u);
}

TEST_F(CardSurfaceTest, ADragThatOutlivesItsCanvasIsNoDrag) {
    select("Title");
    press(middle("Title"));
    moveTo(middle("Title") + QPoint(60, 60));
    subscription = {};
    delete &surface;
    model.nudgeSelectedLayer(1, 0);
    EXPECT_EQ(undoName(), "Edit Template");
}

TEST_F(CardSurfaceTest, ALayerThatGoesBeforeTheFirstMovementIsNotDragged) {
    press(middle("Badge"));
    select("Badge");
    model.deleteSelectedLayer();
    select("Title");
    const std::size_t steps = undo->undoCount();
    moveTo(middle("Title") + QPoint(60, 60));
    release({});
    EXPECT_EQ(undo->undoCount(), steps);
    EXPECT_EQ(frame("Title"), (Frame{5, 5, 40, 10}));
}

TEST_F(CardSurfaceTest, WhatAFieldChangesWhenItLosesTheKeyboardComesFirst) {
    select("Title");
    field.setFocus();
    const QPoint start = middle("Title");
    QObject::connect(&field, &QLineEdit::editingFinished, [this] {
        Layer moved = layer("Title");
        moved.frame.y = 6;
        model.updateLayer(moved);
    });
    QTest::keyClicks(&field, "6");
    drag(start, {0, 100});
    EXPECT_EQ(frame("Title").y, snapped(6, 100));
    EXPECT_EQ(undo->undoCount(), 2u);
}

// All of it

TEST_F(CardSurfaceTest, WhateverTheMouseDoesOneDragIsOneStep) {
    std::mt19937 random(11);
    const auto number = [&](int below) { return int(random() % unsigned(below)); };
    for (int round = 0; round < 200; ++round) {
        undo->removeAllActions();
        const CardTemplate before = model.template_();
        if (number(3) == 0) model.selectLayer(model.layers(Side::front)[std::size_t(number(5))].id);
        const QPoint start(number(surface.width()), number(surface.height()));
        press(start);
        bool moved = false;
        for (int i = number(6); i > 0; --i) {
            moveTo(start + QPoint(number(400) - 200, number(400) - 200));
            moved = true;
        }
        release(start);
        ASSERT_LE(undo->undoCount(), moved ? 1u : 0u);
        while (undo->canUndo()) model.undo();
        ASSERT_EQ(model.template_(), before);
    }
    expectNoDrag();
}

}  // namespace
}  // namespace quorvel
