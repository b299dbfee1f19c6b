#include "Library/LibraryWriter.h"
#include "Library/MakeDeck.h"
#include "Support/Desktop/ManualScheduler.h"
#include "Support/TemporaryFolder.h"

#include <fstream>
#include <gtest/gtest.h>
#include <memory>

namespace quorvel {
namespace {

namespace fs = std::filesystem;

class LibraryWriterTest : public testing::Test {
protected:
    bool isOnDisk(const DeckProject& project) const { return fs::exists(library.deckFile(project.id)); }

    /// Runs one piece of work to its end.
    void step() {
        EXPECT_EQ(scheduler.runBackground(1), 1u);
        scheduler.deliver();
    }

    static DeckProject named(DeckProject project, std::string name) {
        project.name = std::move(name);
        return project;
    }

    TemporaryFolder folder;
    ManualScheduler scheduler;
    const Library library{folder / "Support"};
    LibraryWriter writer{scheduler, library};
    const DeckProject one = makeDeck("one");
    const DeckProject two = makeDeck("two");
};

TEST_F(LibraryWriterTest, WritesInTheBackground) {
    EXPECT_TRUE(writer.isIdle());
    writer.save(one);
    EXPECT_FALSE(writer.isIdle());
    EXPECT_FALSE(fs::exists(library.applicationSupport));
    scheduler.runBackground();
    EXPECT_FALSE(writer.isIdle());
    EXPECT_EQ(library.loadDecks(), std::vector{one});
    scheduler.deliver();
    EXPECT_TRUE(writer.isIdle());
}

TEST_F(LibraryWriterTest, OneAtATimeInOrder) {
    writer.save(one);
    writer.save(two);
    EXPECT_EQ(scheduler.backgroundCount(), 1u);
    step();
    EXPECT_TRUE(isOnDisk(one));
    EXPECT_FALSE(isOnDisk(two));
    EXPECT_EQ(scheduler.backgroundCount(), 1u);
    step();
    EXPECT_TRUE(isOnDisk(two));
    EXPECT_TRUE(writer.isIdle());
}

TEST_F(LibraryWriterTest, WaitingRecordsOfADeckAreJoinedAndKeepTheirTurn) {
    writer.save(one);
    writer.save(named(one, "second"));
    writer.save(two);
    writer.save(named(one, "third"));
    writer.save(named(one, "fourth"));
    step();
    EXPECT_EQ(library.loadDecks(), std::vector{one});
    step();
    EXPECT_EQ(library.loadDecks(), std::vector{named(one, "fourth")});
    step();
    EXPECT_TRUE(isOnDisk(two));
    EXPECT_TRUE(writer.isIdle());
}

TEST_F(LibraryWriterTest, ARemovalDropsAWaitingSaveAndOvertakesTheOthers) {
    const DeckProject three = makeDeck("three");
    ASSERT_TRUE(library.saveDeck(two));
    writer.save(one);
    writer.save(three);
    writer.save(named(two, "changed"));
    writer.remove(two.id, std::nullopt);
    step();
    EXPECT_TRUE(isOnDisk(two));
    step();
    EXPECT_FALSE(isOnDisk(two));
    EXPECT_FALSE(isOnDisk(three));
    step();
    EXPECT_TRUE(isOnDisk(three));
    EXPECT_TRUE(writer.isIdle());
    EXPECT_FALSE(isOnDisk(two));
}

TEST_F(LibraryWriterTest, ARemovedDeckNeverComesBackFromARunningSave) {
    writer.save(one);
    writer.remove(one.id, std::nullopt);
    scheduler.settle();
    EXPECT_FALSE(isOnDisk(one));
    writer.save(one);
    writer.remove(one.id, std::nullopt);
    writer.save(named(one, "again"));
    scheduler.settle();
    EXPECT_EQ(library.loadDecks(), std::vector{named(one, "again")});
}

TEST_F(LibraryWriterTest, RemovesAFolderWithAllInIt) {
    const fs::path sample = library.sampleFolder() / "x";
    fs::create_directories(sample / "art/deep");
    std::ofstream(sample / "art/deep/fox.png") << "png";
    writer.save(one);
    writer.remove(one.id, sample);
    EXPECT_TRUE(fs::exists(sample));
    scheduler.settle();
    EXPECT_FALSE(fs::exists(sample));
    EXPECT_TRUE(fs::exists(library.sampleFolder()));
    EXPECT_FALSE(isOnDisk(one));
    writer.remove(one.id, sample);  // that it is gone is no failure
    scheduler.settle();
    EXPECT_TRUE(writer.isIdle());
}

TEST_F(LibraryWriterTest, ALinkGoesWithoutWhatItLeadsTo) {
    const fs::path mine = folder / "mine";
    fs::create_directories(mine);
    std::ofstream(mine / "cards.csv") << "Name\n";
    fs::create_directories(library.sampleFolder() / "real");
    fs::create_directory_symlink(mine, library.sampleFolder() / "real/inner");
    fs::create_directory_symlink(mine, library.sampleFolder() / "outer");
    fs::create_directory_symlink(mine, library.sampleFolder() / "slash");
    writer.remove(one.id, library.sampleFolder() / "real");
    writer.remove(one.id, library.sampleFolder() / "outer");
    writer.remove(one.id, library.sampleFolder() / "slash/");
    scheduler.settle();
    EXPECT_TRUE(fs::is_empty(library.sampleFolder()));
    EXPECT_TRUE(fs::exists(mine / "cards.csv"));
}

TEST_F(LibraryWriterTest, FailuresAreSilentAndTheNextSaveTriesAgain) {
    std::ofstream(library.applicationSupport) << "in the way";
    writer.save(one);
    scheduler.settle();
    EXPECT_TRUE(writer.isIdle());
    fs::remove(library.applicationSupport);
    writer.save(one);
    scheduler.settle();
    EXPECT_EQ(library.loadDecks(), std::vector{one});
}

TEST_F(LibraryWriterTest, TellsWhenAllIsDone) {
    int calls = 0;
    writer.whenIdle([&] { ++calls; });
    EXPECT_EQ(calls, 1);
    writer.save(one);
    writer.save(two);
    writer.whenIdle([&] { calls += isOnDisk(one) && isOnDisk(two) ? 10 : 1000; });
    step();
    EXPECT_EQ(calls, 1);
    scheduler.runBackground();
    EXPECT_EQ(calls, 1);
    scheduler.deliver();
    EXPECT_EQ(calls, 11);
    writer.save(one);
    scheduler.settle();
    EXPECT_EQ(calls, 11);
}

TEST_F(LibraryWriterTest, ASaveFromWithinTheCallIsWritten) {
    writer.save(one);
    int calls = 0;
    writer.whenIdle([&] {
        writer.save(two);
        writer.whenIdle([&] { ++calls; });
    });
    writer.whenIdle([&] { ++calls; });
    scheduler.settle();
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(isOnDisk(two));
}

TEST_F(LibraryWriterTest, TheCallMayDestroyIt) {
    auto owned = std::make_unique<LibraryWriter>(scheduler, library);
    owned->save(one);
    owned->whenIdle([&] { owned.reset(); });
    scheduler.settle();
    EXPECT_FALSE(owned);
    EXPECT_TRUE(isOnDisk(one));
}

TEST_F(LibraryWriterTest, DestroyedWhileItWritesItCallsNobody) {
    auto owned = std::make_unique<LibraryWriter>(scheduler, library);
    owned->save(one);
    owned->save(two);
    owned->whenIdle([] { FAIL(); });
    scheduler.runBackground();
    owned.reset();
    scheduler.settle();
    EXPECT_TRUE(isOnDisk(one));
    EXPECT_FALSE(isOnDisk(two));
}

TEST_F(LibraryWriterTest, WithoutALibraryNothingTouchesTheDisk) {
    LibraryWriter none(scheduler, std::nullopt);
    fs::create_directories(folder / "sample");
    none.save(one);
    none.remove(one.id, folder / "sample");
    EXPECT_TRUE(none.isIdle());
    EXPECT_EQ(scheduler.backgroundCount(), 0u);
    int calls = 0;
    none.whenIdle([&] { ++calls; });
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(fs::exists(folder / "sample"));
}

}  // namespace
}  // namespace quorvel
