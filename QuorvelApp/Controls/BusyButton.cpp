#include "Controls/BusyButton.h"

#include "Controls/Spinner.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace quorvel {

BusyButton::BusyButton(const QString& words, QWidget* parent)
    : QPushButton(words, parent), spinner_(new Spinner(this)) {
    spinner_->resize(spinner_->sizeHint());
    spinner_->hide();
}

void BusyButton::setBusy(bool busy) {
    if (busy == busy_) return;
    busy_ = busy;
    setEnabled(!busy);
    spinner_->setVisible(busy);
    update();
}

void BusyButton::paintEvent(QPaintEvent* event) {
    if (!busy_) return QPushButton::paintEvent(event);
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);
}

void BusyButton::resizeEvent(QResizeEvent* event) {
    QPushButton::resizeEvent(event);
    QRect place = spinner_->rect();
    place.moveCenter(rect().center());
    spinner_->move(place.topLeft());
}

}  // namespace quorvel
