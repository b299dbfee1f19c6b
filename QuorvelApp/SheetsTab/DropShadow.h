#pragma once

#include <QRectF>

class QColor;
class QPainter;

namespace quorvel {

/// The soft shadow of a rectangle, in logical pixels; what lies below the rectangle itself may be left out.
struct DropShadow {
    double radius = 6;  ///< how far it blurs
    QPointF offset{0, 2};
    double opacity = 0.25;  ///< of black

    void paint(QPainter& painter, const QRectF& rect) const;
};

}  // namespace quorvel
