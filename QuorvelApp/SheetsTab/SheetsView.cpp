#include "SheetsTab/SheetsView.h"

#include "SheetsTab/PrintForm.h"
#include "SheetsTab/SheetPreview.h"

#include <QHBoxLayout>
#include <QShowEvent>
#include <QSplitter>

namespace quorvel {

namespace {

constexpr int formMinimum = 320;
constexpr int formIdeal = 350;
constexpr int formMaximum = 420;
constexpr int previewMinimum = 400;

}  // namespace

SheetsView::SheetsView(AppModel& model, QWidget* parent)
    : QWidget(parent), model_(model), form_(new PrintForm(model)), preview_(new SheetPreview(model)) {
    form_->setMinimumWidth(formMinimum);
    form_->setMaximumWidth(formMaximum);
    preview_->setMinimumWidth(previewMinimum);

    auto* columns = new QSplitter(Qt::Horizontal);
    columns->setChildrenCollapsible(false);
    columns->setHandleWidth(1);
    columns->addWidget(form_);
    columns->addWidget(preview_);
    columns->setStretchFactor(0, 0);
    columns->setStretchFactor(1, 1);
    columns->setSizes({formIdeal, previewMinimum});

    auto* whole = new QHBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(columns);

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
