#include "TemplateTab/CardSurface.h"
#include "TemplateTabTest.h"

#include <QApplication>
#include <QDialog>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>
#include <gmock/gmock.h>
#include <random>

namespace quorvel {
namespace {

/// The card in a window, beside a field that could have the keyboard.
class CardSurfaceTest : public TemplateTabTest {
protected:
    /// Remembers the keys that nobody below wanted.
    struct Window : QWidget {
        std::vector<int> unhandled;

        void keyPressEvent(QKeyEvent* event) override {
            const int key = event->key();
            if (key != Qt::Key_Shift && key != Qt::Key_Control && key != Qt::Key_Alt && key != Qt::Key_Meta)
                unhandled.push_back(key);
        }
    };

    Window window;
    CardSurface& surface = *new CardSurface(model);
    QLineEdit& field = *new QLineEdit;
    Announcer::Subscription subscription = model.subscribe([this](Changes changes) { surface.refresh(changes); });

    CardSurfaceTest() {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&surface, 1);
        column->addWidget(&field);
        show(window, {600, 700});
        QApplication::setActiveWindow(&window);
    }

    double scale() const { return surface.geometry().scale(); }
    QPoint at(double xMM, double yMM) const {
        const Rect place = surface.geometry().rect({xMM, yMM, 0, 0});
        return QPointF(place.x, place.y).toPoint();
    }
    QPoint middle(std::string_view name) const {
        const Frame& frame = layer(name).frame;
        return at(frame.x + frame.width / 2, frame.y + frame.height / 2);
    }
    QPoint handle(std::string_view name) const {
        const Rect handle = surface.geometry().handle(layer(name).frame);
        return QPointF(handle.midX(), handle.midY()).toPoint();
    }
    void press(QPoint point, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(&surface, button, {}, point);
    }
    void moveTo(QPoint point) { QTest::mouseMove(&surface, point); }
    void release(QPoint point, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseRelease(&surface, button, {}, point);
    }
    void click(QPoint point) { QTest::mouseClick(&surface, Qt::LeftButton, {}, point); }
    void drag(QPoint from, QPoint by) {
        press(from);
        moveTo(from + by / 2);
        moveTo(from + by);
        release(from + by);
    }
    void moveExactly(QPointF to) {
        QMouseEvent event(QEvent::MouseMove, to, surface.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&surface, &event);
    }
    double snapped(double start, int points) const { return CanvasGeometry::snapped(start + points / scale()); }
    Frame frame(std::string_view name) const { return layer(name).frame; }

    /// No drag is open any more: what moves now moves nothing, and the next edit is a step of its own.
    void expectNoDrag() {
        const CardTemplate before = model.template_();
        moveTo({10, 10});
        EXPECT_EQ(model.template_(), before);
        const std::size_t steps = undo->undoCount();
        CardTemplate next = before;
        next.safeMM += 1;
        model.setTemplate(next);
        EXPECT_EQ(undo->undoCount(), steps + 1);
        EXPECT_EQ(undoName(), "Edit Template");
        model.undo();
    }
};

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

TEST_F(CardSurfaceTest, AClickGivesTheKeyboard) {
    for (const QPoint place : {middle("Title"), QPoint(2, 2)}) {
        field.setFocus();
        ASSERT_TRUE(field.hasFocus());
        click(place);
        EXPECT_TRUE(surface.hasFocus());
    }
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

// Keys

TEST_F(CardSurfaceTest, ArrowKeysNudge) {
    struct Case {
        Qt::Key key;
        double dx, dy;
    };
    click(middle("Title"));
    for (const auto& [key, dx, dy] :
         {Case{Qt::Key_Left, -1, 0}, Case{Qt::Key_Right, 1, 0}, Case{Qt::Key_Up, 0, -1}, Case{Qt::Key_Down, 0, 1}}) {
        for (const Qt::KeyboardModifiers modifiers :
             {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::KeypadModifier)}) {
            const Frame before = frame("Title");
            QTest::keyClick(&surface, key, modifiers);
            EXPECT_EQ(frame("Title"), (Frame{before.x + 0.5 * dx, before.y + 0.5 * dy, 40, 10}));
            QTest::keyClick(&surface, key, modifiers | Qt::ShiftModifier);
            EXPECT_EQ(frame("Title"), (Frame{before.x + 2.5 * dx, before.y + 2.5 * dy, 40, 10}));
        }
    }
    EXPECT_EQ(undo->undoCount(), 16u) << "each is a step";
    EXPECT_EQ(undoName(), "Edit Template");
    EXPECT_TRUE(window.unhandled.empty());
}

TEST_F(CardSurfaceTest, NudgesDontSnap) {
    Layer odd = layer("Title");
    odd.frame.x = 10.3;
    model.updateLayer(odd);
    click(middle("Title"));
    QTest::keyClick(&surface, Qt::Key_Right);
    EXPECT_EQ(frame("Title").x, 10.3 + 0.5);
}

TEST_F(CardSurfaceTest, KeysRepeat) {
    click(middle("Title"));
    for (int i = 0; i < 5; ++i) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Down, {}, {}, true);
        QApplication::sendEvent(&surface, &event);
        EXPECT_TRUE(event.isAccepted());
    }
    EXPECT_EQ(frame("Title").y, 5 + 5 * 0.5);
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Delete, {}, {}, true);
    QApplication::sendEvent(&surface, &event);
    EXPECT_EQ(selected(), "");
    EXPECT_THAT(names(), testing::Not(testing::Contains("Title")));
}

