#include "Foundation/FileBytes.h"
#include "Library/FileWatcher.h"
#include "Support/Desktop/ManualScheduler.h"
#include "Support/Desktop/SaveManners.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvel {
namespace {

using namespace std::chrono_literals;
using Path = std::filesystem::path;

void write(const Path& path, std::string_view bytes) {
    ASSERT_TRUE(FileBytes::write(path, bytes));
}

// The kernel has queued an event before the call that causes it returns: `see` finds it at once.
class FileWatching : public testing::Test {
protected:
    FileWatching() { write(file, "title\nOne\n"); }

    /// The event loop's turn, and then time.
    void see() { scheduler.pollDescriptors(); }
    void pass(std::chrono::milliseconds time) {
        see();
        scheduler.advance(time);
    }

    /// One call, 350 ms after what has just happened, and no other.
    void expectOneCallback() {
        see();
        const int before = calls;
        scheduler.advance(349ms);
        EXPECT_EQ(calls, before);
        scheduler.advance(1ms);
        EXPECT_EQ(calls, before + 1);
        pass(10s);
        EXPECT_EQ(calls, before + 1);
    }

    void expectSilence() {
        const int before = calls;
        pass(10s);
        EXPECT_EQ(calls, before);
        EXPECT_EQ(scheduler.timerCount(), 0u);
    }

    TemporaryFolder folder;
    Path file = folder / "cards.csv";
    ManualScheduler scheduler;
    int calls = 0;
    FileWatcher watcher{scheduler, file, [this] { ++calls; }};
};

TEST_F(FileWatching, doesNothingBeforeItIsStarted) {
    EXPECT_FALSE(watcher.isArmed());
    write(file, "title\nTwo\n");
    expectSilence();
    EXPECT_EQ(watcher.url(), file);
}

TEST_F(FileWatching, seesNothingInReading) {
    watcher.start();
    ASSERT_TRUE(FileBytes::read(file));
    expectSilence();
    EXPECT_TRUE(watcher.isArmed());
}

TEST_F(FileWatching, joinsTenWritesWithinASecond) {
    watcher.start();
    for (int save = 0; save < 10; ++save) {
        write(file, "title\n" + std::to_string(save) + "\n");
        if (save < 9) pass(100ms);
    }
    EXPECT_EQ(calls, 0);
    expectOneCallback();
}

TEST_F(FileWatching, waitsForASlowSaveToEnd) {
    watcher.start();
    const FileDescriptor slow(::open(file.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
    for (int piece = 0; piece < 40; ++piece) {
        ASSERT_EQ(::write(slow.get(), "card\n", 5), 5);
        pass(349ms);
        EXPECT_EQ(calls, 0) << "piece " << piece;
    }
    ASSERT_EQ(::write(slow.get(), "last\n", 5), 5);
    expectOneCallback();
    EXPECT_TRUE(watcher.isArmed());
}

TEST_F(FileWatching, callsAgainForWhatComesLater) {
    watcher.start();
    write(file, "1");
    expectOneCallback();
    write(file, "2");
    expectOneCallback();
}

TEST_F(FileWatching, seesAWriteDuringItsOwnCallback) {
    FileWatcher writing(scheduler, file, [this] {
        if (++calls == 1) write(file, "once more");
    });
    writing.start();
    write(file, "1");
    pass(350ms);
    EXPECT_EQ(calls, 1);
    expectOneCallback();
}

TEST_F(FileWatching, seesALengthChange) {
    watcher.start();
    std::filesystem::resize_file(file, 3);
    expectOneCallback();
}

TEST_F(FileWatching, takesAttributesForNoChange) {
    watcher.start();
    ASSERT_EQ(::chmod(file.c_str(), 0600), 0);
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), nullptr, 0), 0);
    expectSilence();
    EXPECT_TRUE(watcher.isArmed());
}

TEST_F(FileWatching, takesSecondNamesForNoChange) {
    watcher.start();
    std::filesystem::create_hard_link(file, folder / "backup.csv");
    std::filesystem::remove(folder / "backup.csv");
    expectSilence();
    EXPECT_TRUE(watcher.isArmed());
    write(file, "1");
    expectOneCallback();
}

