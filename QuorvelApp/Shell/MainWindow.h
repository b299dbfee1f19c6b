#pragma once

#include "Model/AppModel.h"

#include <QMainWindow>
#include <QPointer>
#include <filesystem>
#include <memory>
#include <vector>

namespace quorvel {

class DropHighlight;
class NewDeckSheet;
class SettingsView;
class Updater;

/// The window: menus, toolbar, alerts, the drop target, and `RootView` as its content. It owns the undo stack.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    /// All three outlive the window; `desktop` keeps what the settings window and the tabs remember.
    MainWindow(AppModel& model, Desktop& desktop, Updater& updater, QWidget* parent = nullptr);
    ~MainWindow() override;

    /// What a drop does, also for files given at the start: of these the first that is a spreadsheet is used, or one of
    /// a kind that can't be read but deserves an answer. Others are passed over.
    void openFiles(const std::vector<std::filesystem::path>& files);

Q_SIGNALS:
    /// The user has closed the window, which is hidden now: the program is to end once all is saved. It must not be set
    /// to end with its last window.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void refresh(Changes changes);
    void showTitle();
    void showNewDeckSheet();
    void showSettings();
    void showAbout();

    AppModel& model_;
    Desktop& desktop_;
    std::shared_ptr<UndoStack> undo_ = std::make_shared<UndoStack>();
    DropHighlight* dropHighlight_ = nullptr;
    QPointer<NewDeckSheet> newDeckSheet_;
    QPointer<SettingsView> settings_;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
