#include "CardsTab/CardsHeader.h"

#include "Controls/Style.h"
#include "Controls/Wording.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>
#include <chrono>

namespace quorvel {

CardsHeader::CardsHeader(AppModel& model, QWidget* parent) : QWidget(parent), model_(model) {
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(Style::large);
    auto* const words = new QVBoxLayout;
    words->setSpacing(Style::hair);
    title_ = new QLabel(this);
    title_->setFont(Style::font(Style::TextSize::title3, QFont::DemiBold));
    origin_ = new QLabel(this);
    origin_->setFont(Style::font(Style::TextSize::callout));
    Style::makeSecondary(origin_);
    for (QLabel* label : {title_, origin_}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        words->addWidget(label);
    }
    line->addLayout(words, 1);
    auto* const print = new QPushButton(QStringLiteral("Export Print Sheets…"), this);
    connect(print, &QPushButton::clicked, this, [this] { model_.export_(ExportKind::sheets); });
    line->addWidget(print, 0, Qt::AlignTop);
    refresh();
}

void CardsHeader::refresh() {
    const OpenDeck& open = model_.state().open;
    title_->setText(title(*open._deck));
    const DeckProject* const project = model_.currentProject();
    origin_->setText(project ? breakable(origin(*project, open)) : QString());
    origin_->setVisible(!origin_->text().isEmpty());
}

QString CardsHeader::title(const Deck& deck) {
    return QStringLiteral("%1 cards, %2 with copies").arg(deck.cards.size()).arg(Deck::totalCopies(deck.cards));
}

QString CardsHeader::origin(const DeckProject& project, const OpenDeck& open) {
    if (!open._lastLoaded || !project.source) return {};
    const auto since1970 = std::chrono::duration_cast<std::chrono::milliseconds>(open._lastLoaded->time_since_epoch());
    const QTime time = QDateTime::fromMSecsSinceEpoch(since1970.count()).time();
    return QStringLiteral("From “") + text(project.source->name) + QStringLiteral("”, read at ") +
           QLocale().toString(time, QLocale::ShortFormat) +
           QStringLiteral(". Save the spreadsheet and the preview updates.");
}

}  // namespace quorvel
