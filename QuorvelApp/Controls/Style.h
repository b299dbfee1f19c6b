#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <optional>

class QApplication;
class QWidget;

/// One spacing scale, one type scale, and the few colours that a palette doesn't have. Lengths are logical pixels,
/// which here are the points of the texts.
namespace quorvel::Style {

inline constexpr int hair = 2;
inline constexpr int tight = 4;
inline constexpr int small = 8;
inline constexpr int medium = 12;
inline constexpr int large = 20;
inline constexpr int huge = 32;
inline constexpr int radius = 8;  ///< of panels and placeholders

/// From the application's own font: the user's size is the body's.
enum class TextSize { caption, callout, body, title3, title1 };
QFont font(TextSize size, QFont::Weight weight = QFont::Normal);

enum class Appearance { system, light, dark };

/// Gives the application its look: quiet palettes of our own, light or dark as the system is or as told. May be called
/// again.
void apply(QApplication& application, Appearance appearance = Appearance::system);

bool isDark(const QPalette& palette);
QColor secondary(const QPalette& palette);              ///< text that may be overlooked
QColor warning(const QPalette& palette);                ///< orange, readable on the window
QColor good(const QPalette& palette);                   ///< green, readable on the window
QColor accent(const QPalette& palette);                 ///< of the highlight
QColor underPage(const QPalette& palette);              ///< behind a sheet of paper
QColor surface(const QPalette& palette);                ///< of a panel that holds controls
QColor line(const QPalette& palette);                   ///< hairlines and outlines
QColor panel(const QPalette& palette, double opacity);  ///< the secondary colour that thin

/// Makes the text of a label or button secondary, also after the palette changed.
void makeSecondary(QWidget* widget);
/// The same in the colour of warnings.
void makeWarning(QWidget* widget);

/// Whether the user asked for less motion: what was told below, else what the platform and the desktop's settings files
/// say. Reads files that are small and mostly cached: ask when something is about to move, not while it does.
bool reduceMotion();

/// From a source that knows better; nothing goes back to finding out.
void setReduceMotion(std::optional<bool> reduce);

}  // namespace quorvel::Style
