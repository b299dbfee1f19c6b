#include "SheetsViewTest.h"

#include "Controls/NumberField.h"
#include "SheetsTab/SheetPicture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QWheelEvent>
#include <QtTest/qtestspontaneevent.h>

namespace quorvel {

std::string SheetsViewTest::table(int cards, int copies) {
    std::string text = "Name,Qty\n";
    for (int i = 1; i <= cards; ++i) text += "Card " + std::to_string(i) + "," + std::to_string(copies) + "\n";
    return text;
}

void SheetsViewTest::start(int cards, int copies) {
    open("cards.csv", table(cards, copies));
    view = std::make_unique<SheetsView>(model);
    show(*view);
    settle();
}

void SheetsViewTest::makeCardTooBig() {
    change([](DeckProject& project) { project.template_.size = CardSize::custom(400, 500); });
}

void SheetsViewTest::choose(const QString& picker, const QString& option) {
    auto* box = find<QComboBox>(*view, picker);
    const int wanted = box->findText(option);
    ASSERT_GE(wanted, 0) << option.toStdString();
    box->setFocus();
    while (box->currentIndex() != wanted)
        QTest::keyClick(box, box->currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
}

void SheetsViewTest::type(const QString& field, const QString& number) {
    auto* input = find<QLineEdit>(*view, field);
    input->setFocus();
    input->selectAll();
    QTest::keyClicks(input, number);
    QTest::keyClick(input, Qt::Key_Return);
}

void SheetsViewTest::click(const QString& button) {
    QTest::mouseClick(find<QAbstractButton>(*view, button), Qt::LeftButton, {}, {8, 8});
}

void SheetsViewTest::press(Qt::Key key, const QString& control) {
    // A label or a row may have the same name.
    for (QWidget* each : view->findChildren<QWidget*>())
        if (each->focusPolicy() != Qt::NoFocus && !each->focusProxy() && nameOf(*each) == control) {
            each->setFocus();
            QTest::keyClick(each, key);
            return;
        }
    ADD_FAILURE() << "no control is called " << control.toStdString();
}

void SheetsViewTest::wheel(QWidget& widget, QPoint turned) {
    const QPointF place = widget.rect().center();
    QWheelEvent event(place, widget.mapToGlobal(place), {}, turned, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    // As from a real mouse: others don't go on to the widget behind.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(&widget, &event);
}

QString SheetsViewTest::chosen(const QString& picker) {
    return find<QComboBox>(*view, picker)->currentText();
}

QString SheetsViewTest::number(const QString& field) {
    return find<QLineEdit>(*view, field)->text();
}

bool SheetsViewTest::isChecked(const QString& box) {
    return find<QCheckBox>(*view, box)->isChecked();
}

bool SheetsViewTest::isEnabled(const QString& button) {
    return find<QAbstractButton>(*view, button)->isEnabled();
}

bool SheetsViewTest::reads(const QString& text) {
    for (const QLabel* label : view->findChildren<QLabel*>())
        if (label->text() == text && label->isVisibleTo(view.get())) return true;
    return false;
}

QString SheetsViewTest::lineThatBegins(const QString& start) {
    for (const QLabel* label : view->findChildren<QLabel*>())
        if (label->text().startsWith(start) && label->isVisibleTo(view.get())) return label->text();
    return {};
}

QString SheetsViewTest::preview() {
    return view->findChild<SheetPicture*>()->accessibleName();
}

void SheetsViewTest::expectFormShows(const DeckProject& project) {
    const SheetSettings& sheet = project.sheet;
    const QString orientations[] = {"Most cards per page", "Portrait", "Landscape"};
    EXPECT_EQ(chosen("Paper"), sheet.paper == Paper::a4 ? "A4" : "US Letter");
    EXPECT_EQ(chosen("Orientation"), orientations[int(sheet.orientation)]);
    EXPECT_EQ(number("Margins"), NumberField::print(sheet.marginMM, view->locale()));
    EXPECT_EQ(chosen("Cards"), sheet.spacing == Spacing::butted ? "Touching (one cut between cards)"
                                                                : "Apart (each with its own bleed)");
    EXPECT_EQ(isShown<NumberField>("Gap"), sheet.spacing == Spacing::separated);
    EXPECT_EQ(number("Gap"), NumberField::print(sheet.gutterMM, view->locale()));
    EXPECT_EQ(isChecked("Print the bleed"), sheet.includeBleed);
    EXPECT_EQ(isChecked("Cut marks"), sheet.cutMarks);
    EXPECT_EQ(isChecked("Double-sided: a back page after each front"), sheet.duplex);
    EXPECT_EQ(chosen("Flip on"), sheet.flip == DuplexFlip::longEdge ? "Long edge" : "Short edge");
    EXPECT_EQ(number("Back offset right"), NumberField::print(sheet.backOffsetXMM, view->locale()));
    EXPECT_EQ(number("Back offset down"), NumberField::print(sheet.backOffsetYMM, view->locale()));
    EXPECT_EQ(isShown<QComboBox>("Flip on"), sheet.duplex);
    EXPECT_EQ(isShown<NumberField>("Back offset right"), sheet.duplex);
    EXPECT_EQ(isShown<NumberField>("Back offset down"), sheet.duplex);
    EXPECT_EQ(isShown<QAbstractButton>("Print a Calibration Page…"), sheet.duplex);
    EXPECT_EQ(isChecked("Include the bleed"), project.imageBleed);
    EXPECT_EQ(chosen("Resolution"), QString::number(project.imageDPI) + " dpi");
}

}  // namespace quorvel
