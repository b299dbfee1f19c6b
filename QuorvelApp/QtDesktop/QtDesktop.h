#pragma once

#include "Desktop/Desktop.h"
#include "Desktop/Scheduler.h"
#include "QtDesktop/StoredDefaults.h"

#include <functional>

class QWidget;

namespace quorvel {

/// The desktop that the user sits at: file dialogs, the file manager, stored settings.
class QtDesktop final : public Desktop {
public:
    /// `window` gives the window that a panel belongs to, or null; asked each time.
    QtDesktop(Scheduler& scheduler, std::function<QWidget*()> window);

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
};

}  // namespace quorvel
