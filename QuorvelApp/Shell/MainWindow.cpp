#include "Shell/MainWindow.h"

#include "Controls/Wording.h"
#include "Shell/Alert.h"
#include "Shell/DropHighlight.h"
#include "Shell/DroppedFiles.h"
#include "Shell/ErrorAlert.h"
#include "Shell/ExportCommands.h"
#include "Shell/MainMenu.h"
#include "Shell/NewDeckSheet.h"
#include "Shell/RootView.h"
#include "Shell/SettingsView.h"
#include "Shell/Updater.h"
#include "Shell/WindowToolbar.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QMenuBar>
#include <QMimeData>

namespace quorvel {

MainWindow::MainWindow(AppModel& model, Desktop& desktop, Updater& updater, QWidget* parent)
    : QMainWindow(parent), model_(model), desktop_(desktop) {
    setObjectName("main");
    setMinimumSize(900, 600);
    resize(1280, 820);
    setAcceptDrops(true);
    model_.setUndoManager(undo_);

    auto* exports = new ExportCommands(model_, this);
    auto* menu = new MainMenu(model_, undo_, *exports, *menuBar());
    connect(menu, &MainMenu::settingsRequested, this, &MainWindow::showSettings);
    connect(menu, &MainMenu::aboutRequested, this, &MainWindow::showAbout);
    connect(menu, &MainMenu::updateCheckRequested, &updater, &Updater::checkForUpdates);
    connect(menu, &MainMenu::quitRequested, this, &QWidget::close);
    addToolBar(new WindowToolbar(model_, *exports));
    setCentralWidget(new RootView(model_, desktop_));
    // Else the first button of the toolbar has the keyboard, and a ring that nobody asked for.
    centralWidget()->setFocus();
    dropHighlight_ = new DropHighlight(this);
    new ErrorAlert(model_, this);

    subscription_ = model_.subscribe([this](Changes changes) { refresh(changes); });
    showTitle();
    showNewDeckSheet();
}

MainWindow::~MainWindow() = default;

void MainWindow::openFiles(const std::vector<std::filesystem::path>& files) {
    if (const auto file = DroppedFiles::spreadsheet(files)) model_.useSpreadsheet(*file);
}

void MainWindow::refresh(Changes changes) {
    if (changes.has(Change::newDeck)) showNewDeckSheet();
    if (changes.has(Change::decks) || changes.has(Change::selection) || changes.has(Change::exports)) showTitle();
}

void MainWindow::showTitle() {
    const DeckProject* deck = model_.currentProject();
    QString title = text(deck ? std::string_view(deck->name) : appName);
    // The export's progress is seen in the list of windows, too.
    if (const auto& runs = model_.exports(); !runs.empty())
        title += QString(" – %1 %2 %").arg(text(runs.back().busyText)).arg(int(runs.back().fraction * 100));
    setWindowTitle(title.replace("[*]", "[*][*]"));  // one alone stands for unsaved changes
}

void MainWindow::showNewDeckSheet() {
    if (!model_.state()._showNewDeck) {
        if (newDeckSheet_) newDeckSheet_->close();
        return;
    }
    if (newDeckSheet_) return;
    newDeckSheet_ = new NewDeckSheet(model_, this);
    connect(newDeckSheet_, &QDialog::finished, this, [this] {
        newDeckSheet_ = nullptr;
        model_.setShowNewDeck(false);
    });
    newDeckSheet_->open();
}

void MainWindow::showSettings() {
    if (!settings_) settings_ = new SettingsView(desktop_, this);
    settings_->show();
    settings_->raise();
    settings_->activateWindow();
}

void MainWindow::showAbout() {
    const QString version = QCoreApplication::applicationVersion();
    auto* about = new Alert(
        text(appName),
        (version.isEmpty() ? QString() : "Version " + version + "\n") + "Turn a spreadsheet into print-and-play cards",
        this);
    about->setWindowTitle("About " + text(appName));
    about->addButton("OK", QDialogButtonBox::AcceptRole, Alert::Answer::default_);
    about->open();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    if (settings_) settings_->close();
    hide();
    Q_EMIT closed();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!DroppedFiles::spreadsheet(DroppedFiles::of(*event->mimeData()))) return event->ignore();
    event->acceptProposedAction();
    dropHighlight_->cover(rect().adjusted(0, menuBar()->height(), 0, 0));
}

void MainWindow::dragLeaveEvent(QDragLeaveEvent*) {
    dropHighlight_->hide();
}

void MainWindow::dropEvent(QDropEvent* event) {
    dropHighlight_->hide();
    event->acceptProposedAction();
    openFiles(DroppedFiles::of(*event->mimeData()));
}

}  // namespace quorvel
