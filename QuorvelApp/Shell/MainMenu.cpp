#include "Shell/MainMenu.h"

#include "Controls/Symbols.h"
#include "Controls/Wording.h"
#include "Inspector/LayerKinds.h"
#include "Shell/EditMenu.h"
#include "Shell/ExportCommands.h"
#include "Shell/TabLabels.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>

namespace quorvel {

MainMenu::MainMenu(AppModel& model, std::shared_ptr<const UndoStack> undo, ExportCommands& exports, QMenuBar& bar)
    : QObject(&bar), model_(model), exports_(exports) {
    fillFileMenu(*bar.addMenu("&File"));
    bar.addMenu(new EditMenu(model_, std::move(undo), &bar));
    fillDeckMenu(*bar.addMenu("&Deck"));
    fillLayerMenu(*bar.addMenu("&Layer"));
    fillHelpMenu(*bar.addMenu("&Help"));

    subscription_ = model_.subscribe([this](Changes) { refresh(); });
    refresh();
}

QAction* MainMenu::add(QMenu& menu, const QString& words, const QKeySequence& keys, Command act) {
    QAction* action = menu.addAction(words);
    action->setShortcut(keys);
    action->setMenuRole(QAction::NoRole);
    connect(action, &QAction::triggered, this, std::move(act));
    return action;
}

void MainMenu::fillFileMenu(QMenu& menu) {
    add(menu, "New Deck…", Qt::CTRL | Qt::Key_N, [this] { model_.setShowNewDeck(true); });
    add(menu, "Open the Sample Deck", {}, [this] { model_.openSampleDeck(SampleTemplates::Kind::classic); });
    menu.addSeparator();
    add(menu, "Choose Spreadsheet…", Qt::CTRL | Qt::Key_O, [this] { model_.chooseSpreadsheet(); });
    reload_ = add(menu, "Reload Spreadsheet", Qt::CTRL | Qt::Key_R, [this] { model_.reloadSpreadsheet(); });
    menu.addSeparator();
    QMenu* exports = menu.addMenu("Export");
    exports_.addTo(*exports);
    needDeck_.push_back(exports->menuAction());
    menu.addSeparator();
    // These two go to the application's own menu where the platform has one.
    add(menu, "Settings…", Qt::CTRL | Qt::Key_Comma, [this] {
        Q_EMIT settingsRequested();
    })->setMenuRole(QAction::PreferencesRole);
    menu.addSeparator();
    QAction* quit = add(menu, "Quit", {}, [this] { Q_EMIT quitRequested(); });
    quit->setShortcuts({Qt::CTRL | Qt::Key_Q, Qt::CTRL | Qt::Key_W});
    quit->setMenuRole(QAction::QuitRole);
}

void MainMenu::fillDeckMenu(QMenu& menu) {
    auto* group = new QActionGroup(this);
    int key = Qt::Key_1;
    for (const auto& [tab, name] : EnumText<Tab>::cases) {
        QAction* action = add(menu, label(tab), Qt::CTRL | Qt::Key(key++), [this, tab = tab] { model_.setTab(tab); });
        action->setIcon(Symbols::icon(text(symbol(tab))));
        action->setCheckable(true);
        group->addAction(action);
        tabs_[tab] = action;
    }
    menu.addSeparator();
    needDeck_.push_back(
        add(menu, "Choose Art Folder…", {}, [this] { model_.chooseFolder(AppModel::FolderKind::art); }));
    needDeck_.push_back(
        add(menu, "Choose Icons Folder…", {}, [this] { model_.chooseFolder(AppModel::FolderKind::icons); }));
}

void MainMenu::fillLayerMenu(QMenu& menu) {
    QMenu* kinds = menu.addMenu("Add Layer");
    needDeck_.push_back(kinds->menuAction());
    for (const auto& [kind, name] : EnumText<LayerKind>::cases)
        needDeck_.push_back(
            add(*kinds, text(LayerKinds::label(kind)), {}, [this, kind = kind] { model_.addLayer(kind); }));
    const auto onLayer = [&](const QString& words, const QKeySequence& keys, Command act) {
        needLayer_.push_back(add(menu, words, keys, std::move(act)));
    };
    onLayer("Duplicate Layer", Qt::CTRL | Qt::Key_D, [this] { model_.duplicateSelectedLayer(); });
    onLayer("Bring Forward", Qt::CTRL | Qt::Key_BracketRight, [this] { model_.moveSelectedLayer(1); });
    onLayer("Send Backward", Qt::CTRL | Qt::Key_BracketLeft, [this] { model_.moveSelectedLayer(-1); });
    menu.addSeparator();
    onLayer("Delete Layer", Qt::CTRL | Qt::Key_Backspace, [this] { model_.deleteSelectedLayer(); });
}

void MainMenu::fillHelpMenu(QMenu& menu) {
    add(menu, "About " + text(appName), {}, [this] { Q_EMIT aboutRequested(); })->setMenuRole(QAction::AboutRole);
    add(menu, "Check for Updates…", {}, [this] {
        Q_EMIT updateCheckRequested();
    })->setMenuRole(QAction::ApplicationSpecificRole);
}

void MainMenu::refresh() {
    const DeckProject* deck = model_.currentProject();
    const bool hasLayer = model_.selectedLayerValue() != nullptr;
    reload_->setEnabled(deck && deck->source);
    exports_.setEnabled(deck != nullptr);
    for (QAction* action : needDeck_) action->setEnabled(deck != nullptr);
    for (QAction* action : needLayer_) action->setEnabled(hasLayer);
    tabs_.at(model_.state()._tab)->setChecked(true);
}

}  // namespace quorvel
