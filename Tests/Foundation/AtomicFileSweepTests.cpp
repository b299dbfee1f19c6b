#include "Foundation/AtomicFile.h"
#include "Foundation/FileBytes.h"
#include "Foundation/FileDescriptor.h"
#include "Support/TemporaryFolder.h"

#include <atomic>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace quorvel::AtomicFile {
namespace {

namespace fs = std::filesystem;

constexpr const char* neighbour = ".quorvel-0B8F6E52-6E0C-4B2D-9E7A-3F6C1D2A4B58.tmp";

class AtomicFileSweepTest : public testing::Test {
protected:
    void make(const fs::path& name) const { std::ofstream(folder / name) << "half"; }

    std::set<std::string> names() const {
        std::set<std::string> result;
        for (const auto& entry : fs::directory_iterator(folder.path())) result.insert(entry.path().filename());
        return result;
    }

    TemporaryFolder folder;
};

TEST_F(AtomicFileSweepTest, removesNeighboursOnly) {
    const std::set<std::string> others{
        "0B8F6E52-6E0C-4B2D-9E7A-3F6C1D2A4B58.json",
        "quorvel-0B8F6E52-6E0C-4B2D-9E7A-3F6C1D2A4B58.tmp",
        ".quorvel-0B8F6E52-6E0C-4B2D-9E7A-3F6C1D2A4B58",
        ".quorvel-0B8F6E52-6E0C-4B2D-9E7A-3F6C1D2A4B58.tmp~",
        ".quorvel-0B8F6E52-6E0C-4B2D-9E7A-3F6C1D2A4B5.tmp",
        ".quorvel-0B8F6E52-6E0C-4B2D-9E7A-3F6C1D2A4B588.tmp",
        ".quorvel-0b8f6e52-6e0c-4b2d-9e7a-3f6c1d2a4b58.tmp",
        ".quorvel-0B8F6E52+6E0C-4B2D-9E7A-3F6C1D2A4B58.tmp",
        ".quorvel-.tmp",
        ".quorvel-tmp",
        ".quorvel-notes.tmp",
    };
    for (const std::string& name : others) make(name);
    make(neighbour);
    make(".quorvel-2D1C9A70-91C4-4F6E-8C55-7E0A9B3D6F12.tmp");
    sweep(folder.path());
    EXPECT_EQ(names(), others);
}

TEST_F(AtomicFileSweepTest, followsNoLinkAndTakesNothingButFiles) {
    const std::vector<std::string> names{
        ".quorvel-00000000-0000-4000-8000-000000000001.tmp", ".quorvel-00000000-0000-4000-8000-000000000002.tmp",
        ".quorvel-00000000-0000-4000-8000-000000000003.tmp", ".quorvel-00000000-0000-4000-8000-000000000004.tmp"};
    make("precious");
    fs::create_symlink("precious", folder / names[0]);
    fs::create_symlink("nowhere", folder / names[1]);
    fs::create_directory(folder / names[2]);
    ASSERT_EQ(::mkfifo((folder / names[3]).c_str(), 0600), 0);
    sweep(folder.path());
    for (const std::string& name : names) EXPECT_TRUE(fs::exists(fs::symlink_status(folder / name))) << name;
    EXPECT_EQ(FileBytes::read(folder / "precious"), "half");
}

TEST_F(AtomicFileSweepTest, leavesSubfolders) {
    fs::create_directory(folder / "inner");
    make(fs::path("inner") / neighbour);
    sweep(folder.path());
    EXPECT_TRUE(fs::exists(folder / "inner" / neighbour));
    sweep(folder / "inner");
    EXPECT_FALSE(fs::exists(folder / "inner" / neighbour));
}

TEST_F(AtomicFileSweepTest, sweepsAFolderBehindALink) {
    fs::create_directory(folder / "real");
    fs::create_directory_symlink("real", folder / "link");
    make(fs::path("real") / neighbour);
    sweep(folder / "link");
    EXPECT_FALSE(fs::exists(folder / "real" / neighbour));
}

TEST_F(AtomicFileSweepTest, leavesWhatSomebodyIsWriting) {
    make(neighbour);
    {
        const FileDescriptor writing(::open((folder / neighbour).c_str(), O_WRONLY | O_CLOEXEC));
        ASSERT_EQ(::flock(writing.get(), LOCK_EX), 0);
        sweep(folder.path());
        EXPECT_TRUE(fs::exists(folder / neighbour));
    }
    sweep(folder.path());
    EXPECT_FALSE(fs::exists(folder / neighbour));
}

TEST_F(AtomicFileSweepTest, takesAnyPath) {
    make("file");
    for (const fs::path& path : {folder / "none", folder / "file", folder / "none/none", fs::path(),
                                 fs::path(std::string(5000, 'n')), fs::path("/dev/null")})
        sweep(path);
    EXPECT_EQ(names(), std::set<std::string>{"file"});
}

TEST_F(AtomicFileSweepTest, neverDisturbsWriters) {
    std::atomic<bool> isWriting = true;
    std::jthread sweeper([&] {
        while (isWriting) sweep(folder.path());
    });
    {
        std::vector<std::jthread> writers;
        for (char letter = 'a'; letter < 'd'; ++letter)
            writers.emplace_back([this, letter] {
                for (int i = 0; i < 60; ++i)
                    EXPECT_TRUE(write(folder / std::string(1, letter), std::string(20'000, letter)));
            });
    }
    isWriting = false;
    sweeper.join();
    EXPECT_EQ(names(), (std::set<std::string>{"a", "b", "c"}));
}

}  // namespace
}  // namespace quorvel::AtomicFile
