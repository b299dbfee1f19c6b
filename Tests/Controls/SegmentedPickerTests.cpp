#include "Controls/SegmentedPicker.h"
#include "Support/Widgets/WindowTest.h"

#include <QApplication>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

namespace quorvel {
namespace {

class SegmentedPickerTest : public WindowTest {
protected:
    QWidget window;
    QLineEdit* field = new QLineEdit;
    SegmentedPicker* picker = nullptr;
    std::unique_ptr<QSignalSpy> activated;

    void start(const QList<SegmentedPicker::Segment>& segments) {
        field->setAccessibleName("Field");
        picker = new SegmentedPicker("Align", segments);
        activated = std::make_unique<QSignalSpy>(picker, &SegmentedPicker::activated);
        auto* column = new QVBoxLayout(&window);
        column->addWidget(field);
        column->addWidget(picker);
        show(window, {400, 200});
        QApplication::setActiveWindow(&window);
    }
    void startWithIcons() {
        start({{{}, "text.alignleft", "Left"}, {{}, "text.aligncenter", "Centre"}, {{}, "text.alignright", "Right"}});
    }

    QRadioButton* segment(const QString& name) { return find<QRadioButton>(window, name); }
};

}  // namespace

TEST_F(SegmentedPickerTest, TheFirstIsChosenAtFirst) {
    start({{"Top", {}, {}}, {"Middle", {}, {}}});
    EXPECT_EQ(picker->currentIndex(), 0);
    EXPECT_TRUE(segment("Top")->isChecked());
    EXPECT_EQ(activated->count(), 0);
}

TEST_F(SegmentedPickerTest, AClickChoosesAndLeavesTheKeyboardWhereItIs) {
    startWithIcons();
    field->setFocus();
    QTest::mouseClick(segment("Right"), Qt::LeftButton);
    EXPECT_EQ(picker->currentIndex(), 2);
    ASSERT_EQ(activated->count(), 1);
    EXPECT_EQ(activated->at(0).at(0).toInt(), 2);
    EXPECT_TRUE(field->hasFocus());
    QTest::mouseClick(segment("Right"), Qt::LeftButton);
    EXPECT_EQ(activated->count(), 2) << "what is chosen already is told, too";
    EXPECT_EQ(picker->currentIndex(), 2);
}

TEST_F(SegmentedPickerTest, AllOfASegmentTakesTheClick) {
    startWithIcons();
    QTest::mouseClick(segment("Centre"), Qt::LeftButton, {}, segment("Centre")->rect().bottomRight() - QPoint(1, 1));
    EXPECT_EQ(picker->currentIndex(), 1);
}

TEST_F(SegmentedPickerTest, ArrowKeysChooseAndTabComesToTheChosenOne) {
    startWithIcons();
    picker->setCurrentIndex(1);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_Tab);
    EXPECT_TRUE(segment("Centre")->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    EXPECT_EQ(picker->currentIndex(), 2);
    EXPECT_TRUE(segment("Right")->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
    EXPECT_EQ(picker->currentIndex(), 0);
    EXPECT_EQ(activated->count(), 3);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(field->hasFocus()) << "the picker is one stop";
}

TEST_F(SegmentedPickerTest, ShowingAnIndexTellsNobody) {
    startWithIcons();
    for (const int index : {2, 0, 1}) {
        picker->setCurrentIndex(index);
        EXPECT_EQ(picker->currentIndex(), index);
    }
    for (const int index : {-1, 3}) {
        picker->setCurrentIndex(index);
        EXPECT_EQ(picker->currentIndex(), 1);
    }
    EXPECT_EQ(activated->count(), 0);
}

TEST_F(SegmentedPickerTest, SymbolsAreNamedAndTextsNameThemselves) {
    startWithIcons();
    EXPECT_EQ(picker->accessibleName(), "Align");
    EXPECT_EQ(segment("Left")->text(), "");
    EXPECT_EQ(segment("Left")->toolTip(), "Left");
    EXPECT_EQ(unnamedControls(window), std::vector<std::string>());
}

TEST_F(SegmentedPickerTest, AnAmpersandMarksNoKey) {
    start({{"Print & Export", {}, {}}, {"Cards", "rectangle.grid.3x2", {}}});
    EXPECT_EQ(segment("Print & Export")->text(), "Print && Export");
    EXPECT_EQ(segment("Print & Export")->shortcut(), QKeySequence());
    EXPECT_GT(segment("Cards")->width(), segment("Cards")->fontMetrics().horizontalAdvance("Cards") + 16);
}

TEST_F(SegmentedPickerTest, TheChosenSegmentStandsOut) {
    startWithIcons();
    const auto ground = [&](const QString& name) {
        const QRadioButton* button = segment(name);
        const QImage image = window.grab().toImage();
        return image.pixelColor(button->mapTo(&window, QPoint(button->width() / 2, 4)));
    };
    picker->setCurrentIndex(1);
    EXPECT_NE(ground("Centre"), ground("Left"));
    EXPECT_EQ(ground("Right"), ground("Left"));
}

TEST_F(SegmentedPickerTest, NothingIsChosenWhileItIsDisabled) {
    startWithIcons();
    picker->setEnabled(false);
    QTest::mouseClick(segment("Right"), Qt::LeftButton);
    EXPECT_EQ(picker->currentIndex(), 0);
    EXPECT_EQ(activated->count(), 0);
}

}  // namespace quorvel
