#include "Support/Widgets/WindowTest.h"

#include "Controls/Style.h"
#include "Support/Desktop/EventLoop.h"

#include <QAccessible>
#include <QCoreApplication>
#include <fstream>

namespace quorvel {

WindowTest::WindowTest() {
    Style::setReduceMotion(true);
    model.setUndoManager(undo);
}

std::filesystem::path WindowTest::write(const std::string& name, std::string_view text) {
    const std::filesystem::path path = desktop.folder / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

std::filesystem::path WindowTest::open(const std::string& name, std::string_view text) {
    const std::filesystem::path path = write(name, text);
    model.useSpreadsheet(path);
    settle();
    return path;
}

void WindowTest::openSample(SampleTemplates::Kind kind) {
    model.openSampleDeck(kind);
    settle();
}

void WindowTest::settle(std::chrono::milliseconds time) {
    runWhatWaits();
    scheduler.settle();
    // What was written to watched files is told before the time passes that they are waited for.
    scheduler.pollDescriptors();
    scheduler.settle(time);
    scheduler.pollDescriptors();
    scheduler.settle();
    runWhatWaits();
}

void WindowTest::show(QWidget& widget, QSize size) {
    widget.resize(size);
    widget.show();
    QCoreApplication::sendPostedEvents();
    runWhatWaits();
}

QString WindowTest::nameOf(const QWidget& widget) {
    if (!widget.accessibleName().isEmpty()) return widget.accessibleName();
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
    return accessible ? accessible->text(QAccessible::Name) : QString();
}

namespace {

std::string describe(QAccessibleInterface& item) {
    const QRect place = item.rect();
    std::string text = item.object() ? item.object()->metaObject()->className() : "item";
    text += " at " + std::to_string(place.x()) + ", " + std::to_string(place.y());
    // What has no widget of its own is easier found by that which holds it.
    for (QAccessibleInterface* holder = item.parent(); holder; holder = holder->parent())
        if (const QString name = holder->text(QAccessible::Name); !name.isEmpty())
            return text + " in " + name.toStdString();
    return text;
}

/// Whether its parts are its own affair: the list of a picker, or the cells of a table, which may well be empty and are
/// too many to walk over.
bool speaksForItsParts(const QAccessibleInterface& item) {
    return item.role() == QAccessible::ComboBox || item.role() == QAccessible::SpinBox ||
           item.role() == QAccessible::Table;
}

void collectUnnamed(QAccessibleInterface& item, std::vector<std::string>& found) {
    if (item.state().focusable && item.text(QAccessible::Name).trimmed().isEmpty()) found.push_back(describe(item));
    if (speaksForItsParts(item)) return;
    for (int index = 0; index < item.childCount(); ++index)
        if (QAccessibleInterface* child = item.child(index)) collectUnnamed(*child, found);
}

}  // namespace

std::vector<std::string> unnamedControls(const QWidget& root) {
    std::vector<std::string> found;
    if (QAccessibleInterface* item = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&root)))
        collectUnnamed(*item, found);
    return found;
}

}  // namespace quorvel
