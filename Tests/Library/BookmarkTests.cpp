#include "Library/Bookmark.h"
#include "Library/BookmarkData.h"
#include "Library/NearbySearch.h"
#include "Support/TemporaryFolder.h"

#include <cerrno>
#include <fstream>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

namespace fs = std::filesystem;

/// Files deep in a temporary folder, so that a search stays inside.
class BookmarkTest : public testing::Test {
protected:
    BookmarkTest() { fs::create_directories(game); }

    static void write(const fs::path& path, const std::string& text = "Name\n") {
        fs::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }

    Bookmark bookmarkOf(const fs::path& path) {
        write(path);
        const auto bookmark = Bookmark::make(path);
        EXPECT_TRUE(bookmark);
        return bookmark.value_or(Bookmark());
    }

    /// What the bookmark was made of is now at `path`, and so the bookmark says, renewed.
    static void expectMovedTo(const Bookmark& bookmark, const fs::path& path) {
        const auto resolved = bookmark.resolve();
        ASSERT_TRUE(resolved) << path;
        EXPECT_EQ(resolved->url, path);
        ASSERT_TRUE(resolved->refreshed);
        EXPECT_EQ(resolved->refreshed, *Bookmark::make(path));
        const auto again = resolved->refreshed->resolve();
        ASSERT_TRUE(again);
        EXPECT_EQ(again->url, path);
        EXPECT_FALSE(again->refreshed);
    }

    void expectMoves(const fs::path& from, const fs::path& to) {
        const Bookmark bookmark = bookmarkOf(from);
        fs::create_directories(to.parent_path());
        fs::rename(from, to);
        expectMovedTo(bookmark, to);
    }

    TemporaryFolder folder;
    const fs::path root = folder / "a/b/c/d";
    const fs::path game = root / "Game";
    const fs::path file = game / "cards.csv";
};

TEST_F(BookmarkTest, NamesWhatItIsMadeOf) {
    const Bookmark bookmark = bookmarkOf(file);
    EXPECT_EQ(bookmark.name, "cards.csv");
    EXPECT_EQ(bookmark.path, file);
    EXPECT_TRUE(bookmark.data);
    EXPECT_EQ(bookmark, *Bookmark::make(file));
    EXPECT_EQ(Bookmark::make(game.string() + "/")->name, "Game");
    EXPECT_EQ(Bookmark::make(game.string() + "//./x/..")->path, game);
    EXPECT_EQ(Bookmark::make("/")->path, "/");
    EXPECT_EQ(Bookmark::make("/")->name, "/");
}

TEST_F(BookmarkTest, CantBeMadeOfNothing) {
    EXPECT_EQ(Bookmark::make(file), std::unexpected(FileFailure{file, ENOENT}));
    EXPECT_FALSE(Bookmark::make(""));
    write(file);
    EXPECT_EQ(Bookmark::make(file / "x"), std::unexpected(FileFailure{file / "x", ENOTDIR}));
    EXPECT_FALSE(Bookmark::make(fs::path(file.string() + std::string("\0x", 2))));
    fs::create_symlink(root / "nowhere", game / "link");
    EXPECT_FALSE(Bookmark::make(game / "link"));
}

TEST_F(BookmarkTest, RelativePathsBecomeAbsolute) {
    write(file);
    const fs::path relative = fs::proximate(file);
    ASSERT_TRUE(relative.is_relative());
    EXPECT_EQ(Bookmark::make(relative)->path, file);
    EXPECT_EQ(Bookmark::plain("x.csv", "x").path, fs::current_path() / "x.csv");
    EXPECT_EQ(Bookmark::plain("./x/", "x").path, fs::current_path() / "x");
}

TEST_F(BookmarkTest, AWayUpIsTheFileSystemsToKnow) {
    write(root / "Other/cards.csv");
    fs::create_directories(root / "Other/inner");
    fs::create_directory_symlink(root / "Other/inner", game / "link");
    EXPECT_EQ(Bookmark::make(game / "link/../cards.csv")->path, root / "Other/cards.csv");
}

TEST_F(BookmarkTest, WhatStaysNeedsNoRefresh) {
    for (const Bookmark& bookmark : {bookmarkOf(file), *Bookmark::make(game)}) {
        const auto resolved = bookmark.resolve();
        ASSERT_TRUE(resolved);
        EXPECT_EQ(resolved->url, bookmark.path);
        EXPECT_FALSE(resolved->refreshed);
    }
    const Bookmark bookmark = *Bookmark::make(file);
    write(file, "Name\nOther words in place\n");
    EXPECT_FALSE(bookmark.resolve()->refreshed);
}

TEST_F(BookmarkTest, AReplacedFileIsTheFileAndFollowedFromThereOn) {
    const Bookmark bookmark = bookmarkOf(file);
    write(game / "new");
    fs::rename(game / "new", file);
    const auto resolved = bookmark.resolve();
    ASSERT_TRUE(resolved && resolved->refreshed);
    EXPECT_EQ(resolved->url, file);
    fs::rename(file, game / "renamed.csv");
    EXPECT_FALSE(bookmark.resolve());
    expectMovedTo(*resolved->refreshed, game / "renamed.csv");
}

