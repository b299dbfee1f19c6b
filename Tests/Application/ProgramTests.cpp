#include "Support/Process.h"
#include "Support/TemporaryFolder.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileSystemWatcher>
#include <QTimer>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

// The finished program, started without a screen in a home of its own.
namespace quorvel {
namespace {

namespace fs = std::filesystem;

class ProgramTests : public testing::Test {
protected:
    ProgramTests() {
        fs::create_directories(decks());
        std::ofstream(cards()) << "Name,Qty\nA,1\n";
    }

    fs::path library() const { return home / "Quorvel"; }
    fs::path decks() const { return library() / "Decks"; }
    fs::path cards() const { return home / "Cards \xC3\xA9.csv"; }

    ProcessCall call(std::vector<std::string> arguments = {}) const {
        arguments.insert(arguments.begin(), QUORVEL);
        return {.words = std::move(arguments),
                .folder = home.path(),
                .environment = {{"QT_QPA_PLATFORM", "offscreen"},
                                {"HOME", home.path()},
                                {"XDG_DATA_HOME", home.path()},
                                {"XDG_CONFIG_HOME", home.path()},
                                {"XDG_CACHE_HOME", home.path()},
                                {"XDG_RUNTIME_DIR", home.path()},
                                {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"}}};
    }

    static ProcessEnd run(const ProcessCall& call) { return RunningProcess(call).wait(); }

    /// Waits for changes in a folder until they have led to `done`; false after a minute.
    static bool runUntil(const fs::path& folder, const std::function<bool()>& done) {
        const QFileSystemWatcher watcher({QString::fromStdString(folder.string())});
        QEventLoop loop;
        QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, &loop, [&] {
            if (done()) loop.quit();
        });
        QTimer::singleShot(60'000, &loop, &QEventLoop::quit);
        if (!done()) loop.exec();
        return done();
    }

    bool isListening() const {
        return runUntil(library(), [this] { return fs::exists(library() / "instance.socket"); });
    }

    static std::ptrdiff_t count(const fs::path& folder) {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    }

    bool hasDecks(std::ptrdiff_t number) const {
        return runUntil(decks(), [this, number] { return count(decks()) == number; });
    }

    TemporaryFolder home;
};

TEST_F(ProgramTests, AnswersQuestionsWithoutAScreen) {
    ProcessCall question = call({"--version"});
    question.environment["QT_QPA_PLATFORM"] = "there is none";
    const ProcessEnd version = run(question);
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_EQ(version.output, "Quorvel " QUORVEL_VERSION "\n");
    question.words.back() = "--help";
    const ProcessEnd help = run(question);
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.output.starts_with("Usage: quorvel ")) << help.output;
    EXPECT_EQ(help.errors, "");
}

TEST_F(ProgramTests, RefusesAnOptionThatThereIsNot) {
    const ProcessEnd end = run(call({"--nonsense", "file.csv"}));
    EXPECT_EQ(end.exitCode, 2);
    EXPECT_EQ(end.errors, "quorvel: there is no option --nonsense; see quorvel --help\n");
    EXPECT_FALSE(fs::exists(library() / "instance.lock"));
}

TEST_F(ProgramTests, SignalsEndItLikeClosing) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        RunningProcess program(call());
        ASSERT_TRUE(isListening());
        program.send(signal);
        const ProcessEnd end = program.wait();
        EXPECT_EQ(end.exitCode, 0) << signal;
        EXPECT_EQ(end.errors, "");
        EXPECT_FALSE(fs::exists(library() / "instance.socket"));
    }
}

TEST_F(ProgramTests, AFileGivenAtTheStartIsOpenedAndSavedBeforeTheEnd) {
    RunningProcess program(call({"--", cards().filename()}));
    ASSERT_TRUE(isListening());
    program.send(SIGTERM);
    EXPECT_EQ(program.wait().exitCode, 0);
    EXPECT_EQ(count(decks()), 1);
}

TEST_F(ProgramTests, ASecondStartHandsItsFileOverAndEnds) {
    RunningProcess first(call());
    ASSERT_TRUE(isListening());
    const ProcessEnd second = run(call({cards()}));
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_EQ(second.errors, "");
    EXPECT_TRUE(hasDecks(1));
    first.send(SIGTERM);
    EXPECT_EQ(first.wait().exitCode, 0);
}

TEST_F(ProgramTests, AfterACrashItStartsAgain) {
    {
        RunningProcess first(call());
        ASSERT_TRUE(isListening());
        first.send(SIGKILL);
        EXPECT_EQ(first.wait().signal, SIGKILL);
    }
    ASSERT_TRUE(fs::exists(library() / "instance.socket"));
    RunningProcess next(call({cards()}));
    EXPECT_TRUE(hasDecks(1));
    next.send(SIGTERM);
    EXPECT_EQ(next.wait().exitCode, 0);
}

}  // namespace
}  // namespace quorvel

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
