#include "TemplateTab/EyeButton.h"

#include "Controls/QuietShapes.h"
#include "Controls/Symbols.h"

#include <QPainter>

namespace quorvel {

namespace {

constexpr int symbolSize = 16;
constexpr int side = 24;
constexpr double hoverOpacity = 0.1;
constexpr double pressedOpacity = 0.2;

}  // namespace

EyeButton::EyeButton(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void EyeButton::showLayer(const QString& name, bool hidden) {
    hidden_ = hidden;
    setToolTip(hidden ? "Show layer" : "Hide layer");
    setAccessibleName((hidden ? "Show " : "Hide ") + name);
    update();
}

void EyeButton::setColor(const QColor& color) {
    if (color == color_) return;
    color_ = color;
    update();
}

QSize EyeButton::sizeHint() const {
    return {side, side};
}

void EyeButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (isDown() || underMouse()) {
        QColor veil = color_;
        veil.setAlphaF(float(isDown() ? pressedOpacity : hoverOpacity));
        QuietShapes::drawBox(painter, rect(), QuietShapes::corner, veil, {});
    }
    if (hasFocus()) QuietShapes::drawRing(painter, rect(), QuietShapes::corner, color_);
    const QPoint corner((width() - symbolSize) / 2, (height() - symbolSize) / 2);
    const QString symbol = hidden_ ? "eye.slash" : "eye";
    painter.drawPixmap(corner, Symbols::pixmap(symbol, symbolSize, color_, devicePixelRatio()));
}

}  // namespace quorvel
