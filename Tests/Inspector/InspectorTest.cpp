#include "InspectorTest.h"

#include "Controls/NumberField.h"
#include "Inspector/ColorWell.h"
#include "Inspector/ContentEditor.h"
#include "Inspector/RuleRow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>

namespace quorvel {

void InspectorTest::start() {
    open("cards.csv", "Title,Type,Power & Glory\nPear,Fruit,3\nOak,Tree,7\nElm,Tree,2\n");
    model.selectLayer(std::nullopt);
    inspector = std::make_unique<Inspector>(model);
    inspector->setLocale(QLocale::c());  // whatever that of the user is
    show(*inspector, {320, 900});
    settle();
    undo->removeAllActions();
}

RuleRow& InspectorTest::rule(int index) {
    for (RuleRow* row : page().findChildren<RuleRow*>())
        if (!row->isHidden() && row->accessibleName() == QString("Rule %1").arg(index + 1)) return *row;
    throw std::out_of_range("no such rule");
}

int InspectorTest::ruleCount() {
    const auto rows = page().findChildren<RuleRow*>();
    return int(std::ranges::count_if(rows, [](const RuleRow* row) { return !row->isHidden(); }));
}

void InspectorTest::click(const QString& button, QWidget& where) {
    QTest::mouseClick(this->button(button, where), Qt::LeftButton, {}, {8, 8});
}

QAbstractButton* InspectorTest::button(const QString& name, QWidget& where) {
    // The colour behind a check box has its name, too.
    for (auto* each : where.findChildren<QAbstractButton*>())
        if (nameOf(*each) == name && !qobject_cast<ColorWell*>(each)) return each;
    ADD_FAILURE() << "no button is called " << name.toStdString();
    return nullptr;
}

void InspectorTest::choose(const QString& picker, const QString& option, QWidget& where) {
    auto* box = find<QComboBox>(where, picker);
    const int wanted = box->findText(option);
    ASSERT_GE(wanted, 0) << option.toStdString();
    box->setFocus();
    if (box->currentIndex() < 0) QTest::keyClick(box, Qt::Key_Home);
    while (box->currentIndex() != wanted)
        QTest::keyClick(box, box->currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
}

void InspectorTest::type(const QString& field, const QString& words, QWidget& where) {
    auto* input = find<QLineEdit>(where, field);
    input->setFocus();
    input->selectAll();
    QTest::keyClicks(input, words);
    QTest::keyClick(input, Qt::Key_Return);
}

void InspectorTest::pick(const QString& well, const QString& color, QWidget& where) {
    QTest::mouseClick(find<ColorWell>(where, well), Qt::LeftButton);
    QColorDialog* dialog = openDialog();
    ASSERT_TRUE(dialog);
    for (QLineEdit* field : dialog->findChildren<QLineEdit*>()) {
        if (!field->text().startsWith(u'#')) continue;
        field->selectAll();
        QTest::keyClicks(field, color);
    }
    dialog->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void InspectorTest::chooseInMenu(const QString& button, const QString& entry) {
    QMenu* menu = menuOf(button);
    ASSERT_TRUE(menu);
    menu->popup({0, 0});
    for (QAction* action : menu->actions())
        if (action->text() == entry) {
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            return;
        }
    FAIL() << "no entry is called " << entry.toStdString();
}

QMenu* InspectorTest::menuOf(const QString& button) {
    QAbstractButton* opener = find<QAbstractButton>(page(), button);
    if (auto* tool = qobject_cast<QToolButton*>(opener)) return tool->menu();
    auto* push = qobject_cast<QPushButton*>(opener);
    return push ? push->menu() : nullptr;
}

QStringList InspectorTest::entriesOf(const QString& button) {
    QMenu* menu = menuOf(button);
    if (!menu) return {};
    menu->popup({0, 0});
    QStringList entries;
    for (const QAction* action : menu->actions()) entries += action->text();
    menu->close();
    return entries;
}

QString InspectorTest::chosen(const QString& picker, QWidget& where) {
    const auto* box = find<QComboBox>(where, picker);
    return box->currentIndex() < 0 ? box->placeholderText() : box->currentText();
}

QStringList InspectorTest::options(const QString& picker, QWidget& where) {
    QStringList options;
    const auto* box = find<QComboBox>(where, picker);
    for (int index = 0; index < box->count(); ++index) options += box->itemText(index);
    return options;
}

QString InspectorTest::typed(const QString& field, QWidget& where) {
    return find<QLineEdit>(where, field)->text();
}

QStringList InspectorTest::words() {
    std::vector<std::pair<int, QString>> found;
    const auto add = [&](const QWidget& widget, const QString& words) {
        // Parts of a control, as the unit of a number, stand beside others.
        if (!widget.isVisibleTo(inspector.get()) || words.isEmpty()) return;
        found.emplace_back(
            widget.mapTo(inspector.get(), QPoint()).y() * 1000 + widget.mapTo(inspector.get(), QPoint()).x(), words);
    };
    for (const auto* label : page().findChildren<QLabel*>())
        add(*label, label->accessibleName().isEmpty() ? label->text() : label->accessibleName());
    for (const auto* box : page().findChildren<QCheckBox*>()) add(*box, box->text());
    for (const auto* button : page().findChildren<QPushButton*>()) add(*button, button->text());
    for (const auto* button : page().findChildren<QToolButton*>()) add(*button, button->text());
    for (const auto* editor : page().findChildren<ContentEditor*>()) add(*editor, editor->accessibleName());
    std::ranges::sort(found);
    QStringList words;
    for (const auto& [place, each] : found) words += each;
    return words;
}

bool InspectorTest::reads(const QString& words) {
    return std::ranges::any_of(page().findChildren<QLabel*>(), [&](const QLabel* label) {
        return label->isVisibleTo(inspector.get()) && (label->text() == words || label->accessibleName() == words);
    });
}

QColorDialog* InspectorTest::openDialog() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* dialog = qobject_cast<QColorDialog*>(window); dialog && dialog->isVisible()) return dialog;
    return nullptr;
}

}  // namespace quorvel
