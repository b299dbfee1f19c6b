#pragma once

#include "Application/EndSignals.h"
#include "Model/AppModel.h"
#include "QtDesktop/QtDesktop.h"
#include "QtPlatform/QtScheduler.h"
#include "Shell/MainWindow.h"
#include "Shell/SingleInstance.h"
#include "Shell/UpdateDialogs.h"
#include "Shell/Updater.h"

#include <memory>
#include <optional>
#include <string>

namespace quorvel {

/// The program from its start to its end. Needs the QApplication.
///
/// Closing the window hides it, and the process lives on unseen until the exports that run have ended and everything is
/// on the disk: an export is asked for once, and half of one is of no use to anybody. One that fails meanwhile, or
/// another start of the program, brings the window back.
class Application {
public:
    /// `start` is what this process was started with.
    explicit Application(StartMessage start);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Runs the event loop to the end. The exit code.
    int run();

private:
    void decided(SingleInstance::Outcome outcome);
    void open();
    void comeForward(const StartMessage& message);
    void signalled();
    void startEnding();
    void goOnEnding();
    void comeBack();
    static void wear(const DesktopLook& look);

    StartMessage start_;
    // What follows goes in the opposite order: the lock on the library is held until all that writes has gone.
    QtScheduler scheduler_;
    SingleInstance instance_;
    QtDesktop desktop_;
    std::unique_ptr<AppModel> model_;
    std::unique_ptr<Updater> updater_;
    std::unique_ptr<MainWindow> window_;
    std::unique_ptr<UpdateDialogs> updateDialogs_;
    Announcer::Subscription subscription_;
    EndSignals signals_;

    bool ending_ = false;     // the window is closed
    bool impatient_ = false;  // exports aren't waited for
    bool saving_ = false;     // what is left is to be told that all is on the disk
    bool saved_ = false;
    std::optional<std::string> knownError_;
};

}  // namespace quorvel
