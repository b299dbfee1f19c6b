#include "DataTab/FileRow.h"

#include "Controls/ElidedLabel.h"
#include "Controls/Style.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextDocument>

namespace quorvel {

FileRow::FileRow(QWidget* parent)
    : QWidget(parent),
      name_(new ElidedLabel(Qt::ElideMiddle, this)),
      sentence_(new QLabel(this)),
      nameLine_(new QHBoxLayout),
      buttons_(new QHBoxLayout) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(Style::small);
    nameLine_->setSpacing(Style::small);
    // At the end of the line, above the buttons, however short it is.
    nameLine_->addStretch(1);
    nameLine_->addWidget(name_);
    lines->addLayout(nameLine_);
    sentence_->setTextFormat(Qt::PlainText);
    sentence_->setWordWrap(true);
    sentence_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Style::makeSecondary(sentence_);
    sentence_->hide();
    lines->addWidget(sentence_);
    buttons_->setSpacing(Style::small);
    buttons_->addStretch(1);
    lines->addLayout(buttons_);
}

void FileRow::setName(const QString& name, Look look, const QString& trouble) {
    name_->setText(name);
    name_->setAccessibleDescription(trouble);
    // As rich text, since a sentence may hold a file name that looks like it.
    setToolTip(trouble.isEmpty() ? QString() : Qt::convertFromPlainText(trouble, Qt::WhiteSpaceNormal));
    look_ = look;
    color();
    name_->setVisible(!name.isEmpty());
    sentence_->hide();
}

void FileRow::setSentence(const QString& sentence) {
    sentence_->setText(sentence);
    sentence_->show();
    name_->hide();
}

void FileRow::addSign(QWidget* sign) {
    nameLine_->addWidget(sign);
}

QPushButton* FileRow::addButton(const QString& title, const QString& accessibleName) {
    auto* button = new QPushButton(title, this);
    button->setAccessibleName(accessibleName);
    buttons_->addWidget(button);
    return button;
}

void FileRow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) color();
}

void FileRow::color() {
    name_->setColor(look_ == Look::warning ? Style::warning(palette()) : QColor());
}

}  // namespace quorvel
