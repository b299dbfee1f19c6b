#pragma once

#include "Controls/Style.h"
#include "Shell/MainWindow.h"
#include "Shell/UpdateDialogs.h"
#include "Shell/Updater.h"
#include "Support/Widgets/WindowTest.h"

#include <QPixmap>
#include <QString>
#include <functional>

namespace quorvel {

/// Nothing turns or fades meanwhile: a picture shows what stays.
struct Calm {
    Calm() { Style::setReduceMotion(true); }
    ~Calm() { Style::setReduceMotion({}); }
};

/// The window with a model that waits for nobody, and the short words by which a screen is brought about.
class Stage : public WindowTest {
public:
    explicit Stage(QSize size);

    // What the fixture has for its tests.
    using WindowTest::desktop;
    using WindowTest::model;
    using WindowTest::open;
    using WindowTest::openSample;
    using WindowTest::scheduler;
    using WindowTest::settle;
    using WindowTest::write;

    /// Some decks in the sidebar, the sample's open.
    void openLibrary();
    /// A spreadsheet whose rows have all the trouble that there is a banner for.
    std::filesystem::path openTrouble();
    void setTab(Tab tab);
    /// Changes the open deck's record.
    void edit(const std::function<void(DeckProject&)>& change);
    /// An export that has come to its middle.
    void exportHalfway(ExportKind kind);

    /// Carries out the item of a menu with these words, wherever it is.
    void choose(const QString& words);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Gives the keyboard to the one child of the window of this type.
    template <class Widget>
    void focus() {
        window.findChild<Widget*>()->setFocus(Qt::TabFocusReason);
    }
    /// Opens the menu of the tool button with this name.
    void openMenu(const QString& name);
    void openMenuOfBar(const QString& title);
    void drag(const std::filesystem::path& file);

    /// What a user sees now: the window, and over it the dialogs and menus that are open.
    QPixmap picture();

private:
    void TestBody() override {}

    const Calm calm_;

public:
    Updater updater{scheduler, desktop, QUrl(), "1.4"};
    MainWindow window{model, desktop, updater};

private:
    UpdateDialogs updateDialogs_{updater, [this] { return &window; }};
};

}  // namespace quorvel
