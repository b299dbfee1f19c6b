#include "TemplateTab/CardBar.h"

#include "Cards/Markup.h"
#include "Controls/ElidedLabel.h"
#include "Controls/Style.h"
#include "Controls/SymbolButton.h"
#include "Controls/Wording.h"
#include "TemplateTab/SidePicker.h"

#include <QEvent>
#include <QHBoxLayout>
#include <algorithm>

namespace quorvel {

namespace {

constexpr int symbolSize = 14;

}  // namespace

CardBar::CardBar(AppModel& model, QWidget* parent) : QWidget(parent), model_(model) {
    previous_ = SymbolButton::inRow(u"chevron.left", "Previous Card", "Previous card", symbolSize);
    caption_ = new ElidedLabel(Qt::ElideRight);
    next_ = SymbolButton::inRow(u"chevron.right", "Next Card", "Next card", symbolSize);
    side_ = new SidePicker(model_);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(Style::medium, Style::medium, Style::medium, 0);
    row->setSpacing(Style::tight);
    row->addWidget(previous_);
    // The buttons stay where they are while one goes from card to card.
    row->addStretch(1);
    row->addWidget(caption_);
    row->addStretch(1);
    row->addWidget(next_);
    row->addSpacing(Style::small);
    row->addWidget(side_);
    connect(previous_, &SymbolButton::clicked, this, &CardBar::previousCard);
    connect(next_, &SymbolButton::clicked, this, &CardBar::nextCard);
    refresh();
}

void CardBar::refresh() {
    const std::int64_t count = cardCount();
    const std::int64_t index = model_.state()._canvasCard;
    const auto card = model_.canvasCardValue();
    caption_->setText(count == 0 ? QString("No cards yet: fields show their names")
                                 : QString("Card %1 of %2: ").arg(index + 1).arg(count) +
                                       (card ? text(Markup::plainText(card->title())) : QString()));
    caption_->setColor(count == 0 ? Style::secondary(palette()) : QColor());
    // Also at either end, where they do nothing: who goes on with the keyboard is not led astray.
    previous_->setEnabled(count > 0);
    next_->setEnabled(count > 0);
    side_->refresh();
}

void CardBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) refresh();
}

std::int64_t CardBar::cardCount() const {
    return std::int64_t(model_.state().open._deck->cards.size());
}

void CardBar::previousCard() {
    model_.setCanvasCard(std::max<std::int64_t>(model_.state()._canvasCard - 1, 0));
}

void CardBar::nextCard() {
    model_.setCanvasCard(std::min(model_.state()._canvasCard + 1, std::max<std::int64_t>(cardCount() - 1, 0)));
}

}  // namespace quorvel
