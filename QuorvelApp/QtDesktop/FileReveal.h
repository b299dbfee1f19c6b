#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <filesystem>
#include <functional>
#include <string>

/// Showing a file in the file manager, selected.
namespace quorvel::FileReveal {

using Path = std::filesystem::path;

/// The "file:" address of an absolute path, whatever bytes it has.
std::string address(const Path& path);

/// The call that asks the file manager to show `path` in its folder, selected.
QDBusMessage call(const Path& path);

/// The nearest folder around `path` that is there: what is opened where nothing can select.
Path folderAround(const Path& path);

/// Asks the file manager over `bus` and returns at once. `openFolder` gets the folder around the file when there is no
/// bus, no file manager on it, or none that answers, later and on this thread.
void reveal(const Path& path, const QDBusConnection& bus, std::function<void(const Path& folder)> openFolder);

}  // namespace quorvel::FileReveal
