// What files refuse to a user who isn't root. The test starts its own program again as such a user.

#include "Foundation/AtomicFile.h"
#include "Foundation/FileBytes.h"
#include "Support/Process.h"
#include "Support/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <unistd.h>

namespace quorvel {
namespace {

namespace fs = std::filesystem;

constexpr const char* folderVariable = "QUORVEL_FILE_PERMISSION_FOLDER";

std::string outcome(const std::expected<std::string, FileFailure>& bytes) {
    return bytes ? *bytes : bytes.error().description();
}

std::string outcome(const std::expected<void, FileFailure>& done) {
    return done ? "written" : done.error().description();
}

void runChild(const fs::path& folder) {
    for (const char* name : {"open", "secret", "closed/a", "sealed/a"})
        std::cout << "read " << name << ": " << outcome(FileBytes::read(folder / name)) << '\n';
    for (const char* name : {"free/new", "free/readOnly", "sealed/a", "sealed/new", "closed/new"})
        std::cout << "write " << name << ": " << outcome(AtomicFile::write(folder / name, "new")) << '\n';
}

// Before the tests start, since their own main function knows nothing of a child.
[[maybe_unused]] const bool isChild = [] {
    const char* folder = std::getenv(folderVariable);
    if (!folder) return false;
    runChild(folder);
    std::cout.flush();
    std::_Exit(0);
}();

void make(const fs::path& path, unsigned permissions) {
    std::ofstream(path) << "old";
    fs::permissions(path, fs::perms(permissions));
}

TEST(FilePermissions, areRespectedAndTold) {
    const TemporaryFolder folder;
    fs::permissions(folder.path(), fs::perms(0755));
    for (const char* name : {"free", "sealed", "closed"}) fs::create_directory(folder / name);
    make(folder / "open", 0644);
    make(folder / "secret", 0000);
    make(folder / "closed/a", 0644);
    make(folder / "sealed/a", 0666);
    make(folder / "free/readOnly", 0444);
    fs::permissions(folder / "free", fs::perms(0777));
    fs::permissions(folder / "sealed", fs::perms(0555));
    fs::permissions(folder / "closed", fs::perms(0000));

    ::setenv(folderVariable, folder.path().c_str(), 1);
    const ProcessResult child = runWithoutRoot({thisProgram().string()});
    ::unsetenv(folderVariable);
    for (const char* name : {"sealed", "closed"}) fs::permissions(folder / name, fs::perms(0755));

    EXPECT_EQ(child.status, 0) << child.errors;
    EXPECT_EQ(child.output,
              "read open: old\n"
              "read secret: You aren’t allowed to read “secret”.\n"
              "read closed/a: You aren’t allowed to read “a”.\n"
              "read sealed/a: old\n"
              "write free/new: written\n"
              "write free/readOnly: You aren’t allowed to write “readOnly”.\n"
              "write sealed/a: You aren’t allowed to write “a”.\n"
              "write sealed/new: You aren’t allowed to write “new”.\n"
              "write closed/new: You aren’t allowed to write “new”.\n");
    EXPECT_EQ(FileBytes::read(folder / "free/readOnly"), "old");
    EXPECT_EQ(FileBytes::read(folder / "sealed/a"), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "sealed"), fs::directory_iterator()), 1);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "free"), fs::directory_iterator()), 2);
}

}  // namespace
}  // namespace quorvel
