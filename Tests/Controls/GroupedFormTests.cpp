#include "Controls/GroupedForm.h"
#include "Support/Widgets/WindowTest.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

namespace quorvel {
namespace {

class GroupedFormTest : public WindowTest {
protected:
    GroupedForm form;

    static QRect placeIn(const QWidget& form, const QWidget* widget) {
        return {widget->mapTo(&form, QPoint(0, 0)), widget->size()};
    }

    /// As the screen reports it: only such a turn goes on to what the widget stands in.
    static void turnWheel(QWidget* widget) { turnWheel(widget, QRectF(widget->rect()).center()); }
    static void turnWheel(QWidget* widget, QPointF place) {
        QWheelEvent event(place, widget->mapToGlobal(place), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(widget, &event);
    }

    QLabel* label(const QString& text) {
        for (QLabel* each : form.findChildren<QLabel*>())
            if (each->text() == text) return each;
        ADD_FAILURE() << "no label " << text.toStdString();
        return nullptr;
    }
};

TEST_F(GroupedFormTest, putsLabelsLeftAndControlsRight) {
    GroupedForm::Section section = form.addSection(QStringLiteral("Paper"));
    auto* button = new QPushButton(QStringLiteral("Choose…"));
    auto* other = new QPushButton(QStringLiteral("Choose another…"));
    section.addRow(QStringLiteral("Art folder"), button);
    section.addRow(QStringLiteral("Icons folder"), other);
    show(form, {400, 300});
    EXPECT_EQ(placeIn(form, button).right(), placeIn(form, other).right());
    EXPECT_EQ(placeIn(form, label(QStringLiteral("Art folder"))).left(),
              placeIn(form, label(QStringLiteral("Icons folder"))).left());
    EXPECT_LT(placeIn(form, label(QStringLiteral("Art folder"))).left(), placeIn(form, button).left());
    EXPECT_GT(placeIn(form, other).top(), placeIn(form, button).bottom());
}

TEST_F(GroupedFormTest, aControlThatLikesToGrowGetsTheWidth) {
    GroupedForm::Section section = form.addSection({});
    auto* field = new QLineEdit;
    section.addRow(QStringLiteral("Name"), field);
    show(form, {500, 200});
    EXPECT_GT(field->width(), 300);
}

TEST_F(GroupedFormTest, namesControlsAfterTheirLabels) {
    GroupedForm::Section section = form.addSection(QStringLiteral("Paper"));
    auto* picker = new QComboBox;
    auto* named = new QLineEdit;
    named->setAccessibleName(QStringLiteral("Its own"));
    section.addRow(QStringLiteral("Margins & bleed"), picker);
    section.addRow(QStringLiteral("Label"), named);
    EXPECT_EQ(nameOf(*picker), QStringLiteral("Margins & bleed"));
    EXPECT_EQ(nameOf(*named), QStringLiteral("Its own"));
    EXPECT_EQ(label(QStringLiteral("Margins && bleed"))->buddy(), picker);
    show(form);
    EXPECT_EQ(unnamedControls(form), std::vector<std::string>());
}

TEST_F(GroupedFormTest, tabGoesFromTopToBottomWhateverWasMadeFirst) {
    auto* last = new QCheckBox(QStringLiteral("Last"), &form);
    auto* right = new QPushButton(QStringLiteral("Right"), &form);
    auto* left = new QPushButton(QStringLiteral("Left"), &form);
    auto* first = new QLineEdit(&form);
    auto* second = new QLineEdit(&form);
    auto* cell = new QWidget(&form);
    auto* cells = new QHBoxLayout(cell);
    GroupedForm::Section above = form.addSection(QStringLiteral("Above"));
    GroupedForm::Section below = form.addSection(QStringLiteral("Below"));
    left->setParent(cell);
    right->setParent(cell);
    cells->addWidget(left);
    cells->addWidget(right);
    // The upper section is filled last.
    below.addRow(QStringLiteral("Both"), cell);
    below.addRow(last);
    above.addRow(QStringLiteral("First"), first);
    above.addRow(QStringLiteral("Second"), second);
    show(form);
    form.activateWindow();
    first->setFocus();
    for (QWidget* next : {static_cast<QWidget*>(first), static_cast<QWidget*>(second), static_cast<QWidget*>(left),
                          static_cast<QWidget*>(right), static_cast<QWidget*>(last)}) {
        EXPECT_EQ(QApplication::focusWidget(), next) << nameOf(*next).toStdString();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
}

TEST_F(GroupedFormTest, aHiddenRowLeavesNoGap) {
    GroupedForm::Section section = form.addSection({});
    auto* top = new QPushButton(QStringLiteral("Top"));
    auto* middle = new QPushButton(QStringLiteral("Middle"));
    auto* bottom = new QPushButton(QStringLiteral("Bottom"));
    section.addRow(QStringLiteral("Top"), top);
    section.addRow(QStringLiteral("Middle"), middle);
    section.addRow(bottom);
    show(form);
    const int whole = placeIn(form, bottom).top() - placeIn(form, top).top();
    section.setRowVisible(middle, false);
    settle();
    EXPECT_FALSE(middle->isVisible());
    EXPECT_FALSE(label(QStringLiteral("Middle"))->isVisible());
    EXPECT_EQ((placeIn(form, bottom).top() - placeIn(form, top).top()) * 2, whole);
    section.setRowVisible(middle, true);
    settle();
    EXPECT_TRUE(middle->isVisible());
    EXPECT_EQ(placeIn(form, bottom).top() - placeIn(form, top).top(), whole);
}

TEST_F(GroupedFormTest, showsTheWholeFooter) {
    GroupedForm::Section section = form.addSection(QStringLiteral("Columns"));
    section.addRow(new QCheckBox(QStringLiteral("A row")));
    const QString text = QStringLiteral(
        "Which column feeds each field. Matched by name when the spreadsheet is read; "
        "any column can also be used directly in a layer as {{Column Name}}.");
    section.setFooter(text);
    for (const int width : {340, 460, 800}) {
        show(form, {width, 500});
        settle();
        const QLabel* footer = label(text);
        EXPECT_TRUE(footer->isVisible());
        EXPECT_GE(footer->height(), footer->heightForWidth(footer->width())) << width;
        EXPECT_LE(placeIn(form, footer).right(), width) << width;
    }
    section.setFooter({});
    EXPECT_FALSE(label(QString())->isVisible());
}

TEST_F(GroupedFormTest, aTitleMayChange) {
    GroupedForm::Section section = form.addSection(QStringLiteral("Front"));
    GroupedForm::Section untitled = form.addSection({});
    section.setTitle(QStringLiteral("Back"));
    untitled.setTitle(QStringLiteral("Nothing"));
    EXPECT_TRUE(label(QStringLiteral("Back")));
    for (const QLabel* each : form.findChildren<QLabel*>()) EXPECT_NE(each->text(), QStringLiteral("Nothing"));
}

TEST_F(GroupedFormTest, isNeverNarrowerThanItsRows) {
    GroupedForm::Section section = form.addSection({});
    auto* wide = new QPushButton(QStringLiteral("Wide"));
    wide->setMinimumWidth(420);
    section.addRow(QStringLiteral("Label"), wide);
    settle();
    EXPECT_GT(form.minimumSizeHint().width(), 420);
    show(form, {form.minimumSizeHint().width(), 200});
    EXPECT_LE(placeIn(form, wide).right(), form.viewport()->width());
}

TEST_F(GroupedFormTest, scrollsWhatDoesNotFit) {
    GroupedForm::Section section = form.addSection({});
    for (int row = 0; row < 30; ++row) section.addRow(new QCheckBox(QString::number(row)));
    show(form, {400, 300});
    EXPECT_GT(form.verticalScrollBar()->maximum(), 500);
    EXPECT_EQ(form.horizontalScrollBar()->maximum(), 0);
}

TEST_F(GroupedFormTest, theWheelOverAPickerScrollsTheForm) {
    GroupedForm::Section section = form.addSection({});
    auto* picker = new QComboBox;
    picker->addItems({QStringLiteral("A4"), QStringLiteral("US Letter")});
    section.addRow(QStringLiteral("Paper"), picker);
    auto* other = new QLineEdit;
    section.addRow(QStringLiteral("Other"), other);
    for (int row = 0; row < 30; ++row) section.addRow(new QCheckBox(QString::number(row)));
    show(form, {400, 300});
    form.activateWindow();
    other->setFocus();
    turnWheel(picker);
    EXPECT_EQ(picker->currentIndex(), 0);
    EXPECT_GT(form.verticalScrollBar()->value(), 0);
    picker->setFocus();
    turnWheel(picker, QPointF(-20, 5));
    EXPECT_EQ(picker->currentIndex(), 0) << "a turn that began here and goes on elsewhere";
    turnWheel(picker);
    EXPECT_EQ(picker->currentIndex(), 1);
}

}  // namespace
}  // namespace quorvel
