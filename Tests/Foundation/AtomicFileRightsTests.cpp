#include "Foundation/AtomicFile.h"
#include "Foundation/FileBytes.h"
#include "Support/TemporaryFolder.h"

#include <cerrno>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace quorvel::AtomicFile {
namespace {

namespace fs = std::filesystem;

constexpr const char* accessList = "system.posix_acl_access";
constexpr const char* defaultList = "system.posix_acl_default";

/// An access control list as the kernel takes it: owner rw-, user 4321 rwx, group ---, mask rw-, others ---.
std::string someList() {
    constexpr std::uint32_t nobody = 0xFFFFFFFF;
    std::string bytes{2, 0, 0, 0};
    const auto add = [&](std::uint16_t tag, std::uint16_t rights, std::uint32_t id) {
        for (const std::uint32_t word : {tag | std::uint32_t{rights} << 16, id})
            for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(word >> shift & 0xFF);
    };
    add(0x01, 6, nobody);
    add(0x02, 7, 4321);
    add(0x04, 0, nobody);
    add(0x10, 6, nobody);
    add(0x20, 0, nobody);
    return bytes;
}

/// Empty where there is none.
std::string attribute(const fs::path& path, const char* name) {
    std::string value(1000, '\0');
    const ssize_t size = ::getxattr(path.c_str(), name, value.data(), value.size());
    value.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
    return value;
}

struct stat statusOf(const fs::path& path) {
    struct stat status{};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status;
}

class AtomicFileRightsTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(write(path, "old")); }

    TemporaryFolder folder;
    fs::path path = folder / "a";
};

TEST_F(AtomicFileRightsTest, areKeptButSetIDBits) {
    struct Row {
        mode_t before, after;
    };
    for (const Row row : {Row{0600, 0600}, Row{0777, 0777}, Row{0640, 0640}, Row{0200, 0200}, Row{04755, 0755},
                          Row{02775, 0775}, Row{06711, 0711}, Row{01666, 01666}}) {
        ASSERT_EQ(::chmod(path.c_str(), row.before), 0);
        ASSERT_TRUE(write(path, "new"));
        EXPECT_EQ(statusOf(path).st_mode & 07777, row.after) << std::oct << row.before;
    }
}

TEST_F(AtomicFileRightsTest, doNotDependOnTheMask) {
    ASSERT_EQ(::chmod(path.c_str(), 0666), 0);
    const mode_t mask = ::umask(077);
    EXPECT_TRUE(write(path, "new"));
    ::umask(mask);
    EXPECT_EQ(statusOf(path).st_mode & 07777, 0666u);
}

/// Every other owner and group that this user may give a file: any for root, the groups one is in for others.
TEST_F(AtomicFileRightsTest, includeOwnerAndGroup) {
    std::vector<std::pair<uid_t, gid_t>> owners{{::geteuid(), ::getegid()}};
    if (::chown(path.c_str(), 1234, 2345) == 0) owners.emplace_back(1234, 2345);
    std::vector<gid_t> groups(static_cast<std::size_t>(::getgroups(0, nullptr)));
    groups.resize(static_cast<std::size_t>(::getgroups(static_cast<int>(groups.size()), groups.data())));
    for (const gid_t group : groups) owners.emplace_back(::geteuid(), group);
    for (const auto& [owner, group] : owners) {
        ASSERT_EQ(::chown(path.c_str(), owner, group), 0);
        ASSERT_EQ(::chmod(path.c_str(), 0664), 0);
        ASSERT_TRUE(write(path, "new"));
        EXPECT_EQ(statusOf(path).st_uid, owner);
        EXPECT_EQ(statusOf(path).st_gid, group);
        EXPECT_EQ(statusOf(path).st_mode & 07777, 0664u);
    }
}

/// The mode alone would tell the mask of the list as the rights of the group, which were none.
TEST_F(AtomicFileRightsTest, includeAccessLists) {
    const std::string list = someList();
    if (::setxattr(path.c_str(), accessList, list.data(), list.size(), 0) != 0) {
        ASSERT_EQ(errno, EOPNOTSUPP) << "only a file system without such lists has none to keep";
        return;
    }
    const mode_t mode = statusOf(path).st_mode;
    ASSERT_TRUE(write(path, "new"));
    EXPECT_EQ(attribute(path, accessList), list);
    EXPECT_EQ(statusOf(path).st_mode, mode);
}

TEST_F(AtomicFileRightsTest, areNotWidenedByAFoldersDefaultList) {
    const std::string list = someList();
    if (::setxattr(folder.path().c_str(), defaultList, list.data(), list.size(), 0) != 0) {
        ASSERT_EQ(errno, EOPNOTSUPP) << "only a file system without such lists has none to give";
        return;
    }
    ASSERT_TRUE(write(path, "new"));
    EXPECT_EQ(attribute(path, accessList), "");
    ASSERT_TRUE(write(folder / "b", "new"));
    EXPECT_NE(attribute(folder / "b", accessList), "") << "a file that is really new has what the folder says";
}

}  // namespace
}  // namespace quorvel::AtomicFile
