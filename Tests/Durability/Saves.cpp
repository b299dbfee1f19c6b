#include "Durability/Saves.h"

#include "Durability/SavedRecord.h"
#include "Foundation/AtomicFile.h"
#include "Foundation/FileBytes.h"

#include <cerrno>
#include <fstream>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvel {

namespace fs = std::filesystem;

SavePlace::SavePlace(Kind kind) : kind_(kind), path_(folder() / "deck.json") {
    fs::create_directory(folder());
    if (kind == Kind::newFile) return;
    oldText_ = savedRecord(0);
    std::ofstream(path_) << oldText_;
    if (kind == Kind::oldFile) {
        // Root alone may; another user's file just stays its own.
        [[maybe_unused]] const int changed = ::chown(path_.c_str(), 1234, 2345);
        fs::permissions(path_, oldPermissions);
        return;
    }
    fs::create_directory(root_ / "links");
    fs::create_symlink(path_, root_ / "links/second");
    fs::create_symlink("links/second", root_ / "first");
    path_ = root_ / "first";
}

std::string SavePlace::text() const {
    return FileBytes::read(path_).value_or("");
}

std::size_t SavePlace::neighbours() const {
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(folder())) count += entry.path().filename() != "deck.json";
    return count;
}

void SavePlace::expectLaterSaveSucceeds() const {
    AtomicFile::sweep(folder());
    EXPECT_EQ(neighbours(), 0u);
    const bool existed = fs::exists(path_);
    const fs::perms before = existed ? fs::status(path_).permissions() : fs::perms();
    const std::string later = savedRecord(99);
    EXPECT_EQ(saveStatus(path_, later), 0);
    EXPECT_TRUE(text() == later);
    EXPECT_EQ(neighbours(), 0u);
    EXPECT_TRUE(!existed || fs::status(path_).permissions() == before);
    if (kind_ == Kind::behindLinks) {
        EXPECT_TRUE(fs::is_symlink(path_));
        EXPECT_TRUE(fs::is_symlink(root_ / "links/second"));
    }
}

int saveStatus(const fs::path& path, std::string_view bytes) {
    const auto done = AtomicFile::write(path, bytes);
    return done ? 0 : done.error().code;
}

int runForked(const std::function<int()>& work) {
    const pid_t child = ::fork();
    if (child < 0) throw std::runtime_error("no process can be started");
    if (child == 0) ::_exit(work());
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR) throw std::runtime_error("the end of a process can’t be awaited");
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace quorvel
