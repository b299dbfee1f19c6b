#include "Controls/LinkButton.h"

#include "Controls/Style.h"

#include <QKeyEvent>
#include <QPainter>

namespace quorvel {

LinkButton::LinkButton(const QString& text, QWidget* parent) : QAbstractButton(parent) {
    setText(text);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const {
    return fontMetrics().size(Qt::TextSingleLine, text()) + QSize(2 * Style::hair, 2 * Style::hair);
}

void LinkButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor color = palette().color(QPalette::Link);
    if (isDown()) color.setAlphaF(0.7f);
    QFont font = this->font();
    font.setUnderline(underMouse());
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(rect().adjusted(Style::hair, Style::hair, -Style::hair, -Style::hair),
                     Qt::AlignLeft | Qt::AlignVCenter, text());
    if (!hasFocus()) return;
    painter.setPen(QPen(Style::accent(palette()), 1.5));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.75, 0.75, -0.75, -0.75), Style::tight, Style::tight);
}

void LinkButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
    QAbstractButton::keyPressEvent(event);
}

void LinkButton::enterEvent(QEnterEvent*) {
    update();
}

void LinkButton::leaveEvent(QEvent*) {
    update();
}

}  // namespace quorvel
