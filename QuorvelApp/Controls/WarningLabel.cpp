#include "Controls/WarningLabel.h"

#include "Controls/Style.h"
#include "Controls/SymbolLabel.h"

#include <QHBoxLayout>
#include <QLabel>

namespace quorvel {

namespace {

constexpr int symbolSize = 16;

}  // namespace

WarningLabel::WarningLabel(const QString& text, QWidget* parent) : QWidget(parent) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    Style::makeWarning(label);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Style::small);
    row->addWidget(new SymbolLabel(QStringLiteral("exclamationmark.triangle"), symbolSize, Style::warning), 0,
                   Qt::AlignTop);
    row->addWidget(label, 1);
}

}  // namespace quorvel