TEST_F(CardSurfaceTest, BothDeleteKeysDelete) {
    for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Backspace}) {
        click(middle("Title"));
        QTest::keyClick(&surface, key);
        EXPECT_THAT(names(), testing::ElementsAre("Background", "Badge", "Line", "Ghost"));
        EXPECT_FALSE(model.state()._selectedLayer);
        model.undo();
        EXPECT_THAT(names(), testing::Contains("Title"));
        EXPECT_EQ(selected(), "") << "it comes back unselected";
    }
    EXPECT_TRUE(window.unhandled.empty());
}

TEST_F(CardSurfaceTest, WithNothingSelectedKeysPassOn) {
    click({2, 2});
    const std::vector<int> keys{Qt::Key_Left, Qt::Key_Right,  Qt::Key_Up,
                                Qt::Key_Down, Qt::Key_Delete, Qt::Key_Backspace};
    for (const int key : keys) QTest::keyClick(&surface, Qt::Key(key));
    EXPECT_EQ(window.unhandled, keys);
    EXPECT_EQ(undo->undoCount(), 0u);
}

TEST_F(CardSurfaceTest, ALayerThatWentIsNotSelected) {
    click(middle("Title"));
    const UUID id = layer("Title").id;
    model.deleteSelectedLayer();
    model.selectLayer(id);
    QTest::keyClick(&surface, Qt::Key_Left);
    QTest::keyClick(&surface, Qt::Key_Delete);
    EXPECT_EQ(window.unhandled, (std::vector<int>{Qt::Key_Left, Qt::Key_Delete}));
}

TEST_F(CardSurfaceTest, KeysWithCommandsAreForTheMenu) {
    click(middle("Title"));
    for (const Qt::KeyboardModifier modifier : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier})
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Backspace}) QTest::keyClick(&surface, key, modifier);
    QTest::keyClick(&surface, Qt::Key_A);
    EXPECT_EQ(window.unhandled.size(), 7u);
    EXPECT_EQ(undo->undoCount(), 0u);
}

TEST_F(CardSurfaceTest, ShortcutsDontTakeItsKeys) {
    const auto wanted = [this](Qt::Key key) {
        QKeyEvent event(QEvent::ShortcutOverride, key, {});
        event.ignore();
        QApplication::sendEvent(&surface, &event);
        return event.isAccepted();
    };
    EXPECT_FALSE(wanted(Qt::Key_Delete));
    click(middle("Title"));
    EXPECT_TRUE(wanted(Qt::Key_Delete));
    EXPECT_TRUE(wanted(Qt::Key_Left));
    EXPECT_FALSE(wanted(Qt::Key_A));
}

TEST_F(CardSurfaceTest, TheTabKeyLeadsHere) {
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_Tab);
    EXPECT_TRUE(surface.hasFocus());
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
