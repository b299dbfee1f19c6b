#pragma once

#include <filesystem>
#include <optional>
#include <string>

/// What the platform gives every program of ours, with a window or without. Needs no QCoreApplication; any thread.
namespace quorvel::Platform {

/// The application's own folder for the user's data: "Quorvel" below $XDG_DATA_HOME or ~/.local/share. It need not
/// exist.
std::filesystem::path applicationSupport();

/// Where what needs no keeping goes. It exists.
std::filesystem::path temporaryFolder();

/// The file that holds the user's settings: Quorvel/Quorvel.conf below $XDG_CONFIG_HOME or ~/.config.
std::filesystem::path settingsFile();

/// A text that outlives the program, under a key; nothing removes it. Keys and texts are UTF-8.
std::optional<std::string> userDefault(const std::string& key);

/// Returns when it is on the disk, so the main thread leaves it to another one. A failure is silent.
void setUserDefault(const std::string& key, const std::optional<std::string>& value);

}  // namespace quorvel::Platform
