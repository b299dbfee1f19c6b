#pragma once

#include "Model/AppModel.h"

#include <QKeySequence>
#include <QObject>
#include <functional>
#include <map>
#include <string_view>
#include <vector>

class QAction;
class QMenu;
class QMenuBar;

namespace quorvel {

class ExportCommands;

/// The menus of the window, whose items are enabled as the model allows. A command that is about the program rather
/// than about decks is handed on.
class MainMenu : public QObject {
    Q_OBJECT
public:
    /// Fills the menu bar. `undo` is the stack that the model was given; `exports` outlive the menus.
    MainMenu(AppModel& model, std::shared_ptr<const UndoStack> undo, ExportCommands& exports, QMenuBar& bar);

Q_SIGNALS:
    void settingsRequested();
    void aboutRequested();
    void updateCheckRequested();
    void quitRequested();

private:
    using Command = std::function<void()>;

    QAction* add(QMenu& menu, const QString& words, const QKeySequence& keys, Command act);
    void fillFileMenu(QMenu& menu);
    void fillDeckMenu(QMenu& menu);
    void fillLayerMenu(QMenu& menu);
    void fillHelpMenu(QMenu& menu);
    void refresh();

    AppModel& model_;
    ExportCommands& exports_;
    QAction* reload_ = nullptr;
    std::map<Tab, QAction*> tabs_;
    std::vector<QAction*> needDeck_;
    std::vector<QAction*> needLayer_;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
