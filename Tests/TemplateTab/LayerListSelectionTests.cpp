#include "Controls/Style.h"
#include "LayerListTest.h"

#include <QKeyEvent>
#include <QScrollBar>

namespace quorvel {
namespace {

TEST_F(LayerListTest, AClickSelects) {
    click(row("Badge"));
    EXPECT_EQ(selected(), "Badge");
    EXPECT_TRUE(rows.hasFocus());
    EXPECT_EQ(row("Badge").look(), LayerRow::Look::active);
    QTest::mouseClick(row("Title").findChild<ElidedLabel*>(), Qt::LeftButton);
    EXPECT_EQ(selected(), "Title");
    EXPECT_EQ(row("Badge").look(), LayerRow::Look::plain);
    QTest::mouseClick(&row("Badge"), Qt::RightButton);
    EXPECT_EQ(selected(), "Title");
    EXPECT_EQ(undo->undoCount(), 0u);
}

TEST_F(LayerListTest, AClickBesideTheRowsSelectsNone) {
    select("Title");
    QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, QPoint(20, rows.viewport()->height() - 5));
    EXPECT_EQ(selected(), "");
    EXPECT_FALSE(model.state()._selectedLayer);
}

TEST_F(LayerListTest, FollowsTheSelectionOfTheModel) {
    select("Line");
    EXPECT_EQ(row("Line").look(), LayerRow::Look::selected);
    rows.setFocus();
    EXPECT_EQ(row("Line").look(), LayerRow::Look::active);
    tool("Add Layer").setFocus();
    EXPECT_EQ(row("Line").look(), LayerRow::Look::selected);
    model.selectLayer(std::nullopt);
    EXPECT_EQ(rows.selectedRow(), nullptr);
}

TEST_F(LayerListTest, ArrowKeysGoFromRowToRow) {
    rows.setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(selected(), "Ghost") << "the first";
    press(Qt::Key_Down);
    EXPECT_EQ(selected(), "Line");
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_EQ(selected(), "Ghost");
    press(Qt::Key_End);
    EXPECT_EQ(selected(), "Background");
    press(Qt::Key_Down);
    EXPECT_EQ(selected(), "Background");
    press(Qt::Key_Home);
    EXPECT_EQ(selected(), "Ghost");
    press(Qt::Key_PageDown);
    EXPECT_EQ(selected(), "Background");
    press(Qt::Key_PageUp);
    EXPECT_EQ(selected(), "Ghost");
    model.selectLayer(std::nullopt);
    press(Qt::Key_Up);
    EXPECT_EQ(selected(), "Background") << "the last";
    EXPECT_EQ(undo->undoCount(), 0u);
}

TEST_F(LayerListTest, TheKeyboardIsSeenAlsoWithoutASelection) {
    const auto marked = [this] { return pixels(rows, Style::accent(rows.palette())); };
    const auto isRinged = [&] { return marked() > rows.height(); };
    tool("Add Layer").setFocus();
    EXPECT_EQ(marked(), 0);
    rows.setFocus();
    EXPECT_TRUE(isRinged());
    tool("Add Layer").setFocus();
    EXPECT_EQ(marked(), 0);
    // A row that stands out says enough.
    select("Badge");
    rows.setFocus();
    const QPoint edge(Style::tight + 1, rows.height() / 2);
    EXPECT_NE(rows.grab().toImage().pixelColor(edge), Style::accent(rows.palette()));
    model.deleteSelectedLayer();
    EXPECT_EQ(rows.grab().toImage().pixelColor(edge), Style::accent(rows.palette()));
}

TEST_F(LayerListTest, OtherKeysAreNotForTheList) {
    select("Title");
    rows.setFocus();
    for (const auto& [key, modifiers] :
         {std::pair(Qt::Key_Delete, Qt::NoModifier), std::pair(Qt::Key_Down, Qt::ControlModifier),
          std::pair(Qt::Key_Escape, Qt::NoModifier), std::pair(Qt::Key_Left, Qt::NoModifier)}) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(&rows, &event);
        EXPECT_FALSE(event.isAccepted());
    }
    EXPECT_EQ(names().size(), 5u);
    EXPECT_EQ(selected(), "Title");
}

TEST_F(LayerListTest, KeysInAnEmptyListDoNothing) {
    CardTemplate next = model.template_();
    next.front.clear();
    model.setTemplate(next);
    rows.setFocus();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_End}) press(key);
    EXPECT_FALSE(model.state()._selectedLayer);
}

TEST_F(LayerListTest, TheSelectedRowComesIntoSight) {
    addLayers(40);
    ASSERT_GT(rows.verticalScrollBar()->maximum(), 0);
    rows.setFocus();
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Home, Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_Down}) {
        press(key);
        EXPECT_TRUE(isSeen(*rows.selectedRow())) << key;
    }
    select("Background");
    EXPECT_TRUE(isSeen(row("Background")));
    model.addLayer(LayerKind::text);
    settle();
    EXPECT_TRUE(isSeen(row("Text"))) << "also one that has just come";
    EXPECT_EQ(rows.selectedRow(), &row("Text"));
}

TEST_F(LayerListTest, AnEditDoesntScroll) {
    addLayers(40);
    select("Layer 39");
    rows.verticalScrollBar()->setValue(rows.verticalScrollBar()->maximum());
    model.nudgeSelectedLayer(1, 0);
    EXPECT_EQ(rows.verticalScrollBar()->value(), rows.verticalScrollBar()->maximum());
}

}  // namespace
}  // namespace quorvel
