#pragma once

#include "SheetsTab/SheetsView.h"
#include "Support/Widgets/WindowTest.h"

#include <QLabel>
#include <QWidget>
#include <memory>
#include <optional>
#include <string>

namespace quorvel {

/// The view over a deck of 30 cards on the default paper: three pages of nine and one of three.
class SheetsViewTest : public WindowTest {
protected:
    static constexpr int cardCount = 30;

    std::unique_ptr<SheetsView> view;

    /// A header line and this many cards, each that often.
    static std::string table(int cards, int copies = 1);

    /// Opens a deck of so many cards and shows the view.
    void start(int cards = cardCount, int copies = 1);

    const DeckProject& project() { return *model.currentProject(); }
    const SheetSettings& sheet() { return project().sheet; }

    /// Changes the open deck's record as another part of the window does.
    template <class Change>
    void change(Change change) {
        DeckProject changed = project();
        change(changed);
        model.updateProject(std::move(changed));
    }
    /// A card that fits no paper.
    void makeCardTooBig();

    // What the user does.

    void choose(const QString& picker, const QString& option);
    void type(const QString& field, const QString& number);
    void click(const QString& button);
    void press(Qt::Key key, const QString& control);

    /// Turns the wheel over the middle of a widget, in eighths of a degree.
    static void wheel(QWidget& widget, QPoint turned);

    // What the user sees.

    QString chosen(const QString& picker);
    QString number(const QString& field);
    bool isChecked(const QString& box);
    bool isEnabled(const QString& button);
    /// Whether the control's row is in the form.
    template <class Widget>
    bool isShown(const QString& name) {
        const Widget* widget = find<Widget>(*view, name);
        return widget && widget->isVisibleTo(view.get());
    }
    /// Whether a label with this text is shown.
    bool reads(const QString& text);
    /// The label that begins so; empty without one.
    QString lineThatBegins(const QString& start);
    /// What a screen reader says of the sheet.
    QString preview();

    /// Every row of the form shows what is in the record.
    void expectFormShows(const DeckProject& project);
};

}  // namespace quorvel
