#include "TemplateTab/TemplateEditor.h"

#include "Controls/QtImage.h"
#include "Controls/Style.h"
#include "Controls/Symbols.h"
#include "Controls/Wording.h"
#include "TemplateTab/CardPicture.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace quorvel {

TemplateEditor::TemplateEditor(AppModel& model, QWidget* parent) : QWidget(parent), model_(model) {
    picture_ = new CardPicture;
    which_ = new QLabel;
    which_->setAlignment(Qt::AlignCenter);
    which_->setTextFormat(Qt::PlainText);
    const auto makeStep = [this](QStringView symbol, const QString& name, int by) {
        auto* button = new QToolButton;
        button->setIcon(Symbols::icon(symbol));
        button->setAccessibleName(name);
        button->setToolTip(name);
        button->setAutoRaise(true);
        connect(button, &QToolButton::clicked, this,
                [this, by] { model_.setCanvasCard(model_.state()._canvasCard + by); });
        return button;
    };
    previous_ = makeStep(u"chevron.left", "Previous Card", -1);
    next_ = makeStep(u"chevron.right", "Next Card", 1);
    chooser_ = new QWidget;
    auto* row = new QHBoxLayout(chooser_);
    row->setContentsMargins(Style::small, Style::small, Style::small, Style::small);
    row->addStretch();
    row->addWidget(previous_);
    row->addWidget(which_);
    row->addWidget(next_);
    row->addStretch();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(picture_, 1);
    column->addWidget(chooser_);

    subscription_ = model_.subscribe([this](Changes changes) { refresh(changes); });
    refresh({~0U});
}

void TemplateEditor::refresh(Changes changes) {
    if (changes.has(Change::canvas)) {
        const auto& image = model_.state()._canvasImage;
        picture_->setImage(image ? toQImage(*image) : QImage());
    }
    if (changes.has(Change::editing) || changes.has(Change::openDeck) || changes.has(Change::decks)) showCard();
}

void TemplateEditor::showCard() {
    const std::int64_t count = std::int64_t(model_.state().open._deck->cards.size());
    const std::int64_t index = model_.state()._canvasCard;
    chooser_->setVisible(count > 0);
    previous_->setEnabled(index > 0);
    next_->setEnabled(index + 1 < count);
    which_->setText(QString("Card %1 of %2").arg(index + 1).arg(count));
    picture_->setAccessibleName(count > 0 ? which_->text() : "The card’s design");
}

}  // namespace quorvel
