#pragma once

#include <QImage>
#include <QPointF>
#include <QRectF>

class QPainter;

namespace quorvel {

/// The soft black shadow of a rounded rectangle, sharp at every scale of the screen. Keeps its corners drawn, so that
/// painting it again, around rectangles of any size, costs little.
class SoftShadow {
public:
    /// Lengths in logical pixels.
    struct Look {
        double radius = 6;  ///< how far it blurs, above 0: twice the deviation of the Gaussian
        QPointF offset{0, 2};
        double opacity = 0.25;
        double cornerRadius = 0;  ///< of the rectangle
    };

    SoftShadow() = default;
    explicit SoftShadow(const Look& look) : look_(look) {}

    /// Around and below the rectangle, which is drawn over it.
    void paint(QPainter& painter, const QRectF& rect);

private:
    /// Draws the shadow of a rectangle of `shape` pixels into `image_`, unless that is what it has.
    void prepare(QSize shape, double scale);

    Look look_;
    QImage image_;  ///< of the smallest rectangle that has all there is to see
    QSize shape_;
    double scale_ = 0;
};

}  // namespace quorvel
