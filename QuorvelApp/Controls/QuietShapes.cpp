#include "Controls/QuietShapes.h"

#include "Controls/Style.h"

#include <QAbstractScrollArea>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>

namespace quorvel::QuietShapes {

namespace {

constexpr double markCorner = 4;  // of check boxes

// Over a control, on it: the surface turns this much towards the text's colour.
constexpr double hovered = 0.05;
constexpr double pressed = 0.11;

QColor mix(const QColor& from, const QColor& to, double share) {
    const auto between = [&](float a, float b) { return float(a + (b - a) * share); };
    return QColor::fromRgbF(between(from.redF(), to.redF()), between(from.greenF(), to.greenF()),
                            between(from.blueF(), to.blueF()));
}

bool has(const QStyleOption& option, QStyle::StateFlag state) {
    return option.state.testFlag(state);
}

QColor color(const QStyleOption& option, QPalette::ColorRole role) {
    return option.palette.color(has(option, QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled, role);
}

/// The surface as the pointer leaves it.
QColor touched(const QStyleOption& option, const QColor& surface, const QColor& ink) {
    if (!has(option, QStyle::State_Enabled)) return surface;
    if (has(option, QStyle::State_Sunken)) return mix(surface, ink, pressed);
    return has(option, QStyle::State_MouseOver) ? mix(surface, ink, hovered) : surface;
}

/// The place of a check box or radio button: filled when it is on.
QColor drawMarkPlace(QPainter& painter, const QStyleOption& option, double radius) {
    const bool on = has(option, QStyle::State_On) || has(option, QStyle::State_NoChange);
    const QRect rect = option.rect;
    if (on && has(option, QStyle::State_Enabled)) {
        drawBox(painter, rect, radius, touched(option, color(option, QPalette::Highlight), Qt::black), {});
        return color(option, QPalette::HighlightedText);
    }
    const QColor ink = color(option, QPalette::WindowText);
    const QColor base = color(option, has(option, QStyle::State_Enabled) ? QPalette::Base : QPalette::Window);
    drawBox(painter, rect, radius, touched(option, base, ink), mix(Style::line(option.palette), ink, 0.25));
    return ink;
}

}  // namespace

void drawBox(QPainter& painter, const QRect& rect, double radius, const QColor& fill, const QColor& line) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(line.isValid() ? QPen(line, 1) : QPen(Qt::NoPen));
    painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    const QRectF edge = line.isValid() ? QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5) : QRectF(rect);
    painter.drawRoundedRect(edge, radius, radius);
    painter.restore();
}

void drawRing(QPainter& painter, const QRect& rect, double radius, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect).adjusted(1, 1, -1, -1), radius - 1, radius - 1);
    painter.restore();
}

void drawChevron(QPainter& painter, const QPointF& center, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(
        QPolygonF({center + QPointF(-3.5, -1.75), center + QPointF(0, 1.75), center + QPointF(3.5, -1.75)}));
    painter.restore();
}

QColor groundOf(const QAbstractScrollArea& area) {
    const QWidget* viewport = area.viewport();
    return viewport->autoFillBackground() ? viewport->palette().color(viewport->backgroundRole()) : QColor();
}

bool isDefault(const QStyleOption* option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    return button && button->features.testFlag(QStyleOptionButton::DefaultButton) &&
           !button->features.testFlag(QStyleOptionButton::Flat);
}

void drawButton(QPainter& painter, const QStyleOption& option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    const bool on = has(option, QStyle::State_On);
    const QColor ink = color(option, QPalette::ButtonText);
    if (button && button->features.testFlag(QStyleOptionButton::Flat)) {
        if (!on && touched(option, ink, Qt::transparent) == ink) return;
        QColor veil = ink;
        veil.setAlphaF(on || has(option, QStyle::State_Sunken) ? 0.12F : 0.06F);
        return drawBox(painter, option.rect, corner, veil, {});
    }
    if (isDefault(&option) && has(option, QStyle::State_Enabled)) {
        const QColor fill = touched(option, color(option, QPalette::Highlight), Qt::black);
        return drawBox(painter, option.rect, corner, fill, {});
    }
    QColor fill = touched(option, color(option, QPalette::Button), ink);
    if (on) fill = mix(fill, Style::accent(option.palette), 0.22);
    if (!has(option, QStyle::State_Enabled)) fill = mix(fill, color(option, QPalette::Window), 0.6);
    drawBox(painter, option.rect, corner, fill, on ? Style::accent(option.palette) : Style::line(option.palette));
}

/// A button without a frame of its own: seen when the pointer is over it, or when it is on.
void drawToolButton(QPainter& painter, const QStyleOption& option) {
    if (!has(option, QStyle::State_AutoRaise)) return drawButton(painter, option);
    const bool strong = has(option, QStyle::State_On) || has(option, QStyle::State_Sunken);
    if (!has(option, QStyle::State_Enabled) || (!strong && !has(option, QStyle::State_MouseOver))) return;
    QColor veil = color(option, QPalette::ButtonText);
    veil.setAlphaF(strong ? 0.12F : 0.06F);
    drawBox(painter, option.rect, corner, veil, {});
}

