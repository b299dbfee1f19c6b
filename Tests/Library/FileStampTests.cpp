#include "Library/FileStamp.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quorvel {
namespace {

class FileStampTest : public testing::Test {
protected:
    FileStampTest() { std::ofstream(file) << "Name\n"; }

    void setTime(std::int64_t seconds, long nanoseconds) {
        const timespec times[2] = {{seconds, nanoseconds}, {seconds, nanoseconds}};
        ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    }

    TemporaryFolder folder;
    const std::filesystem::path file = folder / "cards.csv";
};

TEST_F(FileStampTest, IsTimeAndSize) {
    const std::tuple<std::int64_t, long, const char*> cases[] = {
        {1'779'000'000, 123'456'789, "1779000000.123456789-5"},
        {1'779'000'000, 5, "1779000000.000000005-5"},
        {1'779'000'000, 0, "1779000000.000000000-5"},
        {0, 0, "0.000000000-5"},
        {-1, 0, "-1.000000000-5"},
        {-1, 750'000'000, "-0.250000000-5"},
        {-3, 750'000'000, "-2.250000000-5"},
    };
    for (const auto& [seconds, nanoseconds, stamp] : cases) {
        setTime(seconds, nanoseconds);
        EXPECT_EQ(fileStamp(file), stamp);
    }
}

TEST_F(FileStampTest, TellsEveryChange) {
    setTime(1'779'000'000, 1);
    const auto before = fileStamp(file);
    EXPECT_EQ(fileStamp(file), before);
    setTime(1'779'000'000, 2);
    EXPECT_NE(fileStamp(file), before);
    std::ofstream(file, std::ios::app) << "x";
    setTime(1'779'000'000, 1);
    EXPECT_NE(fileStamp(file), before);
}

TEST_F(FileStampTest, SeesThroughLinks) {
    std::filesystem::create_symlink(file, folder / "link");
    EXPECT_EQ(fileStamp(folder / "link"), fileStamp(file));
}

TEST_F(FileStampTest, IsNothingWhereNothingCanBeSeen) {
    std::filesystem::create_symlink(folder / "nowhere", folder / "link");
    for (const auto& path : {folder / "none.csv", file / "inside", folder / "link", std::filesystem::path(),
                             std::filesystem::path(file.string() + std::string("\0", 1))})
        EXPECT_EQ(fileStamp(path), std::nullopt) << path;
}

TEST_F(FileStampTest, NeverWaitsForAPipe) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_TRUE(fileStamp(folder / "pipe"));
}

}  // namespace
}  // namespace quorvel
