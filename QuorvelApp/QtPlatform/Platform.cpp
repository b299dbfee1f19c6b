#include "QtPlatform/Platform.h"

#include "Desktop/Desktop.h"
#include "QtPlatform/QtText.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

namespace quorvel::Platform {

namespace {

// Not the locations that carry an application's name: those depend on what the program has told QCoreApplication.
std::filesystem::path ownFolder(QStandardPaths::StandardLocation location) {
    return toPath(QStandardPaths::writableLocation(location)) / appName;
}

}  // namespace

std::filesystem::path applicationSupport() {
    return ownFolder(QStandardPaths::GenericDataLocation);
}

std::filesystem::path temporaryFolder() {
    return toPath(QDir::tempPath());
}

std::filesystem::path settingsFile() {
    return ownFolder(QStandardPaths::GenericConfigLocation) / (std::string(appName) + ".conf");
}

// The file is named by its path: what Qt finds by a program's name it remembers, and reads others' settings beside it.

std::optional<std::string> userDefault(const std::string& key) {
    const QSettings stored(toQString(settingsFile()), QSettings::IniFormat);
    const QVariant value = stored.value(toQString(key));
    if (!value.isValid()) return std::nullopt;
    return value.toString().toStdString();
}

void setUserDefault(const std::string& key, const std::optional<std::string>& value) {
    QSettings stored(toQString(settingsFile()), QSettings::IniFormat);
    if (value)
        stored.setValue(toQString(key), toQString(*value));
    else
        stored.remove(toQString(key));
}

}  // namespace quorvel::Platform
