#include "Application/Application.h"

#include "Controls/Style.h"
#include "QtPlatform/Platform.h"

#include <QApplication>
#include <QUrl>
#include <utility>

namespace quorvel {

Application::Application(StartMessage start)
    : start_(std::move(start)),
      instance_(scheduler_, Platform::applicationSupport()),
      desktop_(scheduler_, [this]() -> QWidget* { return window_.get(); }),
      signals_(scheduler_, [this] { signalled(); }) {
    QObject::connect(&instance_, &SingleInstance::started, [this](const StartMessage& each) { comeForward(each); });
}

Application::~Application() = default;

int Application::run() {
    desktop_.followLook(wear);
    // From the loop: a process that isn't the first ends by leaving it.
    scheduler_.post([this] { instance_.begin(start_, [this](SingleInstance::Outcome each) { decided(each); }); });
    int code = QApplication::exec();
    if (model_ && !saved_) {
        // Somebody else has ended the loop, the end of the session perhaps.
        model_->finishSaving([this] {
            saved_ = true;
            QCoreApplication::exit(0);
        });
        if (!saved_) code = QApplication::exec();
    }
    return code;
}

void Application::decided(SingleInstance::Outcome outcome) {
    if (outcome == SingleInstance::Outcome::handedOver) return QCoreApplication::exit(0);
    open();
}

void Application::open() {
    model_ = std::make_unique<AppModel>(scheduler_, desktop_, AppModel::Persist::yes);
    updater_ = std::make_unique<Updater>(scheduler_, desktop_, QUrl(QUORVEL_UPDATE_FEED, QUrl::StrictMode),
                                         QApplication::applicationVersion());
    window_ = std::make_unique<MainWindow>(*model_, desktop_, *updater_);
    updateDialogs_ = std::make_unique<UpdateDialogs>(*updater_, [this] { return window_.get(); });
    QObject::connect(window_.get(), &MainWindow::closed, [this] { startEnding(); });
    subscription_ = model_->subscribe([this](Changes changes) {
        if (!ending_ || !(changes.has(Change::exports) || changes.has(Change::status))) return;
        // Later: an export tells of its end before it tells how it ended.
        scheduler_.post([this] { goOnEnding(); });
    });
    window_->show();
    if (!start_.files.empty()) window_->openFiles(start_.files);
    updater_->checkDaily();
}

void Application::wear(const DesktopLook& look) {
    using Style::Appearance;
    Style::setReduceMotion(look.reducesMotion);
    Style::apply(*qApp, !look.isDark ? Appearance::system : *look.isDark ? Appearance::dark : Appearance::light);
}

void Application::comeForward(const StartMessage& message) {
    if (!window_) return;
    // The toolkit looks for it there when a window asks to come forward.
    if (!message.activationToken.empty()) qputenv("XDG_ACTIVATION_TOKEN", message.activationToken.c_str());
    comeBack();
    if (!message.files.empty()) window_->openFiles(message.files);
}

void Application::comeBack() {
    ending_ = saving_ = impatient_ = false;
    window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
    window_->show();
    window_->raise();
    window_->activateWindow();
}

void Application::signalled() {
    if (!window_) return QCoreApplication::exit(0);
    // Whoever asks twice means it: exports aren't waited for, only what is to be saved.
    impatient_ = ending_;
    if (!ending_ && !window_->close()) return;
    startEnding();
    goOnEnding();
}

void Application::startEnding() {
    if (std::exchange(ending_, true)) return;
    // What is being typed counts.
    if (QWidget* focus = window_->focusWidget()) focus->clearFocus();
    window_->hide();
    QApplication::closeAllWindows();
    knownError_ = model_->state()._error;
    scheduler_.post([this] { goOnEnding(); });
}

void Application::goOnEnding() {
    if (!ending_ || saving_) return;
    const std::optional<std::string>& error = model_->state()._error;
    if (error && error != knownError_ && !impatient_) return comeBack();
    if (!model_->exports().empty() && !impatient_) return;
    saving_ = true;
    model_->finishSaving([this] {
        if (!ending_) return;  // another start has brought the window back
        saved_ = true;
        QCoreApplication::exit(0);
    });
}

}  // namespace quorvel
