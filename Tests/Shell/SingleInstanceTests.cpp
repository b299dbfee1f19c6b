#include "Shell/SingleInstance.h"
#include "Support/Desktop/EventLoop.h"
#include "Support/Desktop/ManualScheduler.h"
#include "Support/TemporaryFolder.h"

#include <QLocalSocket>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <vector>

namespace quorvel {
namespace {

using namespace std::chrono_literals;
using Outcome = SingleInstance::Outcome;
using Path = std::filesystem::path;

class SingleInstanceTests : public testing::Test {
protected:
    /// A start of the program, with what became of it.
    struct Start {
        Start(ManualScheduler& scheduler, const Path& folder, StartMessage message = {}) : instance(scheduler, folder) {
            QObject::connect(&instance, &SingleInstance::started,
                             [this](const StartMessage& each) { received.push_back(each); });
            instance.begin(std::move(message), [this](Outcome each) {
                EXPECT_FALSE(outcome) << "decided twice";
                outcome = each;
            });
        }
        bool decided() {
            return runUntil([this] { return outcome.has_value(); });
        }

        std::optional<Outcome> outcome;
        std::vector<StartMessage> received;
        SingleInstance instance;
    };

    Path socket() const { return library / "instance.socket"; }

    /// A client that speaks something else.
    std::unique_ptr<QLocalSocket> stranger(const QByteArray& bytes = "") {
        auto client = std::make_unique<QLocalSocket>();
        client->connectToServer(QString::fromStdString(socket().string()));
        EXPECT_TRUE(client->waitForConnected(60'000));
        client->write(bytes);
        client->flush();
        return client;
    }

    static bool isLeft(const QLocalSocket& client) {
        return runUntil([&] { return client.state() == QLocalSocket::UnconnectedState; });
    }

    ManualScheduler scheduler;
    TemporaryFolder folder;
    Path library = folder.path() / "Library";
};

TEST_F(SingleInstanceTests, TheFirstStartIsTheFirst) {
    Start first(scheduler, library);
    EXPECT_EQ(first.outcome, Outcome::first);  // without any waiting
    EXPECT_TRUE(std::filesystem::is_socket(socket()));
    EXPECT_EQ(scheduler.timerCount(), 0U);
}

TEST_F(SingleInstanceTests, TheSecondHandsItsFilesOver) {
    Start first(scheduler, library);
    const StartMessage message{{"/a/Cards.csv", "/b/line\nbreak", "/c/\xFF\xFE bytes", "/d/é"}, "token-1"};
    Start second(scheduler, library, message);
    ASSERT_TRUE(second.decided());
    EXPECT_EQ(second.outcome, Outcome::handedOver);
    EXPECT_EQ(first.received, std::vector{message});

    Start third(scheduler, library);
    ASSERT_TRUE(third.decided());
    EXPECT_EQ(third.outcome, Outcome::handedOver);
    EXPECT_EQ(first.received.size(), 2U);
    EXPECT_TRUE(first.received.back().files.empty());
    runWhatWaits();
    EXPECT_EQ(scheduler.timerCount(), 0U);
}

TEST_F(SingleInstanceTests, AnotherLibraryIsAnotherInstance) {
    Start first(scheduler, library);
    Start other(scheduler, folder.path() / "Other");
    EXPECT_EQ(other.outcome, Outcome::first);
}

TEST_F(SingleInstanceTests, TheSocketIsTheUsersAlone) {
    Start first(scheduler, library);
    using std::filesystem::perms;
    const auto others = perms::group_all | perms::others_all;
    EXPECT_EQ(std::filesystem::status(socket()).permissions() & others, perms::none);
    EXPECT_EQ(std::filesystem::status(library / "instance.lock").permissions() & others, perms::none);
}

TEST_F(SingleInstanceTests, ALibraryMayLieDeep) {
    // Around the length that an address can have, and far beyond it.
    for (const std::size_t length : {80, 90, 91, 92, 93, 100, 107, 108, 109, 150, 1000}) {
        Path deep = folder.path();
        while (deep.native().size() + 101 < length) deep /= std::string(100, 'x');
        if (deep.native().size() + 1 < length) deep /= std::string(length - deep.native().size() - 1, 'y');
        {
            Start first(scheduler, deep);
            ASSERT_EQ(first.outcome, Outcome::first) << length;
            using std::filesystem::perms;
            EXPECT_EQ(std::filesystem::status(deep / "instance.socket").permissions() &
                          (perms::group_all | perms::others_all),
                      perms::none);
            Start second(scheduler, deep, {{"/a/Cards.csv"}, ""});
            ASSERT_TRUE(second.decided());
            EXPECT_EQ(second.outcome, Outcome::handedOver) << length;
            EXPECT_EQ(first.received.size(), 1U) << length;
        }
        EXPECT_FALSE(std::filesystem::exists(deep / "instance.socket")) << length;
    }
}

TEST_F(SingleInstanceTests, AnEndMakesRoom) {
    {
        Start first(scheduler, library);
        EXPECT_EQ(first.outcome, Outcome::first);
    }
    EXPECT_FALSE(std::filesystem::exists(socket()));
    Start next(scheduler, library);
    EXPECT_EQ(next.outcome, Outcome::first);
}

TEST_F(SingleInstanceTests, AStaleSocketIsReplaced) {
    std::filesystem::create_directories(library);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(socket().string().size(), sizeof address.sun_path);
    socket().string().copy(address.sun_path, sizeof address.sun_path - 1);
    {
        // Closed without being removed, as by a crash.
        const FileDescriptor crashed(::socket(AF_UNIX, SOCK_STREAM, 0));
        ASSERT_EQ(::bind(crashed.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }
    ASSERT_TRUE(std::filesystem::is_socket(socket()));
    Start first(scheduler, library);
    EXPECT_EQ(first.outcome, Outcome::first);
    Start second(scheduler, library, {{"/a.csv"}, ""});
    ASSERT_TRUE(second.decided());
    EXPECT_EQ(second.outcome, Outcome::handedOver);
    EXPECT_EQ(first.received.size(), 1U);
}

TEST_F(SingleInstanceTests, OfManyStartsAtOnceOneIsTheFirst) {
    std::vector<std::unique_ptr<Start>> starts;
    for (int i = 0; i < 12; ++i)
        starts.push_back(std::make_unique<Start>(scheduler, library, StartMessage{{"/" + std::to_string(i)}, ""}));
    int first = 0;
    for (const auto& start : starts) {
        ASSERT_TRUE(start->decided());
        first += start->outcome == Outcome::first ? 1 : 0;
        EXPECT_NE(start->outcome, Outcome::alone);
    }
    EXPECT_EQ(first, 1);
    EXPECT_EQ(starts.front()->received.size(), starts.size() - 1);
}

TEST_F(SingleInstanceTests, AStartThatMeetsAnEndTakesItsPlace) {
    auto first = std::make_unique<Start>(scheduler, library);
    std::filesystem::remove(socket());  // nobody listens any more, but the lock is still held
    Start second(scheduler, library);
    runWhatWaits();
    scheduler.advance(SingleInstance::betweenTries);
    runWhatWaits();
    EXPECT_FALSE(second.outcome);
    first.reset();
    scheduler.advance(SingleInstance::betweenTries);
    EXPECT_EQ(second.outcome, Outcome::first);
}

TEST_F(SingleInstanceTests, AFirstOneThatIsDeafIsGivenUp) {
    Start first(scheduler, library);
    std::filesystem::remove(socket());
    Start second(scheduler, library);
    scheduler.advance(SingleInstance::tryingTime - 1ms);
    EXPECT_FALSE(second.outcome);
    scheduler.advance(1ms);
    EXPECT_EQ(second.outcome, Outcome::alone);
    EXPECT_EQ(scheduler.timerCount(), 0U);
}

TEST_F(SingleInstanceTests, WithoutAFolderItStartsAlone) {
    std::ofstream(library) << "a file in the way";
    Start first(scheduler, library);
    EXPECT_EQ(first.outcome, Outcome::alone);
}

TEST_F(SingleInstanceTests, StrangersAreSentAway) {
    Start first(scheduler, library);
    const QByteArray head("QUORVEL1");
    for (const QByteArray& bytes :
         {QByteArray("GET / HTTP/1.1\r\n"), QByteArray(1, '\0'), head + QByteArray(4, '\xFF'),
          head + QByteArray(4, '\0'), head + QByteArray("\0\0\0\2ab", 6), head + QByteArray("\0\0\0\1\0more", 9),
          head + QByteArray("\0\0\0\5\0a/b\0", 9), head + QByteArray("\0\0\0\2\xC3\0", 6)}) {
        const auto client = stranger(bytes);
        EXPECT_TRUE(isLeft(*client)) << bytes.toHex().toStdString();
    }
    EXPECT_TRUE(first.received.empty());
    EXPECT_EQ(scheduler.timerCount(), 0U);
}

TEST_F(SingleInstanceTests, WhoSaysNothingIsSentAwayInTime) {
    Start first(scheduler, library);
    const auto silent = stranger();
    const auto slow = stranger("QUORV");
    ASSERT_TRUE(runUntil([&] { return scheduler.timerCount() == 2; }));
    scheduler.advance(SingleInstance::connectionTime - 1ms);
    runWhatWaits();
    EXPECT_EQ(silent->state(), QLocalSocket::ConnectedState);
    scheduler.advance(1ms);
    EXPECT_TRUE(isLeft(*silent));
    EXPECT_TRUE(isLeft(*slow));
}

TEST_F(SingleInstanceTests, ManyStrangersDoNotHoldItUp) {
    Start first(scheduler, library);
    std::vector<std::unique_ptr<QLocalSocket>> silent;
    for (std::size_t i = 0; i < SingleInstance::connectionLimit; ++i) silent.push_back(stranger());
    ASSERT_TRUE(runUntil([&] { return scheduler.timerCount() == SingleInstance::connectionLimit; }));
    EXPECT_TRUE(isLeft(*stranger()));

    // A real start gets through as soon as they are gone.
    Start second(scheduler, library, {{"/a.csv"}, ""});
    runWhatWaits();
    scheduler.advance(SingleInstance::connectionTime);
    runWhatWaits();
    scheduler.advance(SingleInstance::betweenTries);
    ASSERT_TRUE(second.decided());
    EXPECT_EQ(second.outcome, Outcome::handedOver);
    EXPECT_EQ(first.received.size(), 1U);
}

TEST_F(SingleInstanceTests, AnEndInTheMiddleOfAMessageLeavesNothing) {
    Start first(scheduler, library);
    stranger("QUORVEL1").reset();
    auto client = stranger();
    ASSERT_TRUE(runUntil([&] { return scheduler.timerCount() == 1; }));
    client.reset();
    EXPECT_TRUE(runUntil([&] { return scheduler.timerCount() == 0; }));
    EXPECT_TRUE(first.received.empty());
}

TEST_F(SingleInstanceTests, MayGoWhileSomebodySpeaks) {
    const auto client = [&] {
        Start first(scheduler, library);
        auto speaking = stranger("QUORVEL1");
        EXPECT_TRUE(runUntil([&] { return scheduler.timerCount() == 1; }));
        return speaking;
    }();
    EXPECT_TRUE(isLeft(*client));
    EXPECT_EQ(scheduler.timerCount(), 0U);
}

TEST_F(SingleInstanceTests, MessagesComeBackAsTheyWere) {
    for (const StartMessage& message :
         {StartMessage{}, StartMessage{{"/"}, ""}, StartMessage{{}, "token"},
          StartMessage{{"/a\xFF", "/" + std::string(4'000, 'x')}, std::string(256, 't')}}) {
        const QByteArray bytes = SingleInstance::encode(message);
        const auto read = SingleInstance::decode(bytes);
        EXPECT_EQ(read.reading, SingleInstance::Reading::complete);
        EXPECT_EQ(read.message, message);
        for (qsizetype i = 0; i < bytes.size(); ++i)
            ASSERT_EQ(SingleInstance::decode(bytes.left(i)).reading, SingleInstance::Reading::incomplete) << i;
        EXPECT_EQ(SingleInstance::decode(bytes + "x").reading, SingleInstance::Reading::invalid);
    }
}

TEST_F(SingleInstanceTests, WhatDoesNotFitIsLeftOut) {
    StartMessage message{{"relative.csv", "", "/" + std::string(5'000, 'x'), "/kept.csv"}, "a token with blanks"};
    EXPECT_EQ(SingleInstance::decode(SingleInstance::encode(message)).message, (StartMessage{{"/kept.csv"}, ""}));

    message.files.assign(2'000, "/" + std::string(1'000, 'x'));
    const QByteArray bytes = SingleInstance::encode(message);
    EXPECT_LE(std::size_t(bytes.size()), SingleInstance::messageLimit + 12);
    const auto read = SingleInstance::decode(bytes);
    EXPECT_EQ(read.reading, SingleInstance::Reading::complete);
    EXPECT_GT(read.message.files.size(), 1'000U);
}

}  // namespace
}  // namespace quorvel
