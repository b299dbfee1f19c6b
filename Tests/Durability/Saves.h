#pragma once

#include "Support/TemporaryFolder.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace quorvel {

/// A file to be saved, in one of the ways that files are there before a save.
class SavePlace {
public:
    enum class Kind {
        newFile,     ///< nothing is there
        oldFile,     ///< a file with permissions of its own, and where this user may, of another owner
        behindLinks  ///< a relative link to an absolute link to a file in another folder
    };
    static constexpr std::array kinds{Kind::newFile, Kind::oldFile, Kind::behindLinks};

    /// Of an `oldFile`.
    static constexpr std::filesystem::perms oldPermissions{0664};

    explicit SavePlace(Kind kind);

    /// What is saved to.
    const std::filesystem::path& path() const { return path_; }
    /// Where the bytes and their neighbour really go.
    std::filesystem::path folder() const { return root_ / "files"; }

    /// What the file held at first: a record, or nothing where there was none.
    const std::string& oldText() const { return oldText_; }
    /// What it holds now; empty where there is none.
    std::string text() const;

    /// Files in `folder` beside the file itself.
    std::size_t neighbours() const;

    /// Sweeps, saves once more, and expects that all is as it should be: the new bytes, nothing else in the folder,
    /// links still links, permissions as they were.
    void expectLaterSaveSucceeds() const;

private:
    TemporaryFolder root_;
    Kind kind_;
    std::filesystem::path path_;
    std::string oldText_;
};

/// 0 for a save that succeeded, else its errno: the exit status of a process that saves.
int saveStatus(const std::filesystem::path& path, std::string_view bytes);

/// Runs `work` in a child process that isn't traced and answers as a shell would: its status, or 128 plus a signal.
int runForked(const std::function<int()>& work);

}  // namespace quorvel
