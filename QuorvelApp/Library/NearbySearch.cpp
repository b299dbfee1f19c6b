#include "Library/NearbySearch.h"

#include <algorithm>
#include <array>
#include <deque>
#include <dirent.h>
#include <fcntl.h>
#include <iterator>
#include <memory>
#include <string_view>
#include <unistd.h>
#include <unordered_set>
#include <vector>

namespace quorvel::NearbySearch {

namespace {

using Path = std::filesystem::path;

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

enum class LastLink { followed, refused };

OpenFolder openFolder(const Path& path, LastLink link) {
    const int refusal = link == LastLink::refused ? O_NOFOLLOW : 0;
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC | refusal);
    if (descriptor < 0) return nullptr;
    DIR* folder = ::fdopendir(descriptor);
    if (!folder) ::close(descriptor);
    return OpenFolder(folder);
}

/// Programs that save rename the old file to such a name for a moment or for good, and people put files aside so.
bool isBackupName(std::string_view name) {
    static constexpr std::array<std::string_view, 5> endings{"~", ".bak", ".old", ".orig", ".tmp"};
    return name.starts_with('.') ||
           std::ranges::any_of(endings, [&](std::string_view ending) { return name.ends_with(ending); });
}

/// "." and ".." begin like a hidden folder.
bool isSetAside(std::string_view folderName) {
    return folderName.starts_with('.') || folderName == "Trash";
}

bool mayBeFolder(const dirent& entry) {
    return entry.d_type == DT_DIR || entry.d_type == DT_UNKNOWN;
}

class Search {
public:
    Search(const Path& path, const FileIdentity& identity)
        : identity_(identity),
          mayBeBackup_(isBackupName(path.filename().native())),
          mayBeSetAside_(isSetAside(path.filename().native())) {
        begin(path);
    }

    Result run() {
        while (!queue_.empty() && !isOver()) {
            const Folder next = std::move(queue_.front());
            queue_.pop_front();
            visit(next);
        }
        return std::move(result_);
    }

private:
    struct Folder {
        Path path;
        std::size_t steps = 0;
        bool isOutward = false;  // the first or one around it; the user's own way there may lead through links
    };

    /// Queues the nearest folder that is still there.
    void begin(const Path& path) {
        Path lost = path.filename();
        for (Path start = path.parent_path();; start = start.parent_path()) {
            const auto found = findFile(start);
            if (found && found->isFolder) {
                if (std::next(lost.begin()) != lost.end()) belowLostFolder_ = lost.lexically_relative(*lost.begin());
                device_ = found->identity.device;
                visited_.insert(found->identity.inode);
                queue_.push_back({start, 0, true});
                return;
            }
            if (!start.has_relative_path()) return;
            lost = start.filename() / lost;
        }
    }

    bool isOver() const { return result_.path || result_.cost >= mostCost; }

    void visit(const Folder& folder) {
        result_.cost += openCost;
        const OpenFolder open = openFolder(folder.path, folder.isOutward ? LastLink::followed : LastLink::refused);
        if (!open) return;
        const std::size_t limit = folder.steps == 0 ? mostCost : std::min(mostCost, result_.cost + mostCostOfOneFolder);
        std::vector<Folder> inner;
        while (!result_.path && result_.cost < limit) {
            const dirent* entry = ::readdir(open.get());
            if (!entry) break;
            ++result_.cost;
            // Most entries are other files: for them nothing is allocated.
            if (entry->d_ino == identity_.inode || mayBeFolder(*entry))
                look(folder, ::dirfd(open.get()), *entry, entry->d_name, inner);
        }
        // What was moved out is more likely there than in one of many subfolders.
        if (folder.isOutward) addParent(folder);
        std::ranges::move(inner, std::back_inserter(queue_));
    }

    void look(const Folder& folder, int descriptor, const dirent& entry, const Path& name, std::vector<Folder>& inner) {
        const bool isItself = name == "." || name == "..";
        if (entry.d_ino == identity_.inode && !isItself && isSame(descriptor, name)) {
            result_.path = folder.path / name;
            return;
        }
        if (folder.steps >= mostSteps || !mayBeFolder(entry) || isSetAside(name.native())) return;
        const bool isBesideLostFolder = folder.steps == 0 && belowLostFolder_;
        if (isBesideLostFolder && isSame(descriptor, name / *belowLostFolder_)) {
            result_.path = folder.path / name / *belowLostFolder_;
            return;
        }
        const bool isReachable = result_.cost + (queue_.size() + inner.size()) * openCost < mostCost;
        if (isReachable && mayEnter(descriptor, name)) inner.push_back({folder.path / name, folder.steps + 1});
    }

    void addParent(const Folder& folder) {
        if (folder.steps >= mostSteps || !folder.path.has_relative_path()) return;
        const Path parent = folder.path.parent_path();
        result_.cost += lookCost;
        const auto found = findFile(parent);
        // Nothing leaves its file system by a rename.
        if (!found || found->identity.device != device_ || !visited_.insert(found->identity.inode).second) return;
        queue_.push_back({parent, folder.steps + 1, true});
    }

    bool isSame(int folder, const Path& name) {
        result_.cost += lookCost;
        const auto found = findEntry(folder, name);
        if (!found || found->identity != identity_) return false;
        const std::string fileName = name.filename();
        return found->isFolder ? mayBeSetAside_ || !isSetAside(fileName) : mayBeBackup_ || !isBackupName(fileName);
    }

    /// Looked at before it is opened: opening may wake another file system, and wait for it.
    bool mayEnter(int folder, const Path& name) {
        result_.cost += lookCost;
        const auto found = findEntry(folder, name);
        return found && found->isFolder && found->identity.device == device_ &&
               visited_.insert(found->identity.inode).second;
    }

    const FileIdentity& identity_;
    const bool mayBeBackup_;
    const bool mayBeSetAside_;
    std::uint64_t device_ = 0;
    std::optional<Path> belowLostFolder_;
    std::unordered_set<std::uint64_t> visited_;  // inodes of folders
    std::deque<Folder> queue_;
    Result result_;
};

}  // namespace

Result find(const Path& path, const FileIdentity& identity) {
    if (!identity.birth || !path.is_absolute() || path.native().find('\0') != std::string::npos) return {};
    return Search(path, identity).run();
}

}  // namespace quorvel::NearbySearch
