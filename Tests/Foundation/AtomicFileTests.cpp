#include "Foundation/AtomicFile.h"
#include "Foundation/FileBytes.h"
#include "Support/TemporaryFolder.h"

#include <cerrno>
#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace quorvel::AtomicFile {
namespace {

namespace fs = std::filesystem;

/// While it lives, this process can't make a file longer than `bytes`: a disk that fills up.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    void (*handler_)(int);
    rlimit before_{};
};

class AtomicFileTest : public testing::Test {
protected:
    std::size_t entries() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()));
    }

    void expectFailure(const fs::path& path, int code) {
        EXPECT_EQ(write(path, "new"), std::unexpected(FileFailure{path, code, FileFailure::Operation::write}));
    }

    TemporaryFolder folder;
};

TEST_F(AtomicFileTest, writesAndReplaces) {
    const auto path = folder / "a.json";
    ASSERT_TRUE(write(path, "one"));
    EXPECT_EQ(FileBytes::read(path), "one");
    std::string bytes(3'000'000, 'x');
    bytes[1'000'000] = '\0';
    ASSERT_TRUE(write(path, bytes));
    EXPECT_EQ(FileBytes::read(path), bytes);
    ASSERT_TRUE(write(path, ""));
    EXPECT_EQ(FileBytes::read(path), "");
    EXPECT_EQ(entries(), 1u);
}

TEST_F(AtomicFileTest, writesToARelativePath) {
    const auto before = fs::current_path();
    fs::current_path(folder.path());
    EXPECT_TRUE(write("plain", "text"));
    fs::current_path(before);
    EXPECT_EQ(FileBytes::read(folder / "plain"), "text");
}

TEST_F(AtomicFileTest, keepsPermissions) {
    const auto path = folder / "a";
    const mode_t mask = ::umask(027);
    ASSERT_TRUE(write(path, "one"));
    ::umask(mask);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640)) << "a new file has what the user's mask leaves";
    fs::permissions(path, fs::perms(0606));
    ASSERT_TRUE(write(path, "two"));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0606));
}

TEST_F(AtomicFileTest, writesThroughLinks) {
    fs::create_directory(folder / "real");
    ASSERT_TRUE(write(folder / "real/a", "one"));
    fs::create_symlink("real/a", folder / "link");
    fs::create_symlink("link", folder / "second");
    ASSERT_TRUE(write(folder / "second", "two"));
    EXPECT_TRUE(fs::is_symlink(folder / "second"));
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(FileBytes::read(folder / "real/a"), "two");

    fs::create_symlink(folder / "real/new", folder / "dangling");
    ASSERT_TRUE(write(folder / "dangling", "three"));
    EXPECT_TRUE(fs::is_symlink(folder / "dangling"));
    EXPECT_EQ(FileBytes::read(folder / "real/new"), "three");

    // Relative targets begin at the link's own folder, wherever the path to it led.
    fs::create_directory(folder / "links");
    fs::create_directory_symlink("../real", folder / "links/folder");
    fs::create_symlink("../links/later", folder / "real/up");
    ASSERT_TRUE(write(folder / "links/folder/up", "four"));
    EXPECT_TRUE(fs::is_symlink(folder / "real/up"));
    EXPECT_EQ(FileBytes::read(folder / "links/later"), "four");
    fs::create_symlink("none/a", folder / "nowhere");
    expectFailure(folder / "nowhere", ENOENT);
    EXPECT_TRUE(fs::is_symlink(folder / "nowhere"));

    fs::create_symlink("loop", folder / "loop");
    expectFailure(folder / "loop", ELOOP);
}

TEST_F(AtomicFileTest, leavesOtherHardLinksTheOldBytes) {
    ASSERT_TRUE(write(folder / "a", "one"));
    fs::create_hard_link(folder / "a", folder / "b");
    ASSERT_TRUE(write(folder / "a", "two"));
    EXPECT_EQ(FileBytes::read(folder / "b"), "one");
}

TEST_F(AtomicFileTest, replacesRegularFilesOnly) {
    fs::create_directory(folder / "folder");
    expectFailure(folder / "folder", EISDIR);
    expectFailure(folder / "folder/", EISDIR);
    expectFailure(folder / "folder/..", EISDIR);
    ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
    expectFailure(folder / "fifo", EINVAL);
    EXPECT_TRUE(fs::is_fifo(folder / "fifo"));
    expectFailure("/dev/null", EINVAL);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(AtomicFileTest, tellsWhatIsWrongWithThePath) {
    expectFailure(folder / "none/a", ENOENT);
    ASSERT_TRUE(write(folder / "a", "one"));
    expectFailure(folder / "a/b", ENOTDIR);
    expectFailure("", EISDIR);
}

TEST_F(AtomicFileTest, takesTheLongestName) {
    const auto longest = folder / std::string(255, 'n');
    ASSERT_TRUE(write(longest, "one"));
    ASSERT_TRUE(write(longest, "two"));
    EXPECT_EQ(FileBytes::read(longest), "two");
    expectFailure(folder / std::string(256, 'n'), ENAMETOOLONG);
    EXPECT_EQ(entries(), 1u);
}

TEST_F(AtomicFileTest, leavesTheOldFileWhenTheDiskIsFull) {
    const auto path = folder / "a";
    ASSERT_TRUE(write(path, "old"));
    {
        const FileSizeLimit limit(100'000);
        const auto done = write(path, std::string(100'001, 'x'));
        ASSERT_FALSE(done);
        EXPECT_EQ(done.error().code, EFBIG);
        EXPECT_FALSE(write(folder / "new", std::string(5'000'000, 'x')));
        EXPECT_TRUE(write(folder / "fits", std::string(100'000, 'x')));
    }
    EXPECT_EQ(FileBytes::read(path), "old");
    EXPECT_EQ(entries(), 2u) << "nothing half-written stays behind";
}

TEST_F(AtomicFileTest, showsReadersWholeFilesOnly) {
    const auto path = folder / "a";
    const std::string a(200'000, 'a');
    const std::string b(300'000, 'b');
    ASSERT_TRUE(write(path, a));
    std::jthread writer([&](std::stop_token stop) {
        for (int i = 0; i < 40 && !stop.stop_requested(); ++i) EXPECT_TRUE(write(path, i % 2 == 0 ? b : a));
    });
    for (int i = 0; i < 200; ++i) {
        const auto bytes = FileBytes::read(path);
        ASSERT_TRUE(bytes);
        ASSERT_TRUE(*bytes == a || *bytes == b);
    }
}

TEST_F(AtomicFileTest, letsManyWriteAtOnce) {
    {
        std::vector<std::jthread> threads;
        for (char letter = 'a'; letter < 'e'; ++letter)
            threads.emplace_back([this, letter] {
                for (int i = 0; i < 10; ++i) EXPECT_TRUE(write(folder / "same", std::string(10'000, letter)));
            });
    }
    const auto bytes = FileBytes::read(folder / "same");
    ASSERT_TRUE(bytes);
    EXPECT_EQ(*bytes, std::string(10'000, bytes->front()));
    EXPECT_EQ(entries(), 1u);
}

}  // namespace
}  // namespace quorvel::AtomicFile
