#include "Controls/ScreenReader.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QWidget>

namespace quorvel::ScreenReader {

namespace {

constexpr const char* isAlert = "isAlert";

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    if (!object->isWidgetType() || !object->property(isAlert).toBool()) return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::AlertMessage);
}

}  // namespace

void makeAlert(QWidget* widget) {
    static const bool installed = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    static_cast<void>(installed);
    widget->setProperty(isAlert, true);
}

void announceReordered(QWidget* widget) {
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(widget, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
}

void speak(QWidget* alert) {
    if (!alert->isVisible()) return;
    QAccessibleEvent event(alert, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

}  // namespace quorvel::ScreenReader
