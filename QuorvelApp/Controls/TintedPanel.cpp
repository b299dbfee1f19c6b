#include "Controls/TintedPanel.h"

#include "Controls/Style.h"

#include <QPainter>

namespace quorvel {

TintedPanel::TintedPanel(double opacity, QWidget* parent) : QWidget(parent), opacity_(opacity) {}

void TintedPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Style::panel(palette(), opacity_));
    painter.drawRoundedRect(rect(), Style::radius, Style::radius);
}

}  // namespace quorvel
