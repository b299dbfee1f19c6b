#pragma once

#include <QColor>
#include <QRect>
#include <QStyle>

class QAbstractScrollArea;
class QPainter;
class QStyleOptionMenuItem;
class QStyleOptionProgressBar;
class QStyleOptionSlider;
class QStyleOptionViewItem;

/// What `QuietStyle` draws: one function for each kind of control. They fill `option.rect` and leave the painter as it
/// was.
namespace quorvel::QuietShapes {

inline constexpr double corner = 6;  ///< the radius of controls

/// With an invalid `fill` or `line` without it. The line is one pixel, inside the edge.
void drawBox(QPainter& painter, const QRect& rect, double radius, const QColor& fill, const QColor& line);
/// Around what has the keyboard.
void drawRing(QPainter& painter, const QRect& rect, double radius, const QColor& color);
/// Points down.
void drawChevron(QPainter& painter, const QPointF& center, const QColor& color);

void drawButton(QPainter& painter, const QStyleOption& option);
void drawToolButton(QPainter& painter, const QStyleOption& option);
void drawField(QPainter& painter, const QStyleOption& option);
void drawCheckBox(QPainter& painter, const QStyleOption& option);
void drawRadioButton(QPainter& painter, const QStyleOption& option);
void drawItem(QPainter& painter, const QStyleOptionViewItem& option, bool inList);
void drawProgress(QPainter& painter, const QStyleOptionProgressBar& option);
void drawScrollBar(QPainter& painter, const QStyleOptionSlider& bar, QRectF slider, const QWidget* widget);
/// Draws the ground of an item that is pointed at; the rest is to be drawn as the result, over it.
QStyleOptionMenuItem drawMenuGround(QPainter& painter, const QStyleOptionMenuItem& option, int iconSize);

/// A button that is its window's default, and is filled with the accent colour.
bool isDefault(const QStyleOption* option);
/// A tool button with a text that opens a menu.
bool hasMenuAndWords(const QStyleOption* option);
/// What is behind a scrolled content; invalid when that is what is behind all of it.
QColor groundOf(const QAbstractScrollArea& area);

}  // namespace quorvel::QuietShapes
