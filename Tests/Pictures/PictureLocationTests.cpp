#include "Pictures/PictureLocation.h"
#include "Support/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <pwd.h>
#include <string>
#include <unistd.h>

namespace quorvel {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

class PictureLocationTest : public testing::Test {
protected:
    fs::path file(const std::string& name) {
        const fs::path path = folder_ / name;
        fs::create_directories(path.parent_path());
        std::ofstream(path) << name;
        return path;
    }

    std::optional<fs::path> find(std::string_view name) {
        return PictureLocation::find(name, {folder_ / "first", folder_ / "second"});
    }

    TemporaryFolder folder_;
};

TEST_F(PictureLocationTest, searchesTheFoldersInOrder) {
    const fs::path second = file("second/a.png");
    EXPECT_EQ(find("a.png"), second);
    const fs::path first = file("first/a.png");
    EXPECT_EQ(find("a.png"), first);
    EXPECT_EQ(find("b.png"), std::nullopt);
    EXPECT_EQ(PictureLocation::find("a.png", {}), std::nullopt);
}

TEST_F(PictureLocationTest, dropsWhiteSpaceAround) {
    const fs::path path = file("first/a picture.png");
    EXPECT_EQ(find(" \t a picture.png\r\n"), path);
    for (const char* name : {"", " ", "\n\t"}) EXPECT_EQ(find(name), std::nullopt);
}

TEST_F(PictureLocationTest, takesBackslashesForSlashes) {
    const fs::path path = file("first/art/barrel.png");
    EXPECT_EQ(find("art\\barrel.png"), path);
    EXPECT_EQ(find("\\art\\barrel.png"), path);
    EXPECT_EQ(find("C:\\Users\\ann\\barrel.png"), std::nullopt);
    const fs::path flat = file("first/barrel.png");
    EXPECT_EQ(find("C:\\Users\\ann\\barrel.png"), flat);
}

TEST_F(PictureLocationTest, fallsBackToTheLastComponentWithinEachFolder) {
    const fs::path flat = file("first/barrel.png");
    EXPECT_EQ(find("art/barrel.png"), flat);
    const fs::path whole = file("second/art/barrel.png");
    EXPECT_EQ(find("art/barrel.png"), flat);  // the first folder's flat file wins
    const fs::path both = file("first/art/barrel.png");
    EXPECT_EQ(find("art/barrel.png"), both);
    EXPECT_EQ(find("other/../art/barrel.png"), flat);  // no folder "other" to come back from
    EXPECT_NE(whole, both);
}

TEST_F(PictureLocationTest, followsPathsUpwards) {
    const fs::path path = file("a.png");
    EXPECT_EQ(find("../a.png"), std::nullopt);
    fs::create_directory(folder_ / "first");
    EXPECT_EQ(find("../a.png"), folder_ / "first/../a.png");
}

TEST_F(PictureLocationTest, takesAbsolutePathsAsTheyAre) {
    const fs::path path = file("elsewhere/a.png");
    file("first/a.png");
    EXPECT_EQ(find(path.native()), path);
    EXPECT_EQ(find((folder_ / "nowhere/a.png").native()), std::nullopt);  // and no folder is searched
}

TEST_F(PictureLocationTest, readsFileURLs) {
    const fs::path path = file("elsewhere/my art #1 äö.png");
    file("first/a.png");
    const std::string base = "file://" + (folder_ / "elsewhere").native();
    EXPECT_EQ(find(base + "/my%20art%20%231%20%C3%A4%c3%b6.png"), path);
    EXPECT_EQ(find(base + "/my art %231 äö.png"), path);
    EXPECT_EQ(find("file://localhost" + (folder_ / "elsewhere").native() + "/my%20art%20%231%20äö.png"), path);
    const fs::path plain = file("elsewhere/plain.png");
    EXPECT_EQ(find(base + "/plain.png?size=large#top"), plain);
    for (const std::string& url : {"file:///tmp/no-such-picture/a.png"s, base + "/a.png", "file://"s,
                                   "file:///"s + "%00", "file://a.png"s, base + "/plain.png%00"})
        EXPECT_EQ(find(url), std::nullopt) << url;
}

TEST_F(PictureLocationTest, takesWhatIsNoURLForAName) {
    const fs::path path = file("first/100%.png");
    EXPECT_EQ(find("file:///tmp/100%.png"), path);
    EXPECT_EQ(find("file:///tmp/100%zz.png"), std::nullopt);
    const fs::path odd = file("first/a%2.png");
    EXPECT_EQ(find("file:///tmp/a%2.png"), odd);
    EXPECT_EQ(find("https://example.com/100%.png"), path);
}

TEST_F(PictureLocationTest, expandsTheHome) {
    const fs::path path = file("home/a.png");
    const char* former = std::getenv("HOME");
    const std::string home = former ? former : "";
    ::setenv("HOME", (folder_ / "home").c_str(), 1);
    EXPECT_EQ(find("~/a.png"), path);
    EXPECT_EQ(find("~"), folder_ / "home");
    file("first/b.png");
    EXPECT_EQ(find("~/b.png"), std::nullopt);  // an absolute path
    const fs::path tilde = file("first/~a.png");
    EXPECT_EQ(find("~a.png"), tilde);  // no such user
    if (former)
        ::setenv("HOME", home.c_str(), 1);
    else
        ::unsetenv("HOME");
    const passwd* user = ::getpwuid(0);
    ASSERT_TRUE(user);
    EXPECT_EQ(find("~" + std::string(user->pw_name)), fs::path(user->pw_dir));
}

TEST_F(PictureLocationTest, tellsCasesApart) {
    file("first/barrel.png");
    EXPECT_EQ(find("Barrel.png"), std::nullopt);
}

TEST_F(PictureLocationTest, takesNoHarmFromOddNames) {
    for (const std::string& name :
         {"a\0b"s, "\0"s, std::string(100'000, 'a'), std::string(5000, '/'), "\xFF\xFE"s, "///"s, "\\\\\\"s, "%"s})
        find(name);
    EXPECT_EQ(find("a\0b"s), std::nullopt);
}

TEST_F(PictureLocationTest, searchesTheWorkingFolderForAnEmptyOne) {
    const fs::path former = fs::current_path();
    file("a.png");
    fs::current_path(folder_.path());
    EXPECT_EQ(PictureLocation::find("a.png", {""}), fs::path("a.png"));
    EXPECT_EQ(PictureLocation::find("etc/a.png", {""}), fs::path("a.png"));
    fs::current_path(former);
}

}  // namespace
}  // namespace quorvel
