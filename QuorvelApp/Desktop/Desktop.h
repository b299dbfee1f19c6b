#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// What the program is called in its own sentences.
inline constexpr std::string_view appName = "Quorvel";

/// A kind of file that a panel offers.
struct FileType {
    std::string name;                     ///< "Excel workbook"
    std::vector<std::string> extensions;  ///< without the dot

    bool operator==(const FileType&) const = default;
};

/// Asks for one existing file.
struct OpenPanel {
    std::string title;
    std::string message;
    std::vector<FileType> types;

    bool operator==(const OpenPanel&) const = default;
};

/// Asks for one folder; a new one can be made in it.
struct FolderPanel {
    std::string title;
    std::string message;
    std::string prompt;                          ///< what stands on its button
    std::optional<std::filesystem::path> start;  ///< where it opens

    bool operator==(const FolderPanel&) const = default;
};

/// Asks where to save one file, and itself asks before an existing one is replaced.
struct SavePanel {
    std::string title;
    FileType type;
    std::string fileName;  ///< proposed

    bool operator==(const SavePanel&) const = default;
};

/// What the model needs of the desktop around it. On the main thread. Panels are modal and answer nothing when the user
/// cancels; while one is shown, the model's jobs go on running.
class Desktop {
public:
    virtual ~Desktop() = default;

    virtual std::optional<std::filesystem::path> chooseFile(const OpenPanel& panel) = 0;
    virtual std::optional<std::filesystem::path> chooseFolder(const FolderPanel& panel) = 0;
    virtual std::optional<std::filesystem::path> chooseSaveFile(const SavePanel& panel) = 0;

    /// Shows a file or folder in the system's file browser, selected. Does what it can and never fails.
    virtual void reveal(const std::filesystem::path& path) = 0;

    /// A text that outlives the program, under a key; nothing removes it.
    virtual std::optional<std::string> userDefault(const std::string& key) const = 0;
    virtual void setUserDefault(const std::string& key, const std::optional<std::string>& value) = 0;

    /// The application's own folder for the user's data. It need not exist yet.
    virtual std::filesystem::path applicationSupport() const = 0;

    /// Where what needs no keeping goes.
    virtual std::filesystem::path temporaryFolder() const = 0;
};

}  // namespace quorvel
