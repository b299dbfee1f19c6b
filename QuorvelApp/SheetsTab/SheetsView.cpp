#include "SheetsTab/SheetsView.h"

#include "Controls/SideColumn.h"
#include "SheetsTab/PrintForm.h"
#include "SheetsTab/SheetPreview.h"

#include <QHBoxLayout>
#include <QShowEvent>

namespace quorvel {

namespace {

constexpr SideColumn::Widths formWidths{.least = 320, .ideal = 350, .most = 420};
constexpr int narrowestPreview = 400;

}  // namespace

SheetsView::SheetsView(AppModel& model, QWidget* parent)
    : QWidget(parent), model_(model), form_(new PrintForm(model)), preview_(new SheetPreview(model)) {
    auto* whole = new QHBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(new SideColumn(form_, formWidths, preview_, narrowestPreview));

    form_->refresh();
    preview_->refresh();
    subscription_ = model_.subscribe([this](Changes changes) { refresh(changes); });
}

void SheetsView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (event->spontaneous()) return;  // the window comes back, nothing was hidden
    form_->refresh();
    preview_->refresh();
    model_.refreshSheet();
}

void SheetsView::refresh(Changes changes) {
    // What was typed for one deck must not reach another.
    if (changes.has(Change::selection)) form_->dropTyping();
    if (!isVisible()) return;
    const bool record = changes.has(Change::decks) || changes.has(Change::selection) || changes.has(Change::openDeck);
    if (record) form_->refresh();
    if (record || changes.has(Change::sheet) || changes.has(Change::editing)) preview_->refresh();
}

}  // namespace quorvel