TEST_F(FileWatching, seesTheFileLeaveItsNameForASecondOne) {
    watcher.start();
    std::filesystem::create_hard_link(file, folder / "backup.csv");
    std::filesystem::remove(file);
    see();
    EXPECT_FALSE(watcher.isArmed()) << "the file lives on elsewhere";
    write(file, "1");
    expectOneCallback();
    write(folder / "backup.csv", "not watched any more");
    expectSilence();
    write(file, "2");
    expectOneCallback();
}

TEST_F(FileWatching, staysWithAFileThatIsLinkedBackAtOnce) {
    watcher.start();
    std::filesystem::create_hard_link(file, folder / "backup.csv");
    std::filesystem::remove(file);
    std::filesystem::create_hard_link(folder / "backup.csv", file);
    expectSilence();
    EXPECT_TRUE(watcher.isArmed());
    write(file, "1");
    expectOneCallback();
}

TEST_F(FileWatching, findsAFileThatIsRestoredInTime) {
    watcher.start();
    std::filesystem::remove(file);
    pass(349ms);
    EXPECT_FALSE(watcher.isArmed());
    EXPECT_EQ(calls, 0);
    write(file, "restored");
    scheduler.advance(1ms);
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(watcher.isArmed());
    expectSilence();
    write(file, "again");
    expectOneCallback();
}

TEST_F(FileWatching, isDeadWhenAFileIsRestoredTooLate) {
    watcher.start();
    std::filesystem::remove(file);
    pass(350ms);
    EXPECT_EQ(calls, 1) << "the removal itself is a change";
    EXPECT_FALSE(watcher.isArmed());
    write(file, "restored");
    expectSilence();
    write(file, "again");
    expectSilence();

    watcher.start();
    write(file, "and again");
    expectOneCallback();
}

TEST_F(FileWatching, isDeadWithoutAFile) {
    FileWatcher none(scheduler, folder / "none.csv", [this] { ++calls; });
    none.start();
    EXPECT_FALSE(none.isArmed());
    write(folder / "none.csv", "too late");
    expectSilence();
}

TEST_F(FileWatching, watchesNoFolder) {
    FileWatcher none(scheduler, folder.path(), [this] { ++calls; });
    none.start();
    EXPECT_FALSE(none.isArmed());
    write(folder / "new.csv", "in it");
    expectSilence();
}