TEST_F(BookmarkTest, AFileInThePlaceOfARenamedOneIsTheFile) {
    const Bookmark bookmark = bookmarkOf(file);
    fs::rename(file, game / "first.csv");
    write(file);
    EXPECT_EQ(bookmark.resolve()->url, file);
}

TEST_F(BookmarkTest, FollowsARename) {
    expectMoves(file, game / "Cards of the Game.CSV");
    expectMoves(game / "x.txt", game / "x.csv");
    expectMoves(game / "y.csv", game / "y2.csv");
}

TEST_F(BookmarkTest, FollowsAMoveNearBy) {
    expectMoves(file, game / "data/cards.csv");
    expectMoves(file, game / "data/2026/may/cards.csv");
    expectMoves(file, root / "cards.csv");
    expectMoves(file, root / "Other/table.csv");
    expectMoves(file, root / "Other/data/table.csv");
    expectMoves(file, root.parent_path() / "cards.csv");
}

TEST_F(BookmarkTest, FollowsRenamedFolders) {
    expectMoves(root / "Art 1", root / "Art 2");
    const Bookmark first = bookmarkOf(root / "Old/cards.csv");
    const Bookmark deep = bookmarkOf(root / "Old/1/2/3/4/5/cards.csv");
    const Bookmark art = *Bookmark::make(root / "Old/1/2/3/4");
    fs::rename(root / "Old", root / "New");
    expectMovedTo(first, root / "New/cards.csv");
    expectMovedTo(deep, root / "New/1/2/3/4/5/cards.csv");
    expectMovedTo(art, root / "New/1/2/3/4");
    fs::rename(root / "New/cards.csv", root / "New/table.csv");
    expectMovedTo(first, root / "New/table.csv");
}

TEST_F(BookmarkTest, ADeletedFileIsGone) {
    const Bookmark bookmark = bookmarkOf(file);
    fs::remove(file);
    for (int i = 0; i < 50; ++i) write(game / ("other" + std::to_string(i) + ".csv"));  // some take the inode's number
    EXPECT_FALSE(bookmark.resolve());
    fs::remove_all(game);
    EXPECT_FALSE(bookmark.resolve());
}

TEST_F(BookmarkTest, WhatWasPutAsideIsNotTheFile) {
    for (const char* aside : {"cards.csv~", "cards.csv.bak", "cards.old", "cards.csv.orig", "cards.tmp", ".cards.csv",
                              ".trash/cards.csv", "Trash/cards.csv", "../.hidden/Game/cards.csv"}) {
        const Bookmark bookmark = bookmarkOf(file);
        const fs::path to = game / aside;
        fs::create_directories(to.parent_path());
        fs::rename(file, to);
        EXPECT_FALSE(bookmark.resolve()) << aside;
        fs::remove(to);
    }
    expectMoves(game / "one.bak", game / "two.bak");
    expectMoves(game / ".hidden.csv", game / ".hidden2.csv");
}

TEST_F(BookmarkTest, TooFarAwayIsGone) {
    const Bookmark bookmark = bookmarkOf(file);
    fs::create_directories(game / "1/2/3/4");
    fs::rename(file, game / "1/2/3/4/cards.csv");
    EXPECT_FALSE(bookmark.resolve());
}

TEST_F(BookmarkTest, NeverFollowsLinks) {
    const Bookmark bookmark = bookmarkOf(file);
    fs::create_directory_symlink(game, game / "loop");
    fs::create_directory_symlink(root, root / "loop");
    fs::create_directories(folder / "far");
    fs::rename(file, folder / "far/cards.csv");
    fs::create_directory_symlink(folder / "far", game / "far");
    fs::create_symlink(folder / "far/cards.csv", game / "link.csv");
    EXPECT_FALSE(bookmark.resolve());
}

TEST_F(BookmarkTest, ALinkAtThePathIsTheFileItLeadsTo) {
    write(root / "real.csv");
    fs::create_symlink(root / "real.csv", file);
    const Bookmark bookmark = *Bookmark::make(file);
    EXPECT_EQ(bookmark.path, file);
    EXPECT_FALSE(bookmark.resolve()->refreshed);
    fs::remove(file);
    expectMovedTo(bookmark, root / "real.csv");
}

TEST_F(BookmarkTest, TheWayToTheFolderMayLeadThroughALink) {
    fs::create_directory_symlink(game, root / "link");
    const Bookmark bookmark = bookmarkOf(root / "link/cards.csv");
    fs::rename(file, game / "table.csv");
    expectMovedTo(bookmark, root / "link/table.csv");
}

