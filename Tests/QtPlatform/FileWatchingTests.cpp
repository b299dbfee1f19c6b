#include "Foundation/FileBytes.h"
#include "Foundation/FileDescriptor.h"
#include "Library/FileWatcher.h"
#include "QtPlatform/QtScheduler.h"
#include "Support/Desktop/EventLoop.h"
#include "Support/Desktop/SaveManners.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <thread>
#include <unistd.h>

// The watcher with the real clock, the real loop, and saves from a thread or a process of their own.
namespace quorvel {
namespace {

using namespace std::chrono_literals;
using Path = std::filesystem::path;
using Time = std::chrono::steady_clock::time_point;

Time now() {
    return std::chrono::steady_clock::now();
}

class RealFileWatching : public testing::Test {
protected:
    RealFileWatching() { EXPECT_TRUE(FileBytes::write(file, "title\nOne\n")); }

    [[nodiscard]] bool waitForCall(int count) {
        return runUntil([&] { return calls >= count; });
    }

    /// Runs the loop for longer than the watcher's delay.
    void letAWaitPass() {
        bool over = false;
        const auto timer = scheduler.later(2 * FileWatcher::delay, [&] { over = true; });
        EXPECT_TRUE(runUntil([&] { return over; }));
    }

    std::string content() const { return FileBytes::read(file).value_or("nothing"); }

    TemporaryFolder folder;
    Path file = folder / "cards.csv";
    QtScheduler scheduler;
    int calls = 0;
    Time called;
    std::string found;  // in the file, at the last call
    FileWatcher watcher{scheduler, file, [this] {
                            ++calls;
                            called = now();
                            found = content();
                        }};
};

class RealSaves : public RealFileWatching, public testing::WithParamInterface<SaveManner> {};

TEST_P(RealSaves, areSeenOnceEachWhenTheyAreOver) {
    const SaveManner& manner = GetParam();
    watcher.start();
    for (int save = 1; save <= 2; ++save) {
        const std::string bytes = "title\nSave " + std::to_string(save) + "\n";
        Time saved;
        {
            const std::jthread program([&] {
                manner.save(file, bytes);
                saved = now();
            });
        }
        ASSERT_TRUE(waitForCall(save));
        EXPECT_GE(called - saved, FileWatcher::delay - 10ms) << "the last of its events came just before its end";
        EXPECT_TRUE(found.ends_with(bytes)) << found;
        EXPECT_TRUE(watcher.isArmed());
    }
    letAWaitPass();
    EXPECT_EQ(calls, 2);
}

INSTANTIATE_TEST_SUITE_P(Manners, RealSaves, testing::ValuesIn(saveManners()),
                         [](const auto& each) { return each.param.name; });

TEST_F(RealFileWatching, joinsABurstOfSaves) {
    watcher.start();
    int saves = 0;
    Time last;
    std::function<void()> save;
    Scheduler::Task next;
    save = [&] {
        EXPECT_TRUE(FileBytes::write(file, "title\n" + std::to_string(++saves) + "\n"));
        last = now();
        if (saves < 10) next = scheduler.later(20ms, save);
    };
    save();
    ASSERT_TRUE(waitForCall(1));
    EXPECT_EQ(saves, 10);
    EXPECT_GE(called - last, FileWatcher::delay - 1ms);
    EXPECT_EQ(found, "title\n10\n");
    letAWaitPass();
    EXPECT_EQ(calls, 1);
}

TEST_F(RealFileWatching, readsASlowSaveWhenItIsWhole) {
    watcher.start();
    const FileDescriptor slow(::open(file.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
    std::string whole;
    std::function<void()> write;
    Scheduler::Task next;
    write = [&] {
        whole += "card\n";
        EXPECT_EQ(::write(slow.get(), "card\n", 5), 5);
        if (whole.size() < 100) next = scheduler.later(30ms, write);
    };
    write();
    ASSERT_TRUE(waitForCall(1));
    EXPECT_EQ(found, whole);
    EXPECT_EQ(whole.size(), 100u);
}

TEST_F(RealFileWatching, seesProgramsThatSaveAgainAndAgain) {
    watcher.start();
    for (int round = 1; round <= int(saveManners().size()); ++round) {
        const SaveManner& manner = saveManners()[std::size_t(round) - 1];
        SCOPED_TRACE(manner.name);
        manner.save(file, manner.name);
        ASSERT_TRUE(waitForCall(round));
        EXPECT_TRUE(found.ends_with(manner.name));
    }
    letAWaitPass();
    EXPECT_EQ(calls, int(saveManners().size()));
}

TEST_F(RealFileWatching, staysSilentAfterItsEnd) {
    {
        FileWatcher brief(scheduler, file, [this] { ++calls; });
        brief.start();
        EXPECT_TRUE(FileBytes::write(file, "1"));
        bool over = false;
        const auto timer = scheduler.later(100ms, [&] { over = true; });
        ASSERT_TRUE(runUntil([&] { return over; }));
    }
    letAWaitPass();
    EXPECT_EQ(calls, 0);
}

TEST_F(RealFileWatching, endsWithTheSchedulerOrBefore) {
    auto own = std::make_unique<QtScheduler>();
    FileWatcher outliving(*own, file, [this] { ++calls; });
    outliving.start();
    EXPECT_TRUE(FileBytes::write(file, "1"));
    runWhatWaits();
    own.reset();
    letAWaitPass();
    EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace quorvel
