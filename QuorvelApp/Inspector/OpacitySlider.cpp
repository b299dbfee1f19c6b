#include "Inspector/OpacitySlider.h"

#include "Controls/Style.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace quorvel {

namespace {

constexpr QSize sliderSize(140, 24);
constexpr double knobRadius = 8;
constexpr double grooveHeight = 4;
constexpr int whole = 1000;  // places of the toolkit's slider, more than there are pixels
constexpr int keyStep = whole / 100;
constexpr int pageStepPlaces = whole / 10;

/// Says percents where the toolkit would say its places.
class Accessible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit Accessible(OpacitySlider* slider) : QAccessibleWidget(slider, QAccessible::Slider), slider_(*slider) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text text) const override {
        return text == QAccessible::Value ? slider_.spoken() : QAccessibleWidget::text(text);
    }
    QVariant currentValue() const override { return slider_.opacity(); }
    void setCurrentValue(const QVariant& value) override {
        slider_.setValue(int(std::lround(std::clamp(value.toDouble(), 0.0, 1.0) * whole)));
    }
    QVariant maximumValue() const override { return 1.0; }
    QVariant minimumValue() const override { return 0.0; }
    QVariant minimumStepSize() const override { return double(keyStep) / whole; }

private:
    OpacitySlider& slider_;
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* slider = qobject_cast<OpacitySlider*>(object);
    return slider ? new Accessible(slider) : nullptr;
}

}  // namespace

OpacitySlider::OpacitySlider(const QString& title, QWidget* parent) : QAbstractSlider(parent) {
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    static_cast<void>(installed);
    setAccessibleName(title);
    setOrientation(Qt::Horizontal);
    setRange(0, whole);
    setSingleStep(keyStep);
    setPageStep(pageStepPlaces);
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(sliderSize);
    setOpacity(opacity_);
}

void OpacitySlider::setOpacity(double opacity) {
    opacity_ = opacity;
    isShowing_ = true;
    setValue(int(std::lround(std::clamp(opacity, 0.0, 1.0) * whole)));
    isShowing_ = false;
    update();
}

void OpacitySlider::letGo() {
    setSliderDown(false);
}

QString OpacitySlider::spoken() const {
    return QString::number(qint64(std::clamp(opacity_ * 100, -1e9, 1e9))) + QStringLiteral(" percent");
}

QSize OpacitySlider::sizeHint() const {
    return sliderSize;
}

void OpacitySlider::sliderChange(SliderChange change) {
    QAbstractSlider::sliderChange(change);
    if (change != SliderValueChange || isShowing_) return;
    const double edited = double(value()) / whole;
    if (edited == opacity_) return;
    opacity_ = edited;
    Q_EMIT opacityEdited(edited);
}

double OpacitySlider::knobAt(double opacity) const {
    const double share = std::clamp(opacity, 0.0, 1.0);
    return knobRadius + (isRightToLeft() ? 1 - share : share) * (width() - 2 * knobRadius);
}

void OpacitySlider::dragTo(double x) {
    const double share = std::clamp((x - knobRadius) / (width() - 2 * knobRadius), 0.0, 1.0);
    setValue(int(std::lround((isRightToLeft() ? 1 - share : share) * whole)));
}

void OpacitySlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    setSliderDown(true);
    // Taken by the knob it stays where it is.
    grip_ = event->position().x() - knobAt(opacity_);
    if (std::abs(grip_) <= knobRadius) return;
    grip_ = 0;
    dragTo(event->position().x());
}

void OpacitySlider::mouseMoveEvent(QMouseEvent* event) {
    if (isSliderDown()) dragTo(event->position().x() - grip_);
}

void OpacitySlider::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) setSliderDown(false);
}

void OpacitySlider::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

void OpacitySlider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double middle = height() / 2.0;
    const double knob = knobAt(opacity_);
    const auto groove = [&](double from, double to, const QColor& color) {
        painter.setBrush(color);
        painter.drawRoundedRect(QRectF(from, middle - grooveHeight / 2, to - from, grooveHeight), grooveHeight / 2,
                                grooveHeight / 2);
    };
    const double start = knobRadius / 2;
    const double end = width() - knobRadius / 2;
    groove(start, end, Style::panel(palette(), 0.3));
    if (isEnabled()) groove(isRightToLeft() ? knob : start, isRightToLeft() ? end : knob, Style::accent(palette()));

    const QRectF disc(knob - knobRadius + 0.5, middle - knobRadius + 0.5, 2 * knobRadius - 1, 2 * knobRadius - 1);
    const bool dark = Style::isDark(palette());
    QStyleOption option;
    option.initFrom(this);
    const bool hasRing =
        option.state.testFlag(QStyle::State_HasFocus) && option.state.testFlag(QStyle::State_KeyboardFocusChange);
    painter.setPen(hasRing ? QPen(Style::accent(palette()), 2)
                           : QPen(dark ? Style::line(palette()) : palette().color(QPalette::Dark), 1));
    painter.setBrush(dark ? palette().color(QPalette::Button).lighter(isSliderDown() ? 260 : 230)
                          : palette().color(QPalette::Button).darker(isSliderDown() ? 106 : 100));
    painter.drawEllipse(hasRing ? disc.adjusted(0.5, 0.5, -0.5, -0.5) : disc);
}

}  // namespace quorvel
