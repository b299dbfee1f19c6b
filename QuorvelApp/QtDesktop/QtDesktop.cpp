#include "QtDesktop/QtDesktop.h"

#include "QtDesktop/FilePanels.h"
#include "QtDesktop/FileReveal.h"
#include "QtPlatform/Platform.h"
#include "QtPlatform/QtText.h"

#include <QDBusConnection>
#include <QDesktopServices>
#include <QStandardPaths>
#include <QUrl>
#include <utility>

namespace quorvel {

using Path = std::filesystem::path;

namespace {

Path documentsFolder() {
    const Path documents = toPath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    std::error_code ignored;
    if (std::filesystem::is_directory(documents, ignored)) return documents;
    return toPath(QStandardPaths::writableLocation(QStandardPaths::HomeLocation));
}

}  // namespace

QtDesktop::QtDesktop(Scheduler& scheduler, std::function<QWidget*()> window)
    : scheduler_(scheduler), window_(std::move(window)), lastFolder_(documentsFolder()), defaults_(scheduler) {}

void QtDesktop::followLook(std::function<void(const DesktopLook&)> changed) {
    if (!LookSettings::hasBus()) return;
    look_ = std::make_unique<LookSettings>(std::move(changed));
    following_ = inBackground(
        scheduler_, [] { return QDBusConnection::sessionBus(); },
        [this](const QDBusConnection& bus) { look_->follow(bus); });
}

std::optional<Path> QtDesktop::chooseFile(const OpenPanel& panel) {
    return remembered(FilePanels::chooseFile(panel, lastFolder_, window_()));
}

std::optional<Path> QtDesktop::chooseFolder(const FolderPanel& panel) {
    const auto chosen = FilePanels::chooseFolder(panel, lastFolder_, window_());
    if (chosen) lastFolder_ = *chosen;
    return chosen;
}

std::optional<Path> QtDesktop::chooseSaveFile(const SavePanel& panel) {
    return remembered(FilePanels::chooseSaveFile(panel, lastFolder_, window_()));
}

std::optional<Path> QtDesktop::remembered(std::optional<Path> chosen) {
    if (chosen) lastFolder_ = chosen->parent_path();
    return chosen;
}

void QtDesktop::reveal(const Path& path) {
    const auto openFolder = [](const Path& folder) {
        // Without what opens folders there is only a complaint in the log.
        if (QStandardPaths::findExecutable("xdg-open").isEmpty()) return;
        QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(FileReveal::address(folder))));
    };
    // Connecting can start a bus and wait for it.
    revealing_ = inBackground(
        scheduler_, [] { return QDBusConnection::sessionBus(); },
        [path, openFolder](const QDBusConnection& bus) { FileReveal::reveal(path, bus, openFolder); });
}

std::optional<std::string> QtDesktop::userDefault(const std::string& key) const {
    return defaults_.value(key);
}

void QtDesktop::setUserDefault(const std::string& key, const std::optional<std::string>& value) {
    defaults_.set(key, value);
}

Path QtDesktop::applicationSupport() const {
    return Platform::applicationSupport();
}

Path QtDesktop::temporaryFolder() const {
    return Platform::temporaryFolder();
}

}  // namespace quorvel
