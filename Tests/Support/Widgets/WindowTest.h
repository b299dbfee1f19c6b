#pragma once

#include "Model/AppModel.h"
#include "Support/Desktop/FakeDesktop.h"
#include "Support/Desktop/ManualScheduler.h"

#include <QWidget>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// A model whose clock is moved by hand, for views that are driven with real events on a screen that nobody sees.
class WindowTest : public testing::Test {
protected:
    ManualScheduler scheduler;
    FakeDesktop desktop;
    std::shared_ptr<UndoStack> undo = std::make_shared<UndoStack>();
    AppModel model{scheduler, desktop, AppModel::Persist::no};

    /// Whatever a test before it did, nothing moves unless it is told to (`Style::setReduceMotion`).
    WindowTest();

    /// Writes a file of the user's and gives it to the model, then lets all of it load and draw.
    std::filesystem::path open(const std::string& name, std::string_view text);
    std::filesystem::path write(const std::string& name, std::string_view text);

    /// The sample deck, loaded.
    void openSample(SampleTemplates::Kind kind = SampleTemplates::Kind::classic);

    /// Lets work, timers and events run until `time` has passed on the clock that is moved by hand. Qt's own timers and
    /// events are handled, too, but nothing waits for them.
    void settle(std::chrono::milliseconds time = std::chrono::milliseconds(1000));

    /// Shows the widget at this size and lets it lay itself out and draw.
    static void show(QWidget& widget, QSize size = {1000, 700});

    /// The one child widget of a type with this accessible name, or text where it has none; fails the test when there
    /// is none or more than one.
    template <class Widget>
    static Widget* find(const QWidget& parent, const QString& name);

    static QString nameOf(const QWidget& widget);
};

/// What can have the keyboard below `root`, shown or not, widget or item of a view, and that a screen reader couldn't
/// name; each as its class, its place and what it stands in. Cells of tables may be empty.
std::vector<std::string> unnamedControls(const QWidget& root);

template <class Widget>
Widget* WindowTest::find(const QWidget& parent, const QString& name) {
    Widget* found = nullptr;
    for (Widget* each : parent.findChildren<Widget*>())
        if (nameOf(*each) == name) {
            if (found) ADD_FAILURE() << "two controls are called " << name.toStdString();
            found = each;
        }
    if (!found) ADD_FAILURE() << "no control is called " << name.toStdString();
    return found;
}

}  // namespace quorvel
