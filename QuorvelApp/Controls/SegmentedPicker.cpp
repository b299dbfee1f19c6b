#include "Controls/SegmentedPicker.h"

#include "Controls/Style.h"
#include "Controls/Symbols.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>
#include <QRadioButton>
#include <algorithm>

namespace quorvel {
namespace {

constexpr int inset = Style::hair;
constexpr double corner = 6;
constexpr int symbolSize = 16;
constexpr double trackOpacity = 0.14;

/// A radio button in the looks of a segment.
class SegmentButton : public QRadioButton {
public:
    explicit SegmentButton(const SegmentedPicker::Segment& segment)
        // A single "&" would mark a key.
        : QRadioButton(QString(segment.text).replace(u'&', QLatin1String("&&"))), symbol_(segment.symbol) {
        setAccessibleName(segment.name.isEmpty() ? segment.text : segment.name);
        if (segment.text.isEmpty()) setToolTip(segment.name);
        setFocusPolicy(Qt::NoFocus);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        setAttribute(Qt::WA_Hover);
        // Of all segments the Tab key stops at the chosen one.
        connect(this, &QRadioButton::toggled, this,
                [this](bool chosen) { setFocusPolicy(chosen ? Qt::TabFocus : Qt::NoFocus); });
    }

    QSize sizeHint() const override {
        const int height = std::max(fontMetrics().height(), symbolSize) + Style::small;
        return {contentWidth() + 2 * (Style::medium + Style::hair), height};
    }
    QSize minimumSizeHint() const override {
        return {contentWidth() + 2 * (Style::tight + Style::hair), sizeHint().height()};
    }

protected:
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        paintGround(painter);
        const QColor ink = palette().color(QPalette::WindowText);
        QRect content(0, 0, contentWidth(), height());
        content.moveCenter(rect().center());
        if (!symbol_.isEmpty()) {
            painter.drawPixmap(content.x(), (height() - symbolSize) / 2,
                               Symbols::pixmap(symbol_, symbolSize, ink, devicePixelRatio()));
            content.setLeft(content.left() + symbolSize + gap());
        }
        painter.setPen(ink);
        painter.drawText(content, Qt::AlignCenter | Qt::TextHideMnemonic, text());
    }

private:
    int gap() const { return text().isEmpty() ? 0 : Style::tight; }
    int contentWidth() const {
        const int words = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
        return words + (symbol_.isEmpty() ? 0 : symbolSize + gap());
    }

    void paintGround(QPainter& painter) const {
        const QRectF shape = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        const bool dark = Style::isDark(palette());
        painter.setPen(Qt::NoPen);
        if (isChecked()) {
            painter.setBrush(QColor(0, 0, 0, dark ? 60 : 22));
            painter.drawRoundedRect(shape.translated(0, 0.75), corner, corner);
            painter.setBrush(dark ? palette().color(QPalette::Button).lighter(170) : palette().color(QPalette::Base));
            painter.drawRoundedRect(shape, corner, corner);
        } else if (underMouse() && isEnabled()) {
            painter.setBrush(Style::panel(palette(), isDown() ? 0.18 : 0.1));
            painter.drawRoundedRect(shape, corner, corner);
        }
        if (!hasFocus()) return;
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(Style::accent(palette()), 2));
        painter.drawRoundedRect(shape.adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
    }

    QString symbol_;
};

QList<SegmentedPicker::Segment> ofTexts(const QStringList& texts) {
    QList<SegmentedPicker::Segment> segments;
    for (const QString& text : texts) segments.append({text, {}, {}});
    return segments;
}

}  // namespace

SegmentedPicker::SegmentedPicker(const QString& title, const QList<Segment>& segments, QWidget* parent)
    : QWidget(parent), group_(new QButtonGroup(this)) {
    setAccessibleName(title);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(inset, inset, inset, inset);
    row->setSpacing(inset);
    for (const Segment& segment : segments) {
        auto* button = new SegmentButton(segment);
        group_->addButton(button, int(group_->buttons().size()));
        row->addWidget(button);
    }
    setCurrentIndex(0);
    connect(group_, &QButtonGroup::idClicked, this, &SegmentedPicker::activated);
}

SegmentedPicker::SegmentedPicker(const QString& title, const QStringList& texts, QWidget* parent)
    : SegmentedPicker(title, ofTexts(texts), parent) {}

void SegmentedPicker::setCurrentIndex(int index) {
    QAbstractButton* button = group_->button(index);
    if (!button) return;
    const QAbstractButton* before = group_->checkedButton();
    const bool hasKeyboard = before && before->hasFocus();
    button->setChecked(true);
    // The arrow keys go on from what is chosen.
    if (hasKeyboard) button->setFocus(Qt::OtherFocusReason);
}

int SegmentedPicker::currentIndex() const {
    return group_->checkedId();
}

void SegmentedPicker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Style::panel(palette(), trackOpacity));
    painter.drawRoundedRect(rect(), corner + inset, corner + inset);
}

}  // namespace quorvel
