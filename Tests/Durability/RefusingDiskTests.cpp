// Disks that are full and folders that may not be written to, as the kernel itself makes them.

#include "Durability/SavedRecord.h"
#include "Durability/Saves.h"
#include "Foundation/AtomicFile.h"
#include "Foundation/FileBytes.h"
#include "Foundation/FileDescriptor.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quorvel {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t diskSize = 65536;

bool writeText(const char* path, const std::string& text) {
    const FileDescriptor file(::open(path, O_WRONLY | O_CLOEXEC));
    return file && ::write(file.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

/// Gives this process a view of its own on what is mounted. Who isn't root becomes the only user of a small world.
bool detachMounts() {
    if (::unshare(CLONE_NEWNS) == 0) return true;
    const std::string user = std::to_string(::geteuid());
    const std::string group = std::to_string(::getegid());
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && writeText("/proc/self/setgroups", "deny") &&
           writeText("/proc/self/uid_map", user + " " + user + " 1") &&
           writeText("/proc/self/gid_map", group + " " + group + " 1");
}

/// Puts a disk of 64 KB at `folder`, which only this process sees. Not everyone may: then false, and nothing is there.
bool mountSmallDisk(const fs::path& folder) {
    // What is mounted here stays here.
    return detachMounts() && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("disk", folder.c_str(), "tmpfs", 0, "size=64k,mode=0777") == 0;
}

/// The next best: files end at the same size, with another errno.
bool limitFileSize() {
    const rlimit limit{diskSize, diskSize};
    return std::signal(SIGXFSZ, SIG_IGN) != SIG_ERR && ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

/// In a child, since neither the disk nor the limit can be taken back.
int fillDisk(const fs::path& folder, const std::string& fits, const std::string& tooLong) {
    const bool isMounted = mountSmallDisk(folder);
    EXPECT_TRUE(isMounted || limitFileSize());
    const int full = isMounted ? ENOSPC : EFBIG;
    const fs::path path = folder / "deck.json";
    EXPECT_EQ(saveStatus(path, fits), 0);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(saveStatus(path, tooLong), full);
        EXPECT_EQ(saveStatus(folder / "other.json", tooLong), full);
        EXPECT_TRUE(FileBytes::read(path) == fits);
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
    }
    // Old and new share the disk for a moment, beside another file of the same size.
    EXPECT_EQ(saveStatus(folder / "other.json", fits), 0);
    EXPECT_EQ(saveStatus(path, fits + "\n"), 0);
    EXPECT_TRUE(FileBytes::read(path) == fits + "\n");
    return testing::Test::HasFailure() ? 1 : 0;
}

TEST(FullDisk, keepsTheOldFileAndTakesLaterSaves) {
    const TemporaryFolder folder;
    const std::string fits = savedRecord(0).substr(0, 20'000);
    const std::string tooLong = savedRecord(1);
    ASSERT_GT(tooLong.size(), diskSize);
    EXPECT_EQ(runForked([&] { return fillDisk(folder.path(), fits, tooLong); }), 0);
}

TEST(FullDisk, isToldWhereFilesMayNotGrow) {
    const SavePlace place(SavePlace::Kind::oldFile);
    EXPECT_EQ(runForked([&] { return limitFileSize() ? saveStatus(place.path(), savedRecord(1)) : 100; }), EFBIG);
    EXPECT_TRUE(place.text() == place.oldText());
    EXPECT_EQ(place.neighbours(), 0u);
    place.expectLaterSaveSucceeds();
}

/// Makes this process one of a user who may not do everything: another user, or where there is none to become (in a
/// container that knows of one user only), the same one without root's powers.
bool becomeOrdinary() {
    if (::geteuid() != 0) return true;
    constexpr uid_t nobody = 65534;
    if (::setgroups(0, nullptr) == 0 && ::setresgid(nobody, nobody, nobody) == 0 &&
        ::setresuid(nobody, nobody, nobody) == 0)
        return true;
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct none[2]{};
    return ::syscall(SYS_capset, &header, none) == 0;
}

TEST(ReadOnlyFolder, refusesAnOrdinaryUserAndKeepsAll) {
    const SavePlace place(SavePlace::Kind::oldFile);
    const auto left = place.folder() / ".quorvel-0B8F6E52-6E0C-4B2D-9E7A-3F6C1D2A4B58.tmp";
    ASSERT_TRUE(AtomicFile::write(left, "half"));
    for (const auto& path : {place.folder().parent_path(), place.folder()}) fs::permissions(path, fs::perms(0555));
    fs::permissions(place.path(), fs::perms(0666));

    EXPECT_EQ(runForked([&] { return becomeOrdinary() ? saveStatus(place.path(), savedRecord(1)) : 100; }), EACCES);
    EXPECT_EQ(runForked([&] { return becomeOrdinary() ? saveStatus(place.folder() / "new", "new") : 100; }), EACCES);
    EXPECT_EQ(runForked([&] {
                  if (!becomeOrdinary()) return 100;
                  AtomicFile::sweep(place.folder());
                  return 0;
              }),
              0);
    EXPECT_TRUE(place.text() == place.oldText());
    EXPECT_EQ(place.neighbours(), 1u);
    EXPECT_TRUE(fs::exists(left));

    for (const auto& path : {place.folder().parent_path(), place.folder()}) fs::permissions(path, fs::perms(0777));
    EXPECT_EQ(runForked([&] { return becomeOrdinary() ? saveStatus(place.path(), savedRecord(1)) : 100; }), 0);
    EXPECT_TRUE(place.text() == savedRecord(1));
    fs::permissions(place.path(), fs::perms(0664));
    place.expectLaterSaveSucceeds();
}

TEST(ReadOnlyFile, isNotReplacedByAnOrdinaryUser) {
    const SavePlace place(SavePlace::Kind::oldFile);
    for (const auto& path : {place.folder().parent_path(), place.folder()}) fs::permissions(path, fs::perms(0777));
    fs::permissions(place.path(), fs::perms(0444));
    EXPECT_EQ(runForked([&] { return becomeOrdinary() ? saveStatus(place.path(), savedRecord(1)) : 100; }), EACCES);
    EXPECT_TRUE(place.text() == place.oldText());
    EXPECT_EQ(place.neighbours(), 0u);
    fs::permissions(place.path(), fs::perms(0664));
    place.expectLaterSaveSucceeds();
}

}  // namespace
}  // namespace quorvel
