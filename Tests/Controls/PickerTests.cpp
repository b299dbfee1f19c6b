#include "Controls/Picker.h"
#include "Support/Widgets/WindowTest.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QStringListModel>
#include <QTest>
#include <QWheelEvent>

namespace quorvel {
namespace {

class PickerTest : public WindowTest {
protected:
    Picker picker{"Column"};
};

QStringList numbered(int count) {
    QStringList list;
    for (int i = 0; i < count; ++i) list << QStringLiteral("Entry %1").arg(i);
    return list;
}

}  // namespace

TEST_F(PickerTest, IsAsWideWhateverItsEntriesAre) {
    const QSize empty = picker.sizeHint();
    const int least = picker.minimumSizeHint().width();
    picker.addItem(QString(5000, u'W'));
    picker.addItems(numbered(3000));
    EXPECT_EQ(picker.sizeHint(), empty);
    EXPECT_EQ(picker.minimumSizeHint().width(), least);
    EXPECT_LT(least, empty.width());
}

TEST_F(PickerTest, SaysWhatIsMissing) {
    picker.addItems({"Name", "Text"});
    picker.show(1);
    EXPECT_EQ(picker.currentText(), "Text");
    picker.show(-1, "Gone");
    EXPECT_EQ(picker.currentIndex(), -1);
    EXPECT_EQ(picker.placeholderText(), "Gone");
    show(picker, {200, 30});
    const QImage missing = picker.grab().toImage();
    picker.show(-1);
    EXPECT_NE(picker.grab().toImage(), missing) << "the words are seen";
    picker.show(0, "Gone");
    EXPECT_EQ(picker.placeholderText(), "");
    EXPECT_EQ(picker.currentText(), "Name");
}

TEST_F(PickerTest, ANarrowOneCutsItsTextNotItsList) {
    picker.addItem("Touching (one cut between cards)");
    show(picker, {90, 30});
    picker.showPopup();
    EXPECT_GT(picker.view()->width(), picker.fontMetrics().horizontalAdvance(picker.itemText(0)));
    picker.hidePopup();
}

TEST_F(PickerTest, TheListIsNoWiderThanAScreenCanShow) {
    picker.addItem(QString(5000, u'W'));
    show(picker, {90, 30});
    picker.showPopup();
    EXPECT_LE(picker.view()->minimumWidth(), 480);
    picker.hidePopup();
}

TEST_F(PickerTest, IsDeafToTheWheelEvenWithTheKeyboard) {
    picker.addItems(numbered(5));
    show(picker, {200, 30});
    QApplication::setActiveWindow(&picker);
    picker.setFocus();
    ASSERT_TRUE(picker.hasFocus());
    QWheelEvent wheel({20, 10}, picker.mapToGlobal(QPointF(20, 10)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&picker, &wheel);
    EXPECT_EQ(picker.currentIndex(), 0);
    EXPECT_FALSE(wheel.isAccepted()) << "what is behind it scrolls";
    EXPECT_EQ(picker.focusPolicy(), Qt::StrongFocus) << "nor does the wheel bring it the keyboard";
    QTest::keyClick(&picker, Qt::Key_Down);
    EXPECT_EQ(picker.currentIndex(), 1);
}

TEST_F(PickerTest, ItAndItsListAreNamed) {
    EXPECT_EQ(picker.accessibleName(), "Column");
    EXPECT_EQ(picker.view()->accessibleName(), "Column");
}

}  // namespace quorvel
