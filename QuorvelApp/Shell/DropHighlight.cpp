#include "Shell/DropHighlight.h"

#include "Controls/Style.h"

#include <QPainter>

namespace quorvel {

DropHighlight::DropHighlight(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void DropHighlight::cover(const QRect& place) {
    setGeometry(place);
    raise();
    show();
}

void DropHighlight::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor tint = Style::accent(palette());
    painter.setPen(QPen(tint, 3));
    tint.setAlphaF(0.06F);
    painter.setBrush(tint);
    painter.drawRoundedRect(QRectF(rect()).adjusted(3.5, 3.5, -3.5, -3.5), Style::radius, Style::radius);
}

}  // namespace quorvel
