#pragma once

#include <QWidget>

namespace quorvel {

/// The small sign that something is under way. Turns only while it is seen, and stands still for users who asked for
/// less motion.
class Spinner : public QWidget {
    Q_OBJECT
public:
    explicit Spinner(QWidget* parent = nullptr, int size = 16);

    QSize sizeHint() const override;

    /// Draws one at rest into `rect`, for places that are painted rather than built of widgets. `turn` from 0 to 1.
    static void paint(QPainter& painter, const QRectF& rect, const QColor& color, double turn);

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    int size_;
    int timer_ = 0;
    double turn_ = 0;
};

}  // namespace quorvel
