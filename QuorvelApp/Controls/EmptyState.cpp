#include "Controls/EmptyState.h"

#include "Controls/Style.h"
#include "Controls/SymbolLabel.h"
#include "Controls/Wording.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvel {

namespace {

constexpr int symbolSize = 44;
constexpr int textWidth = 420;

QLabel* wrappedLabel(QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    label->setTextFormat(Qt::PlainText);
    return label;
}

}  // namespace

EmptyState::EmptyState(const QString& symbol, const QString& title, QWidget* parent) : QWidget(parent) {
    // The texts wrap within a column of its own, whose width is known when its height is asked for.
    auto* middle = new QWidget(this);
    middle->setFixedWidth(textWidth);
    auto* whole = new QHBoxLayout(this);
    whole->setContentsMargins(Style::large, Style::large, Style::large, Style::large);
    whole->addStretch(1);
    whole->addWidget(middle);
    whole->addStretch(1);
    auto* column = new QVBoxLayout(middle);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addStretch(2);
    column->addWidget(new SymbolLabel(symbol, symbolSize, Style::secondary, middle), 0, Qt::AlignHCenter);
    column->addSpacing(Style::medium);

    auto* heading = wrappedLabel(middle);
    heading->setFont(Style::font(Style::TextSize::title3, QFont::DemiBold));
    heading->setText(title);
    column->addWidget(heading);

    description_ = wrappedLabel(middle);
    description_->setContentsMargins(0, Style::tight, 0, 0);
    description_->hide();
    Style::makeSecondary(description_);
    column->addWidget(description_);

    action_ = new QPushButton(middle);
    action_->setFocusPolicy(Qt::NoFocus);
    action_->hide();
    column->addSpacing(Style::large);
    column->addWidget(action_, 0, Qt::AlignHCenter);
    column->addStretch(3);
    connect(action_, &QPushButton::clicked, this, &EmptyState::activated);
}

void EmptyState::setDescription(const QString& description) {
    description_->setText(breakable(description));
    description_->setTextInteractionFlags(description.isEmpty() ? Qt::NoTextInteraction : Qt::TextSelectableByMouse);
    description_->setVisible(!description.isEmpty());
}

void EmptyState::setAction(const QString& text) {
    action_->setText(text);
    // Without words it is no control.
    action_->setFocusPolicy(text.isEmpty() ? Qt::NoFocus : Qt::StrongFocus);
    action_->setVisible(!text.isEmpty());
}

}  // namespace quorvel
