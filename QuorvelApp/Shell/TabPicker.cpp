#include "Shell/TabPicker.h"

#include "Controls/Style.h"
#include "Controls/Wording.h"
#include "Shell/TabLabels.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QRadioButton>

namespace quorvel {
namespace {

constexpr int inset = 2;
constexpr double corner = 6;

/// A radio button, for screen readers and arrow keys, in the looks of a segment.
class Segment : public QRadioButton {
public:
    explicit Segment(const QString& words) : QRadioButton(words) {
        // Tab and the arrow keys lead here; a click doesn't take the keys away from what is being worked on.
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
    }

    QSize sizeHint() const override {
        const QSize words = fontMetrics().size(Qt::TextShowMnemonic, text());
        return {words.width() + 2 * (Style::medium + Style::hair), words.height() + Style::small + Style::hair};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF shape = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        const bool dark = Style::isDark(palette());
        painter.setPen(Qt::NoPen);
        if (isChecked()) {
            painter.setBrush(QColor(0, 0, 0, dark ? 60 : 22));
            painter.drawRoundedRect(shape.translated(0, 0.75), corner, corner);
            painter.setBrush(dark ? palette().color(QPalette::Button).lighter(170) : palette().color(QPalette::Base));
            painter.drawRoundedRect(shape, corner, corner);
        } else if (underMouse()) {
            painter.setBrush(Style::panel(palette(), isDown() ? 0.18 : 0.1));
            painter.drawRoundedRect(shape, corner, corner);
        }
        if (hasFocus()) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(Style::accent(palette()), 2));
            painter.drawRoundedRect(shape.adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
        }
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextHideMnemonic, text());
    }
};

}  // namespace

TabPicker::TabPicker(QWidget* parent) : QWidget(parent) {
    setAccessibleName("View");
    setToolTip(shown("Switch between the cards, the template, printing and the spreadsheet (⌘1–⌘4)"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(inset, inset, inset, inset);
    row->setSpacing(inset);
    for (const auto& [tab, name] : EnumText<Tab>::cases) {
        auto* segment = new Segment(label(tab));
        segment->setAccessibleName(text(title(tab)));
        connect(segment, &QRadioButton::toggled, this, [this, tab = tab](bool on) {
            if (on) emit picked(tab);
        });
        segments_[tab] = segment;
        row->addWidget(segment);
    }
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void TabPicker::setTab(Tab tab) {
    segments_.at(tab)->setChecked(true);
}

void TabPicker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Style::panel(palette(), 0.14));
    painter.drawRoundedRect(rect(), corner + inset, corner + inset);
}

}  // namespace quorvel
