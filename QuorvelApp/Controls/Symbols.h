#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QStringView>

/// The symbols of the program, by name ("chevron.left"): one drawing each, tinted, sharp at every scale.
namespace quorvel::Symbols {

/// Follows the palette, disabled and selected states included. An unknown name is a failure of the program: it asserts
/// in tests, and is an empty icon otherwise.
QIcon icon(QStringView name);

/// In one colour, `size` logical pixels high and wide.
QPixmap pixmap(QStringView name, int size, const QColor& color, qreal devicePixelRatio);

/// All names, for tests and for looking at them.
QStringList names();

}  // namespace quorvel::Symbols