TEST_F(FileWatching, seesARemovalWhileAnotherProgramHoldsTheFile) {
    const FileDescriptor held(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    watcher.start();
    std::filesystem::remove(file);
    see();
    EXPECT_FALSE(watcher.isArmed());
    expectOneCallback();
}

TEST_F(FileWatching, isNotToldOfTheOldFilesEnd) {
    FileDescriptor held(::open(file.c_str(), O_RDWR | O_CLOEXEC));
    watcher.start();
    write(folder / "new.csv", "replacing");
    std::filesystem::rename(folder / "new.csv", file);
    expectOneCallback();
    ASSERT_EQ(::write(held.get(), "late", 4), 4);
    held.close();
    expectSilence();
    EXPECT_TRUE(watcher.isArmed());
}

TEST_F(FileWatching, watchesTheFileBehindALink) {
    const Path link = folder / "link.csv";
    std::filesystem::create_symlink("cards.csv", link);
    FileWatcher linked(scheduler, link, [this] { ++calls; });
    linked.start();
    ASSERT_TRUE(linked.isArmed());
    for (const SaveManner& manner : saveManners()) {
        SCOPED_TRACE(manner.name);
        manner.save(file, "through its own name");
        expectOneCallback();
        EXPECT_TRUE(linked.isArmed());
    }
}

TEST_F(FileWatching, followsALinkThatIsTurnedToAnotherFile) {
    const Path link = folder / "link.csv";
    std::filesystem::create_symlink("cards.csv", link);
    write(folder / "other.csv", "another");
    FileWatcher linked(scheduler, link, [this] { ++calls; });
    linked.start();
    std::filesystem::create_symlink("other.csv", folder / "link.new");
    std::filesystem::rename(folder / "link.new", link);
    expectOneCallback();
    write(file, "not watched any more");
    expectSilence();
    write(folder / "other.csv", "watched now");
    expectOneCallback();
}

TEST_F(FileWatching, stopsDuringTheDelay) {
    watcher.start();
    write(file, "1");
    pass(349ms);
    watcher.stop();
    EXPECT_FALSE(watcher.isArmed());
    expectSilence();
    write(file, "2");
    expectSilence();
    EXPECT_EQ(calls, 0);
}

TEST_F(FileWatching, stopsBetweenTheEventAndTheLoopsTurn) {
    watcher.start();
    write(file, "1");
    watcher.stop();
    expectSilence();
}

TEST_F(FileWatching, endsWithItsObject) {
    {
        FileWatcher brief(scheduler, file, [this] { ++calls; });
        brief.start();
        write(file, "1");
        see();
        EXPECT_EQ(scheduler.timerCount(), 1u);
    }
    expectSilence();
}

TEST_F(FileWatching, mayBeStoppedStartedOrDestroyedByItsCallback) {
    std::unique_ptr<FileWatcher> own;
    own = std::make_unique<FileWatcher>(scheduler, file, [&, kept = std::string(100, 'x')] {
        own.reset();
        calls += int(kept.size());
    });
    own->start();
    write(file, "1");
    pass(350ms);
    EXPECT_EQ(calls, 100);
    expectSilence();

    own = std::make_unique<FileWatcher>(scheduler, file, [&] {
        ++calls;
        own->stop();
    });
    own->start();
    write(file, "2");
    expectOneCallback();
    EXPECT_FALSE(own->isArmed());

    own = std::make_unique<FileWatcher>(scheduler, file, [&] {
        ++calls;
        own->start();
    });
    own->start();
    write(file, "3");
    expectOneCallback();
    EXPECT_TRUE(own->isArmed());
    write(file, "4");
    expectOneCallback();
}

TEST_F(FileWatching, twoStartsAreOne) {
    watcher.start();
    watcher.start();
    write(file, "1");
    expectOneCallback();
}

TEST_F(FileWatching, canBeToldOfAChange) {
    watcher.start();
    watcher.assumeChanged();
    expectOneCallback();

    watcher.assumeChanged();
    scheduler.advance(200ms);
    write(file, "joined with what comes next");
    expectOneCallback();
}

TEST_F(FileWatching, armsWhenItIsToldOfAChangeAndTheFileIsThereByThen) {
    std::filesystem::remove(file);
    watcher.start();
    EXPECT_FALSE(watcher.isArmed());
    watcher.assumeChanged();
    write(file, "there");
    expectOneCallback();
    EXPECT_TRUE(watcher.isArmed());
}

TEST_F(FileWatching, leavesNoDescriptorOpen) {
    const auto count = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    const auto before = count();
    for (int round = 0; round < 20; ++round) {
        FileWatcher brief(scheduler, file, [] {});
        brief.start();
        std::filesystem::remove(file);
        write(file, "new");
        pass(1s);
        EXPECT_TRUE(brief.isArmed());
    }
    see();
    EXPECT_EQ(count(), before);
}

class FileWatchingOfSaves : public FileWatching, public testing::WithParamInterface<SaveManner> {};

TEST_P(FileWatchingOfSaves, callsBackOnceForEachSave) {
    const SaveManner& manner = GetParam();
    watcher.start();
    for (int save = 0; save < 3; ++save) {
        manner.save(file, "title\nSave " + std::to_string(save) + "\n");
        see();
        EXPECT_EQ(watcher.isArmed(), !manner.replaces);
        expectOneCallback();
        EXPECT_TRUE(watcher.isArmed());
    }
}

TEST_P(FileWatchingOfSaves, joinsSavesInQuickSuccession) {
    const SaveManner& manner = GetParam();
    watcher.start();
    manner.save(file, "1");
    pass(300ms);
    manner.save(file, "2");
    see();
    // Once the first save has replaced the file nobody looks at its path until the delay is over.
    scheduler.advance(manner.replaces ? 49ms : 349ms);
    EXPECT_EQ(calls, 0);
    scheduler.advance(1ms);
    EXPECT_EQ(calls, 1);
    expectSilence();
    EXPECT_TRUE(watcher.isArmed());
}

INSTANTIATE_TEST_SUITE_P(Manners, FileWatchingOfSaves, testing::ValuesIn(saveManners()),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace quorvel
