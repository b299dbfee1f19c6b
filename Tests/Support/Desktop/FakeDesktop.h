#pragma once

#include "Desktop/Desktop.h"
#include "Support/TemporaryFolder.h"

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace quorvel {

/// A desktop without a screen: panels are answered from a script, and what was asked and shown is written down.
/// Its folders are real and go with it.
class FakeDesktop final : public Desktop {
public:
    using Path = std::filesystem::path;

    /// What the next panels are answered, in order; nothing is a cancel. A panel beyond the script is a cancel, too.
    std::deque<std::optional<Path>> answers;

    std::vector<std::variant<OpenPanel, FolderPanel, SavePanel>> asked;
    std::vector<Path> revealed;
    std::map<std::string, std::string> defaults;

    /// Runs while a panel is shown, before it is answered.
    std::function<void()> whileShown;

    std::optional<Path> chooseFile(const OpenPanel& panel) override { return answer(panel); }
    std::optional<Path> chooseFolder(const FolderPanel& panel) override { return answer(panel); }
    std::optional<Path> chooseSaveFile(const SavePanel& panel) override { return answer(panel); }
    void reveal(const Path& path) override { revealed.push_back(path); }

    std::optional<std::string> userDefault(const std::string& key) const override {
        const auto found = defaults.find(key);
        return found == defaults.end() ? std::nullopt : std::optional(found->second);
    }
    void setUserDefault(const std::string& key, const std::optional<std::string>& value) override {
        if (value)
            defaults[key] = *value;
        else
            defaults.erase(key);
    }

    Path applicationSupport() const override { return folder.path() / "Application Support"; }
    Path temporaryFolder() const override { return folder.path() / "Temporary"; }

    TemporaryFolder folder;

private:
    template <class Panel>
    std::optional<Path> answer(const Panel& panel) {
        asked.push_back(panel);
        if (whileShown) whileShown();
        if (answers.empty()) return std::nullopt;
        const std::optional<Path> next = answers.front();
        answers.pop_front();
        return next;
    }
};

}  // namespace quorvel
