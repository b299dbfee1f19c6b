#pragma once

#include "Shell/Updater.h"

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

namespace quorvel {

/// What an updater found, in words: alerts for a check that the user asked for, and what a newer version brings. None
/// of it holds up whoever found it.
class UpdateDialogs : public QObject {
    Q_OBJECT
public:
    /// `window` gives the window that the dialogs belong to, or null; asked each time. Addresses go to the browser by
    /// way of `QDesktopServices`.
    UpdateDialogs(Updater& updater, std::function<QWidget*()> window, QObject* parent = nullptr);
    ~UpdateDialogs() override;

private:
    void showAlert(const QString& message, const QString& information);
    void showNews(const UpdateFeed::News& news, Updater::Occasion occasion);

    const QString version_;
    const std::function<QWidget*()> window_;
    QPointer<QWidget> shown_;  // one at a time
};

}  // namespace quorvel
