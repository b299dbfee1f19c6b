#include "Shell/Alert.h"

#include "Controls/ScreenReader.h"
#include "Controls/Style.h"
#include "Controls/Wording.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvel {
namespace {

constexpr int width = 360;
constexpr int longestPiece = 20;  // of a name in the title, however wide its letters are

QLabel* makeText(const QFont& font) {
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setFont(font);
    label->setFixedWidth(width);
    return label;
}

}  // namespace

Alert::Alert(const QString& message, const QString& information, QWidget* window) : QDialog(window) {
    ScreenReader::makeAlert(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    setWindowTitle(message);
    setAccessibleName(message);
    auto* title = makeText(Style::font(Style::TextSize::title3, QFont::DemiBold));
    title->setText(breakable(message, longestPiece));
    information_ = makeText(Style::font(Style::TextSize::body));
    // Errors are told to others.
    information_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    buttons_ = new QDialogButtonBox;
    connect(buttons_, &QDialogButtonBox::clicked, this, &QDialog::accept);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Style::large, Style::large, Style::large, Style::large);
    column->setSpacing(Style::small);
    column->addWidget(title);
    column->addWidget(information_);
    column->addSpacing(Style::small);
    column->addWidget(buttons_);
    column->setSizeConstraint(QLayout::SetFixedSize);
    setInformation(information);
}

void Alert::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    ScreenReader::speak(this);
}

void Alert::setInformation(const QString& information) {
    information_->setText(breakable(information));
    setAccessibleDescription(information);
    if (isVisible()) ScreenReader::speak(this);
}

QPushButton* Alert::addButton(const QString& words, QDialogButtonBox::ButtonRole role, Answer answer) {
    QPushButton* button = buttons_->addButton(words, role);
    button->setAutoDefault(false);
    button->setDefault(answer == Answer::default_);
    if (answer == Answer::default_) button->setFocus();
    return button;
}

}  // namespace quorvel