TEST_F(BookmarkTest, DamagedOrForeignDataFallsBackToThePath) {
    const Bookmark good = bookmarkOf(file);
    for (const std::string data : {"", "bookmark", "quorvel-bookmark 2 1 2 3 4\n/x", "quorvel-bookmark 1 1 2 3 4\n/x/y",
                                   "quorvel-bookmark 1\n/x", "\xff\xfe"}) {
        const Bookmark bookmark{data, "cards.csv", file};
        const auto resolved = bookmark.resolve();
        ASSERT_TRUE(resolved) << data;
        EXPECT_EQ(resolved->url, file);
        EXPECT_EQ(resolved->refreshed, good);
        EXPECT_FALSE((Bookmark{data, "cards.csv", game / "none.csv"}.resolve())) << data;
    }
    // The path of a bookmark that is whole is only to show.
    EXPECT_EQ((Bookmark{good.data, "cards.csv", "/nowhere"}.resolve()->url), file);
}

TEST_F(BookmarkTest, AnyDamageToTheDataIsHarmless) {
    const Bookmark good = bookmarkOf(file);
    for (std::size_t i = 0; i < good.data->size(); ++i) {
        for (const char byte : {'\0', '/', '\n', '7', '\xff'}) {
            Bookmark bookmark = good;
            (*bookmark.data)[i] = byte;
            const auto resolved = bookmark.resolve();
            ASSERT_TRUE(resolved) << i;
            EXPECT_TRUE(fs::equivalent(resolved->url, file)) << i;
        }
    }
}

TEST_F(BookmarkTest, KeepsPathsThatAreNoText) {
    expectMoves(game / "caf\xe9.csv", game / "\xff\xfe.csv");
    const Bookmark bookmark = bookmarkOf(game / "caf\xe9.csv");
    EXPECT_EQ(bookmark.name, "caf\xef\xbf\xbd.csv");
    EXPECT_EQ(bookmark.path, game / "caf\xe9.csv");
    EXPECT_FALSE(bookmark.resolve()->refreshed);
}

TEST_F(BookmarkTest, WithoutDataOnlyThePathCounts) {
    write(file);
    const Bookmark bookmark = Bookmark::plain(file, "a label");
    EXPECT_EQ(bookmark, (Bookmark{std::nullopt, "a label", file}));
    EXPECT_EQ(bookmark.resolve()->url, file);
    EXPECT_FALSE(bookmark.resolve()->refreshed);
    fs::rename(file, game / "renamed.csv");
    EXPECT_FALSE(bookmark.resolve());
}

TEST_F(BookmarkTest, APathThatLeadsNowhereResolvesToNothing) {
    write(file);
    for (const std::string& path :
         {std::string(), std::string("cards.csv"), std::string("."), file.string() + std::string("\0", 1),
          file.string() + "/x", std::string(5000, '/') + "x", "/" + std::string(5000, 'x')}) {
        EXPECT_FALSE((Bookmark{std::nullopt, "x", path}.resolve())) << path;
        EXPECT_FALSE(
            (Bookmark{BookmarkData{path, FileIdentity{1, 2, FileIdentity::Time{}}}.encoded(), "x", path}.resolve()))
            << path;
    }
}

TEST_F(BookmarkTest, TheSearchIsBounded) {
    const Bookmark bookmark = bookmarkOf(file);
    const auto identity = *BookmarkData::decode(*bookmark.data)->identity;
    fs::remove(file);
    const auto cost = [&] {
        const NearbySearch::Result result = NearbySearch::find(file, identity);
        EXPECT_FALSE(result.path);
        return result.cost;
    };
    const std::size_t emptyCost = cost();
    EXPECT_GT(emptyCost, NearbySearch::openCost);
    for (int i = 0; i < 300; ++i) fs::create_directories(game / std::to_string(i) / "x");
    EXPECT_GT(cost(), emptyCost);
    EXPECT_LE(cost(), NearbySearch::mostCost + NearbySearch::openCost + 3 * NearbySearch::lookCost);
    for (int i = 0; i < 7000; ++i) write(game / ("picture" + std::to_string(i)));
    EXPECT_LE(cost(), NearbySearch::mostCost + NearbySearch::openCost + 3 * NearbySearch::lookCost);
}

TEST_F(BookmarkTest, WithoutATimeOfBirthNothingIsLookedFor) {
    const Bookmark bookmark = bookmarkOf(file);
    auto identity = *BookmarkData::decode(*bookmark.data)->identity;
    fs::rename(file, game / "renamed.csv");
    EXPECT_EQ(NearbySearch::find(file, identity).path, game / "renamed.csv");
    auto younger = identity;
    ++younger.birth->nanoseconds;
    EXPECT_FALSE(NearbySearch::find(file, younger).path);
    auto elsewhere = identity;
    ++elsewhere.device;
    EXPECT_FALSE(NearbySearch::find(file, elsewhere).path);
    identity.birth.reset();
    EXPECT_FALSE(NearbySearch::find(file, identity).path);
    EXPECT_EQ(NearbySearch::find(file, identity).cost, 0u);
}

}  // namespace
}  // namespace quorvel
