#pragma once

#include <QEventLoop>
#include <QTimer>
#include <functional>

namespace quorvel {

// All of it here: this folder's library knows no Qt.

/// Runs the event loop until `done`, looked at after each of the loop's turns. False if that doesn't come within a
/// minute.
[[nodiscard]] inline bool runUntil(const std::function<bool()>& done) {
    bool tooLong = false;
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, [&] { tooLong = true; });
    guard.start(60'000);
    QEventLoop loop;
    while (!done() && !tooLong) loop.processEvents(QEventLoop::WaitForMoreEvents);
    return done();
}

/// Lets the loop take what waits for it now, and all that comes of it.
inline void runWhatWaits() {
    QEventLoop loop;
    while (loop.processEvents()) {
    }
}

}  // namespace quorvel
