#pragma once

#include "Desktop/Desktop.h"
#include "Desktop/Scheduler.h"
#include "QtDesktop/LookSettings.h"
#include "QtDesktop/StoredDefaults.h"

#include <functional>
#include <memory>

class QWidget;

namespace quorvel {

/// The desktop that the user sits at: file dialogs, the file manager, stored settings.
class QtDesktop final : public Desktop {
public:
    /// `window` gives the window that a panel belongs to, or null; asked each time.
    QtDesktop(Scheduler& scheduler, std::function<QWidget*()> window);

    /// Tells `changed` how programs are to look, once the desktop has answered, and whenever that changes. To be called
    /// once; nothing is waited for.
    void followLook(std::function<void(const DesktopLook&)> changed);

    std::optional<std::filesystem::path> chooseFile(const OpenPanel& panel) override;
    std::optional<std::filesystem::path> chooseFolder(const FolderPanel& panel) override;
    std::optional<std::filesystem::path> chooseSaveFile(const SavePanel& panel) override;
    void reveal(const std::filesystem::path& path) override;
    std::optional<std::string> userDefault(const std::string& key) const override;
    void setUserDefault(const std::string& key, const std::optional<std::string>& value) override;
    std::filesystem::path applicationSupport() const override;
    std::filesystem::path temporaryFolder() const override;

private:
    std::optional<std::filesystem::path> remembered(std::optional<std::filesystem::path> chosen);

    Scheduler& scheduler_;
    std::function<QWidget*()> window_;
    std::filesystem::path lastFolder_;  // that the user was in; panels open there
    StoredDefaults defaults_;
    Scheduler::Task revealing_;
    std::unique_ptr<LookSettings> look_;
    Scheduler::Task following_;
};

}  // namespace quorvel
