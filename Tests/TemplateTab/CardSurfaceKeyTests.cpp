#include "CardSurfaceTest.h"

#include <gmock/gmock.h>

namespace quorvel {
namespace {

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

TEST_F(CardSurfaceTest, AClickGivesTheKeyboard) {
    for (const QPoint place : {middle("Title"), QPoint(2, 2)}) {
        field.setFocus();
        ASSERT_TRUE(field.hasFocus());
        click(place);
        EXPECT_TRUE(surface.hasFocus());
    }
}

}  // namespace
}  // namespace quorvel
