#include "Controls/Spinner.h"

#include "Controls/Style.h"

#include <QPainter>
#include <QTimerEvent>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace quorvel {

namespace {

constexpr int spokes = 8;
constexpr int millisecondsPerSpoke = 100;

}  // namespace

Spinner::Spinner(QWidget* parent, int size) : QWidget(parent), size_(size) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Spinner::sizeHint() const {
    return {size_, size_};
}

void Spinner::paint(QPainter& painter, const QRectF& rect, const QColor& color, double turn) {
    const double radius = std::min(rect.width(), rect.height()) / 2;
    const double stroke = radius / 4;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect.center());
    for (int spoke = 0; spoke < spokes; ++spoke) {
        // The strongest spoke leads, the others fade behind it.
        const double behind = std::fmod(turn * spokes - spoke + 2.0 * spokes, double(spokes)) / spokes;
        QColor faded = color;
        faded.setAlphaF(float(color.alphaF() * (1 - 0.8 * behind)));
        const double angle = 2 * std::numbers::pi * spoke / spokes;
        const QPointF direction(std::sin(angle), -std::cos(angle));
        painter.setPen(QPen(faded, stroke, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(direction * (radius * 0.5), direction * (radius - stroke / 2));
    }
    painter.restore();
}

void Spinner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRectF place((width() - size_) / 2.0, (height() - size_) / 2.0, size_, size_);
    paint(painter, place, Style::secondary(palette()), turn_);
}

void Spinner::timerEvent(QTimerEvent* event) {
    if (event->timerId() != timer_) return QWidget::timerEvent(event);
    turn_ = std::fmod(turn_ + 1.0 / spokes, 1.0);
    update();
}

void Spinner::showEvent(QShowEvent*) {
    if (timer_ == 0 && !Style::reduceMotion()) timer_ = startTimer(millisecondsPerSpoke);
}

void Spinner::hideEvent(QHideEvent*) {
    if (timer_ != 0) killTimer(timer_);
    timer_ = 0;
}

}  // namespace quorvel
