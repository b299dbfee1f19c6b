#include "TemplateTab/CardCanvas.h"

#include "Controls/Style.h"
#include "TemplateTab/CardBar.h"
#include "TemplateTab/CardSurface.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>
#include <functional>

namespace quorvel {

namespace {

constexpr int betweenOptions = 16;
const std::string on = "true";
const std::string off = "false";

/// A check box whose state is kept under `key`; it is on until the user turns it off.
QCheckBox* makeOption(const QString& title, const QString& tip, Desktop& desktop, const std::string& key,
                      const std::function<void(bool)>& show) {
    auto* box = new QCheckBox(title);
    box->setFont(Style::font(Style::TextSize::callout));
    box->setToolTip(tip);
    box->setChecked(desktop.userDefault(key) != off);
    show(box->isChecked());
    QObject::connect(box, &QCheckBox::toggled, box, [&desktop, key, show](bool checked) {
        desktop.setUserDefault(key, checked ? on : off);
        show(checked);
    });
    return box;
}

}  // namespace

CardCanvas::CardCanvas(AppModel& model, Desktop& desktop, QWidget* parent) : QWidget(parent), model_(model) {
    setMinimumWidth(narrowest);
    bar_ = new CardBar(model_);
    surface_ = new CardSurface(model_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(bar_);
    column->addWidget(surface_, 1);
    column->addWidget(makeOptions(desktop));
    subscription_ = model_.subscribe([this](Changes changes) { refresh(changes); });
}

QWidget* CardCanvas::makeOptions(Desktop& desktop) {
    auto* options = new QWidget;
    auto* row = new QHBoxLayout(options);
    row->setContentsMargins(Style::medium, 0, Style::medium, Style::medium);
    row->setSpacing(betweenOptions);
    row->addStretch();
    row->addWidget(makeOption("Guides",
                              "The cut line (red) and the safe zone (blue dashes); outside the cut line is bleed",
                              desktop, "showGuides", [this](bool shown) { surface_->setGuides(shown); }));
    row->addWidget(
        makeOption("Outlines", "Dashed outlines around every layer", desktop, "showOutlines",
                   [this](bool shown) { surface_->setOutlines(shown ? Outlines::all : Outlines::selectedOnly); }));
    row->addStretch();
    return options;
}

void CardCanvas::refresh(Changes changes) {
    surface_->refresh(changes);
    const bool otherCards = changes.has(Change::openDeck) || changes.has(Change::selection);
    if (otherCards || changes.has(Change::decks) || changes.has(Change::editing)) bar_->refresh();
}

void CardCanvas::focusInEvent(QFocusEvent*) {
    surface_->setFocus();
}

void CardCanvas::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Style::underPage(palette()));
}

}  // namespace quorvel
