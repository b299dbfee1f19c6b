#include "SheetsTab/SegmentedPicker.h"

#include "Controls/Style.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QPainter>

namespace quorvel {

namespace {

constexpr int height = 26;
constexpr double trackRadius = 6;
constexpr double trackOpacity = 0.16;

/// One of the options: a raised tile while it is chosen.
class Segment : public QAbstractButton {
public:
    explicit Segment(const QString& title) {
        setText(title);
        setCheckable(true);
        setFocusPolicy(Qt::StrongFocus);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override {
        return {fontMetrics().horizontalAdvance(text()) + 2 * Style::medium, quorvel::height - 2 * Style::hair};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF tile = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        const double radius = trackRadius - Style::hair;
        if (isChecked()) {
            painter.setPen(QPen(Style::panel(palette(), 2 * trackOpacity), 1));
            painter.setBrush(palette().color(Style::isDark(palette()) ? QPalette::Mid : QPalette::Base));
            painter.drawRoundedRect(tile, radius, radius);
        }
        if (hasFocus() && byKeyboard_) {
            painter.setPen(QPen(Style::accent(palette()), Style::hair));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(tile.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
        }
        painter.setPen(isChecked() ? palette().color(QPalette::WindowText) : Style::secondary(palette()));
        painter.drawText(rect(), Qt::AlignCenter, text());
    }

    void focusInEvent(QFocusEvent* event) override {
        byKeyboard_ = event->reason() != Qt::MouseFocusReason;
        QAbstractButton::focusInEvent(event);
    }

private:
    bool byKeyboard_ = false;
};

}  // namespace

SegmentedPicker::SegmentedPicker(const QString& title, const QStringList& options, QWidget* parent)
    : QWidget(parent), options_(new QButtonGroup(this)) {
    setAccessibleName(title);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(Style::hair, Style::hair, Style::hair, Style::hair);
    row->setSpacing(Style::hair);
    for (const QString& option : options) {
        auto* segment = new Segment(option);
        options_->addButton(segment, int(options_->buttons().size()));
        row->addWidget(segment);
    }
    setCurrentIndex(0);
    connect(options_, &QButtonGroup::idClicked, this, &SegmentedPicker::activated);
}

void SegmentedPicker::setCurrentIndex(int index) {
    if (QAbstractButton* option = options_->button(index)) option->setChecked(true);
}

int SegmentedPicker::currentIndex() const {
    return options_->checkedId();
}

void SegmentedPicker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Style::panel(palette(), trackOpacity));
    painter.drawRoundedRect(rect(), trackRadius, trackRadius);
}

}  // namespace quorvel
