#include "QtDesktop/FileReveal.h"

#include "QtPlatform/QtText.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QMetaObject>
#include <QStringList>

namespace quorvel::FileReveal {

namespace {

/// A file manager may have to be started first; who waits longer sees the folder instead.
constexpr int patienceInMilliseconds = 10'000;

}  // namespace

std::string address(const Path& path) {
    return "file://" + QByteArray::fromStdString(path.string()).toPercentEncoding("/").toStdString();
}

QDBusMessage call(const Path& path) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1", "org.freedesktop.FileManager1", "ShowItems");
    message.setArguments({QStringList(toQString(address(path))), QString()});
    return message;
}

Path folderAround(const Path& path) {
    std::error_code ignored;
    Path folder = path.parent_path();
    while (!std::filesystem::is_directory(folder, ignored) && folder.has_relative_path()) folder = folder.parent_path();
    return folder;
}

void reveal(const Path& path, const QDBusConnection& bus, std::function<void(const Path&)> openFolder) {
    std::error_code ignored;
    const Path file = std::filesystem::absolute(path, ignored).lexically_normal();
    const auto open = [file, openFolder = std::move(openFolder)] { openFolder(folderAround(file)); };
    if (!bus.isConnected()) {
        QMetaObject::invokeMethod(QCoreApplication::instance(), open, Qt::QueuedConnection);
        return;
    }
    auto* answer =
        new QDBusPendingCallWatcher(bus.asyncCall(call(file), patienceInMilliseconds), QCoreApplication::instance());
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer, [answer, open] {
        answer->deleteLater();
        if (answer->isError()) open();
    });
}

}  // namespace quorvel::FileReveal
