#include "Shell/UpdaterTest.h"

namespace quorvel {
namespace {

using namespace std::chrono_literals;

TEST_F(UpdaterTests, EveryStatusHasItsOutcome) {
    for (const int status : {404, 410}) EXPECT_EQ(check(UpdaterServer::status(status)), Words{"up to date"}) << status;
    for (const int status : {301, 304, 400, 401, 403, 407, 418, 429, 500, 502, 503, 599})
        EXPECT_EQ(check(UpdaterServer::status(status)), Words{"unreachable"}) << status;
    for (const Request& request : server.requests) EXPECT_EQ(request.method, "HEAD");
}

TEST_F(UpdaterTests, AFeedThatIsThereIsRead) {
    for (const int status : {200, 204, 299, 405, 501}) {
        server.requests.clear();
        publish(status, newer);
        EXPECT_EQ(check(server.address()), Words{"newer: 0.2"}) << status;
        ASSERT_EQ(server.requests.size(), 2U);
        EXPECT_EQ(server.requests[0].method, "HEAD");
        EXPECT_EQ(server.requests[1].method, "GET");
    }
    publish(200, older);
    EXPECT_EQ(check(server.address()), Words{"up to date"});
}

TEST_F(UpdaterTests, WithoutAFeedNothingIsSent) {
    EXPECT_EQ(check(QUrl()), Words{"up to date"});
    updater->checkDaily();
    scheduler.advance(48h);
    EXPECT_EQ(said.size(), 1U);
    EXPECT_TRUE(desktop.defaults.empty());
}

TEST_F(UpdaterTests, OnlyTheWebIsAsked) {
    for (const char* address : {"file:///etc/passwd", "ftp://127.0.0.1/feed", "data:,x", "feed.json"})
        EXPECT_EQ(check(QUrl(address)), Words{"unreachable"}) << address;
}

TEST_F(UpdaterTests, EmptyAnswersHoldNothingNew) {
    EXPECT_EQ(check(UpdaterServer::status(204)), Words{"up to date"});
    EXPECT_EQ(check(UpdaterServer::status(200)), Words{"unreachable"});
}

TEST_F(UpdaterTests, AFeedThatGoesBetweenTheRequestsIsNotPublished) {
    server.answer = [](const Request& request) { return UpdaterServer::status(request.method == "HEAD" ? 200 : 404); };
    EXPECT_EQ(check(server.address()), Words{"up to date"});
    server.answer = [](const Request& request) { return UpdaterServer::status(request.method == "HEAD" ? 200 : 500); };
    EXPECT_EQ(check(server.address()), Words{"unreachable"});
    server.answer = [](const Request& request) { return UpdaterServer::status(request.method == "HEAD" ? 405 : 405); };
    EXPECT_EQ(check(server.address()), Words{"unreachable"});
}

TEST_F(UpdaterTests, FollowsARedirect) {
    server.answer = [](const Request& request) {
        if (request.path == "/old") return UpdaterServer::status(301, "Location: /feed.json\r\n");
        return UpdaterServer::status(200, "", request.method == "HEAD" ? "" : newer);
    };
    EXPECT_EQ(check(server.address("/old")), Words{"newer: 0.2"});
}

TEST_F(UpdaterTests, ARedirectToNowhereIsUnreachable) {
    for (const char* target :
         {"", "Location:\r\n", "Location: file:///etc/passwd\r\n", "Location: ftp://127.0.0.1/\r\n",
          "Location: http://\r\n", "Location: http://127.0.0.1:1/\r\n"})
        EXPECT_EQ(check(UpdaterServer::status(301, target)), Words{"unreachable"}) << target;
}

TEST_F(UpdaterTests, ARedirectToAMissingFeedIsNotPublished) {
    server.answer = [](const Request& request) {
        if (request.path == "/old") return UpdaterServer::status(301, "Location: /feed.json\r\n");
        return UpdaterServer::status(404);
    };
    EXPECT_EQ(check(server.address("/old")), Words{"up to date"});
}

TEST_F(UpdaterTests, ARedirectLoopEnds) {
    EXPECT_EQ(check(UpdaterServer::status(302, "Location: /feed.json\r\n")), Words{"unreachable"});
    // A request is sent again when the server closes the connection just then.
    EXPECT_LE(server.requests.size(), 4 * std::size_t(Updater::redirectLimit + 1));
}

TEST_F(UpdaterTests, RubbishIsUnreachable) {
    for (const QByteArray& bytes :
         {QByteArray("220 mail.example.org ready\r\n"), QByteArray("\0\xFF\x01\x02\r\n\r\n", 8),
          QByteArray("HTTP/1.1\r\n\r\n"), QByteArray("HTTP/1.1 OK 200\r\n\r\n"),
          QByteArray("HTTP/1.1 200 OK\r\nContent-Le"), QByteArray("<html></html>"),
          QByteArray("HTTP/1.1 999999999999 Much\r\n\r\n"), QByteArray("\r\n\r\n\r\n")})
        EXPECT_EQ(check(Answer{bytes}), Words{"unreachable"}) << bytes.toStdString();
}

TEST_F(UpdaterTests, AServerThatClosesAtOnceOrIsNotThereIsUnreachable) {
    EXPECT_EQ(check(Answer{}), Words{"unreachable"});
    server.close();
    EXPECT_EQ(check(server.address()), Words{"unreachable"});
}

TEST_F(UpdaterTests, AFeedThatIsNoFeedIsUnreachable) {
    for (const QByteArray& body :
         {QByteArray("<html>Please log in</html>"), QByteArray("{}"), QByteArray(400'000, ' ')})
        EXPECT_EQ(check(UpdaterServer::status(200, "", body)), Words{"unreachable"});
    // Ends before what was promised.
    EXPECT_EQ(check(Answer{"HTTP/1.1 200 OK\r\nContent-Length: 5000\r\n\r\n" + newer}), Words{"unreachable"});
}

TEST_F(UpdaterTests, AnEndlessFeedIsLeft) {
    server.answer = [](const Request& request) {
        if (request.method == "HEAD") return UpdaterServer::status(200);
        return Answer{"HTTP/1.1 200 OK\r\n\r\n", Answer::Then::repeatForEver};
    };
    EXPECT_EQ(check(server.address()), Words{"unreachable"});
}

TEST_F(UpdaterTests, TheAnswerToHeadTellsTheSizeOfWhatDoesNotFollow) {
    server.answer = [](const Request& request) {
        if (request.method == "GET") return UpdaterServer::status(200, "", newer);
        return Answer{"HTTP/1.1 200 OK\r\nContent-Length: 5000\r\n\r\n", Answer::Then::hang};
    };
    EXPECT_EQ(check(server.address()), Words{"newer: 0.2"});
}

TEST_F(UpdaterTests, AHeadRequestHasNoBodyToReadOn) {
    server.answer = [](const Request& request) {
        if (request.method == "GET") return UpdaterServer::status(200, "", newer);
        return Answer{"HTTP/1.1 200 OK\r\n\r\n", Answer::Then::repeatForEver};
    };
    EXPECT_EQ(check(server.address()), Words{"newer: 0.2"});
}

TEST_F(UpdaterTests, ASilentServerIsLeftAfter15Seconds) {
    server.answer = [](const Request&) { return Answer{"", Answer::Then::hang}; };
    use(server.address());
    updater->checkForUpdates();
    ASSERT_TRUE(runUntilAsked(1));
    scheduler.advance(14'999ms);
    EXPECT_EQ(said, Words{});
    scheduler.advance(1ms);
    EXPECT_EQ(said, Words{"unreachable"});
    EXPECT_FALSE(updater->checking());
}

TEST_F(UpdaterTests, AServerThatStopsInTheMiddleIsLeftAfter15Seconds) {
    server.answer = [](const Request& request) {
        if (request.method == "HEAD") return UpdaterServer::status(200);
        return Answer{"HTTP/1.1 200 OK\r\nContent-Length: 5000\r\n\r\n{", Answer::Then::hang};
    };
    use(server.address());
    updater->checkForUpdates();
    ASSERT_TRUE(runUntilAsked(2));
    scheduler.advance(14'999ms);
    EXPECT_EQ(said, Words{});
    scheduler.advance(1ms);
    EXPECT_EQ(said, Words{"unreachable"});
}

TEST_F(UpdaterTests, ASecondPressDuringTheRequestDoesNothing) {
    server.answer = [](const Request&) { return Answer{"", Answer::Then::hang}; };
    use(server.address());
    updater->checkForUpdates();
    ASSERT_TRUE(runUntilAsked(1));
    EXPECT_TRUE(updater->checking());
    updater->checkForUpdates();
    runWhatWaits();
    scheduler.advance(15s);
    runWhatWaits();
    EXPECT_EQ(server.requests.size(), 1U);
    EXPECT_EQ(said, Words{"unreachable"});

    publish(200, newer);
    updater->checkForUpdates();
    finish();
    EXPECT_EQ(said.back(), "newer: 0.2");
}

TEST_F(UpdaterTests, RequestsSayLittleAndAskForTheOriginal) {
    publish(200, newer);
    check(server.address());
    ASSERT_EQ(server.requests.size(), 2U);
    for (const Request& request : server.requests) {
        EXPECT_TRUE(request.head.contains("User-Agent: Quorvel/0.1.0\r\n")) << request.head.toStdString();
        EXPECT_TRUE(request.head.contains("Cache-Control: no-cache\r\n")) << request.head.toStdString();
        EXPECT_TRUE(request.head.contains("Accept-Encoding: identity\r\n")) << request.head.toStdString();
        EXPECT_FALSE(request.head.contains("Cookie")) << request.head.toStdString();
    }
}

TEST_F(UpdaterTests, LooksByItselfOnceADay) {
    publish(200, newer);
    use(server.address());
    updater->checkDaily();
    scheduler.advance(Updater::afterStart - 1ms);
    EXPECT_FALSE(updater->running());
    scheduler.advance(1ms);
    EXPECT_TRUE(updater->running());
    EXPECT_FALSE(updater->checking());
    finish();
    EXPECT_EQ(said, Words{"newer: 0.2"});
    EXPECT_EQ(desktop.defaults.at("lastUpdateCheck"), "1778976010");

    scheduler.advance(23h + 59min);
    EXPECT_FALSE(updater->running());
    scheduler.advance(1min);
    EXPECT_TRUE(updater->running());
    finish();
    EXPECT_EQ(said.size(), 2U);
}

TEST_F(UpdaterTests, ARestartDoesNotMakeItLookAgain) {
    publish(200, newer);
    const auto looks = [&](const std::string& last) {
        desktop.defaults["lastUpdateCheck"] = last;
        use(server.address());
        updater->checkDaily();
        scheduler.advance(Updater::afterStart);
        return updater->running();
    };
    const auto now = [&](std::chrono::seconds ago) {
        const auto time = scheduler.now() + Updater::afterStart - ago;
        return std::to_string(std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch()).count());
    };
    EXPECT_FALSE(looks(now(0s)));
    EXPECT_FALSE(looks(now(24h - 1s)));
    EXPECT_TRUE(looks(now(24h)));
    EXPECT_TRUE(looks(now(-100h)));  // a clock that was wrong
    EXPECT_TRUE(looks("yesterday"));
    EXPECT_TRUE(looks("-9223372036854775808"));
}

TEST_F(UpdaterTests, ByItselfItSpeaksOnlyOfNewerVersions) {
    for (const Answer& answer : {UpdaterServer::status(404), UpdaterServer::status(500),
                                 UpdaterServer::status(200, "", older), UpdaterServer::status(200, "", "rubbish")}) {
        desktop.defaults.clear();
        server.answer = [answer](const Request&) { return answer; };
        use(server.address());
        updater->checkDaily();
        scheduler.advance(Updater::afterStart);
        finish();
        EXPECT_EQ(said, Words{});
        EXPECT_TRUE(desktop.defaults.contains("lastUpdateCheck"));  // a failure counts, too
    }
}

TEST_F(UpdaterTests, ADailyCheckGivesWayToTheCommand) {
    server.answer = [](const Request&) { return Answer{"", Answer::Then::hang}; };
    use(server.address());
    updater->checkDaily();
    scheduler.advance(Updater::afterStart);
    ASSERT_TRUE(runUntilAsked(1));
    publish(404, "");
    updater->checkForUpdates();
    EXPECT_TRUE(updater->checking());
    finish();
    EXPECT_EQ(said, Words{"up to date"});
}

TEST_F(UpdaterTests, MayGoWhileItAsks) {
    server.answer = [](const Request&) { return Answer{"", Answer::Then::hang}; };
    use(server.address());
    updater->checkForUpdates();
    ASSERT_TRUE(runUntilAsked(1));
    updater.reset();
    runWhatWaits();
    EXPECT_EQ(scheduler.timerCount(), 0U);
    EXPECT_EQ(said, Words{});
}

}  // namespace
}  // namespace quorvel