void drawField(QPainter& painter, const QStyleOption& option) {
    const QColor base = color(option, has(option, QStyle::State_Enabled) ? QPalette::Base : QPalette::Window);
    drawBox(painter, option.rect, corner, base, Style::line(option.palette));
    if (has(option, QStyle::State_HasFocus)) drawRing(painter, option.rect, corner, Style::accent(option.palette));
}

void drawCheckBox(QPainter& painter, const QStyleOption& option) {
    const QColor ink = drawMarkPlace(painter, option, markCorner);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink, 1.75, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QRectF box = option.rect;
    const auto at = [&](double x, double y) { return box.topLeft() + QPointF(x * box.width(), y * box.height()); };
    if (has(option, QStyle::State_NoChange))
        painter.drawLine(at(0.28, 0.5), at(0.72, 0.5));
    else if (has(option, QStyle::State_On))
        painter.drawPolyline(QPolygonF({at(0.25, 0.52), at(0.43, 0.7), at(0.75, 0.32)}));
    painter.restore();
}

void drawRadioButton(QPainter& painter, const QStyleOption& option) {
    const double radius = std::min(option.rect.width(), option.rect.height()) / 2.0;
    const QColor ink = drawMarkPlace(painter, option, radius);
    if (!has(option, QStyle::State_On)) return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawEllipse(QRectF(option.rect).center(), radius * 0.4, radius * 0.4);
    painter.restore();
}

/// One item of a list, or one cell of a table: cells of a row that is selected join.
void drawItem(QPainter& painter, const QStyleOptionViewItem& option, bool inList) {
    if (option.backgroundBrush.style() != Qt::NoBrush) painter.fillRect(option.rect, option.backgroundBrush);
    const bool selected = has(option, QStyle::State_Selected);
    if (!selected && !(inList && has(option, QStyle::State_MouseOver))) return;
    const QColor fill = selected ? color(option, QPalette::Highlight) : Style::panel(option.palette, 0.1);
    if (inList)
        drawBox(painter, option.rect.adjusted(3, 1, -3, -1), corner, fill, {});
    else
        painter.fillRect(option.rect, fill);
}

void drawProgress(QPainter& painter, const QStyleOptionProgressBar& option) {
    const double height = std::min(6, option.rect.height());
    QRectF groove(option.rect.left(), option.rect.center().y() - height / 2 + 0.5, option.rect.width(), height);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Style::panel(option.palette, 0.25));
    painter.drawRoundedRect(groove, height / 2, height / 2);
    const double range = double(option.maximum) - option.minimum;
    const double share = range > 0 ? std::clamp((option.progress - option.minimum) / range, 0.0, 1.0) : 0;
    const double width = groove.width() * share;
    if (option.direction == Qt::RightToLeft) groove.setLeft(groove.right() - width);
    groove.setWidth(width);
    painter.setBrush(Style::accent(option.palette));
    if (width > 0) painter.drawRoundedRect(groove, std::min(height, width) / 2, height / 2);
    painter.restore();
}

void drawScrollBar(QPainter& painter, const QStyleOptionSlider& bar, QRectF slider, const QWidget* widget) {
    const QWidget* holder = widget ? widget->parentWidget() : nullptr;
    const auto* area = qobject_cast<const QAbstractScrollArea*>(holder ? holder->parentWidget() : nullptr);
    if (area && groundOf(*area).isValid()) painter.fillRect(bar.rect, groundOf(*area));
    if (bar.maximum <= bar.minimum) return;

    slider.adjust(3, 3, -3, -3);
    const bool active = has(bar, QStyle::State_Sunken) || has(bar, QStyle::State_MouseOver);
    const double radius = std::min(slider.width(), slider.height()) / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Style::panel(bar.palette, active ? 0.7 : 0.4));
    painter.drawRoundedRect(slider, radius, radius);
    painter.restore();
}

/// The item as one that isn't pointed at, over a ground that says that it is.
QStyleOptionMenuItem drawMenuGround(QPainter& painter, const QStyleOptionMenuItem& option, int iconSize) {
    drawBox(painter, option.rect.adjusted(3, 1, -3, -1), corner - 1, color(option, QPalette::Highlight), {});
    QStyleOptionMenuItem item = option;
    item.state.setFlag(QStyle::State_Selected, false);
    const QColor ink = color(option, QPalette::HighlightedText);
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        item.palette.setColor(role, ink);
    if (!item.icon.isNull() && painter.device())
        item.icon = item.icon.pixmap(QSize(iconSize, iconSize), painter.device()->devicePixelRatio(), QIcon::Selected);
    return item;
}

bool hasMenuAndWords(const QStyleOption* option) {
    const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option);
    return button && button->features.testFlag(QStyleOptionToolButton::HasMenu) &&
           button->toolButtonStyle != Qt::ToolButtonIconOnly && !button->text.isEmpty();
}

}  // namespace quorvel::QuietShapes
