#include "SheetsTab/WarningLabel.h"

#include "Controls/Style.h"
#include "Controls/SymbolLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>

namespace quorvel {

namespace {

constexpr int symbolSize = 16;

}  // namespace

WarningLabel::WarningLabel(const QString& text, QWidget* parent) : QWidget(parent), text_(new QLabel(text)) {
    text_->setWordWrap(true);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Style::small);
    row->addWidget(new SymbolLabel(QStringLiteral("exclamationmark.triangle"), symbolSize, Style::warning), 0,
                   Qt::AlignTop);
    row->addWidget(text_, 1);
    tint();
}

void WarningLabel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) tint();
}

void WarningLabel::tint() {
    QPalette colors = text_->palette();
    colors.setColor(QPalette::WindowText, Style::warning(palette()));
    text_->setPalette(colors);
}

}  // namespace quorvel
