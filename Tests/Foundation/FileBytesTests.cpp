#include "Foundation/FileBytes.h"
#include "Support/TemporaryFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace quorvel::FileBytes {
namespace {

class FileBytesTest : public testing::Test {
protected:
    std::filesystem::path make(const std::string& name, const std::string& bytes) {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return folder / name;
    }

    TemporaryFolder folder;
};

TEST_F(FileBytesTest, readsEveryByte) {
    std::string bytes;
    for (int i = 0; i < 300'000; ++i) bytes += static_cast<char>(i * 7);
    EXPECT_EQ(read(make("a", bytes)), bytes);
    EXPECT_EQ(read(make("empty", "")), "");
}

TEST_F(FileBytesTest, followsLinks) {
    make("a", "text");
    std::filesystem::create_symlink("a", folder / "link");
    EXPECT_EQ(read(folder / "link"), "text");
    EXPECT_TRUE(isRegularFile(folder / "link"));
    std::filesystem::create_symlink("loop", folder / "loop");
    EXPECT_EQ(read(folder / "loop").error().code, ELOOP);
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    EXPECT_EQ(read(folder / "dangling").error().code, ENOENT);
}

TEST_F(FileBytesTest, refusesWhatIsNoRegularFileWithoutBlocking) {
    const auto fifo = folder / "fifo";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_EQ(read(fifo), std::unexpected(FileFailure{fifo, EINVAL}));
    EXPECT_EQ(read(folder.path()).error().code, EISDIR);
    EXPECT_EQ(read("/dev/zero").error().code, EINVAL);

    const auto socketPath = folder / "socket";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(socketPath.string().size(), sizeof address.sun_path);
    socketPath.string().copy(address.sun_path, sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(read(socketPath).error().code, EINVAL);
    ::close(socket);

    for (const auto& path : {fifo, folder.path(), std::filesystem::path("/dev/zero"), socketPath, folder / "none"})
        EXPECT_FALSE(isRegularFile(path)) << path;
}

TEST_F(FileBytesTest, tellsWhatIsMissing) {
    EXPECT_EQ(read(folder / "none"), std::unexpected(FileFailure{folder / "none", ENOENT}));
    EXPECT_EQ(read(make("a", "") / "b").error().code, ENOTDIR);
    EXPECT_EQ(read("").error().code, ENOENT);
    EXPECT_EQ(read(folder / std::string(300, 'x')).error().code, ENAMETOOLONG);
}

TEST_F(FileBytesTest, keepsToItsLimit) {
    const auto path = make("a", "12345");
    EXPECT_EQ(read(path, 5), "12345");
    EXPECT_EQ(read(path, 4).error().code, EFBIG);
    EXPECT_EQ(read(make("empty", ""), 0), "");
}

TEST_F(FileBytesTest, failsForAHugeFileBeforeReadingIt) {
    const auto path = make("huge", "");
    ASSERT_EQ(::truncate(path.c_str(), off_t{1} << 42), 0) << "a file with a hole of four terabytes";
    EXPECT_EQ(read(path, 1 << 20).error().code, EFBIG);
}

TEST_F(FileBytesTest, readsFilesOfUnknownSize) {
    const auto bytes = read("/proc/self/status");
    ASSERT_TRUE(bytes);
    EXPECT_NE(bytes->find("Name:"), std::string::npos);
    EXPECT_EQ(read("/proc/self/status", 10).error().code, EFBIG) << "it reports a size of 0 and grows while it is read";
}

TEST_F(FileBytesTest, writesEveryByte) {
    std::string bytes;
    for (int i = 0; i < 300'000; ++i) bytes += static_cast<char>(i * 7);
    ASSERT_TRUE(write(folder / "new", bytes));
    EXPECT_EQ(read(folder / "new"), bytes);
    ASSERT_TRUE(write(make("old", bytes), "short"));
    EXPECT_EQ(read(folder / "old"), "short");
    ASSERT_TRUE(write(folder / "empty", ""));
    EXPECT_EQ(read(folder / "empty"), "");
}

TEST_F(FileBytesTest, tellsWhyItCannotWrite) {
    const auto codeOf = [](const std::filesystem::path& path) { return write(path, "bytes").error().code; };
    constexpr auto operation = FileFailure::Operation::write;
    EXPECT_EQ(write(folder / "none/a", "x"), std::unexpected(FileFailure{folder / "none/a", ENOENT, operation}));
    EXPECT_EQ(codeOf(make("a", "") / "b"), ENOTDIR);
    EXPECT_EQ(codeOf(folder.path()), EISDIR);
    EXPECT_EQ(codeOf(folder / std::string(300, 'x')), ENAMETOOLONG);
    EXPECT_EQ(codeOf("/dev/full"), ENOSPC);
}

}  // namespace
}  // namespace quorvel::FileBytes
