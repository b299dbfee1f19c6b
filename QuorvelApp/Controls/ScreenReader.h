#pragma once

#include <QAccessible>

class QWidget;

/// What is told to those who don't see it.
namespace quorvel::ScreenReader {

/// Makes the toolkit find `Accessible` for every `Widget`. May be called again.
template <class Accessible, class Widget>
void represent() {
    static const bool installed = [] {
        QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
            auto* const widget = qobject_cast<Widget*>(object);
            return widget ? new Accessible(*widget) : nullptr;
        });
        return true;
    }();
    static_cast<void>(installed);
}

/// The widget's parts aren't those, or not in the order, that they were.
void announceReordered(QWidget* widget);

/// Gives the widget the role of an alert. To be called first of all: its role is settled when its name is set.
void makeAlert(QWidget* widget);

/// Tells that what an alert says is news: when it has appeared, and when it says something else. Nothing is said of one
/// that isn't seen.
void speak(QWidget* alert);

}  // namespace quorvel::ScreenReader
