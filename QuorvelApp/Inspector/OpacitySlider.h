#pragma once

#include <QAbstractSlider>

namespace quorvel {

/// How much of a layer is seen, from 0 to 1, without steps. A press anywhere takes the knob there; the wheel is left to
/// the form. A screen reader says the percentage.
class OpacitySlider : public QAbstractSlider {
    Q_OBJECT
public:
    /// `title` is the accessible name.
    explicit OpacitySlider(const QString& title, QWidget* parent = nullptr);

    /// Shows the model's value.
    void setOpacity(double opacity);
    double opacity() const { return opacity_; }

    /// Ends a drag, for owners whose opacity became that of another thing.
    void letGo();

    /// "45 percent": the whole part of it.
    QString spoken() const;

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user has moved it: one for every place on the way.
    void opacityEdited(double opacity);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void sliderChange(SliderChange change) override;

private:
    /// The middle of the knob, from the left.
    double knobAt(double opacity) const;
    void dragTo(double x);

    double opacity_ = 1;
    double grip_ = 0;  ///< how far right of its middle the knob was taken
    bool isShowing_ = false;
};

}  // namespace quorvel
