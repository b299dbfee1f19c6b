#pragma once

#include "Inspector/Inspector.h"
#include "Support/Widgets/WindowTest.h"

#include <QStackedLayout>
#include <QTest>
#include <QWidget>
#include <memory>
#include <optional>
#include <string>

class QAbstractButton;
class QColorDialog;
class QMenu;

namespace quorvel {

class ColorWell;
class OptionalColor;
class RuleRow;

/// The inspector over a deck of three cards.
class InspectorTest : public WindowTest {
protected:
    std::unique_ptr<Inspector> inspector;

    void SetUp() override { start(); }

    /// Opens the deck and shows the inspector, as wide as it is at first.
    void start();

    const CardTemplate& design() { return model.template_(); }
    const Layer& layer() { return *model.selectedLayerValue(); }

    /// Adds a layer and selects it.
    void add(LayerKind kind) { model.addLayer(kind); }
    /// Changes the selected layer as another part of the window does.
    template <class Change>
    void change(Change change) {
        Layer changed = layer();
        change(changed);
        model.updateLayer(changed);
    }
    /// Changes the design as another part of the window does.
    template <class Change>
    void changeDesign(Change change) {
        CardTemplate changed = design();
        change(changed);
        model.setTemplate(std::move(changed));
    }

    /// The form that is shown.
    QWidget& page() { return *inspector->findChild<QStackedLayout*>()->currentWidget(); }
    /// The row of a rule, from 0.
    RuleRow& rule(int index);
    int ruleCount();

    // What the user does.

    void click(const QString& button) { click(button, page()); }
    void click(const QString& button, QWidget& where);
    void choose(const QString& picker, const QString& option) { choose(picker, option, page()); }
    void choose(const QString& picker, const QString& option, QWidget& where);
    /// Types over what a field holds, and presses Return.
    void type(const QString& field, const QString& words) { type(field, words, page()); }
    void type(const QString& field, const QString& words, QWidget& where);
    /// Opens the colour dialog of a well, types a colour as a web page writes it, and closes the dialog.
    void pick(const QString& well, const QString& color) { pick(well, color, page()); }
    void pick(const QString& well, const QString& color, QWidget& where);
    /// Chooses from the menu of a button.
    void chooseInMenu(const QString& button, const QString& entry);

    QAbstractButton* button(const QString& name, QWidget& where);
    QMenu* menuOf(const QString& button);

    // What the user sees.

    QString chosen(const QString& picker) { return chosen(picker, page()); }
    QString chosen(const QString& picker, QWidget& where);
    QStringList options(const QString& picker, QWidget& where);
    QString typed(const QString& field) { return typed(field, page()); }
    QString typed(const QString& field, QWidget& where);
    QStringList entriesOf(const QString& button);
    /// What is written in the form, from top to bottom: titles, labels, controls that name themselves, footers.
    QStringList words();
    bool reads(const QString& words);
    /// Whether the row of a control is in the form.
    bool isShown(QWidget* control) { return control && control->isVisibleTo(inspector.get()); }
    static QColorDialog* openDialog();

    /// How often the design was changed since.
    std::size_t steps() const { return undo->undoCount(); }
};

}  // namespace quorvel
