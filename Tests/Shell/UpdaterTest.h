#pragma once

#include "Shell/Updater.h"
#include "Shell/UpdaterServer.h"
#include "Support/Desktop/EventLoop.h"
#include "Support/Desktop/FakeDesktop.h"
#include "Support/Desktop/ManualScheduler.h"

#include <QNetworkProxy>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace quorvel {

inline const QByteArray newer =
    R"({"format": 1, "versions": [{"version": "0.2", "notes": "<b>New</b>", "download": "https://example.org/0.2"}]})";
inline const QByteArray older =
    R"({"format": 1, "versions": [{"version": "0.1", "download": "https://example.org/0.1"}]})";

/// An updater of version 0.1.0 before a server that answers as it is told.
class UpdaterTests : public testing::Test {
protected:
    using Answer = UpdaterServer::Answer;
    using Request = UpdaterServer::Request;
    using Words = std::vector<std::string>;

    UpdaterTests() { QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy); }

    void use(const QUrl& feed) {
        updater = std::make_unique<Updater>(scheduler, desktop, feed, "0.1.0");
        QObject::connect(updater.get(), &Updater::upToDate, [this] { said.push_back("up to date"); });
        QObject::connect(updater.get(), &Updater::unreachable, [this] { said.push_back("unreachable"); });
        QObject::connect(updater.get(), &Updater::newerVersion,
                         [this](const UpdateFeed::News& news) { said.push_back("newer: " + news.version); });
    }

    void finish() {
        EXPECT_TRUE(runUntil([this] { return !updater->running(); }));
    }

    /// What a check says when the server answers every request so.
    Words check(const Answer& answer, const QUrl& feed) {
        server.answer = [answer](const Request&) { return answer; };
        return check(feed);
    }
    Words check(const Answer& answer) { return check(answer, server.address()); }
    Words check(const QUrl& feed) {
        use(feed);
        said.clear();
        updater->checkForUpdates();
        finish();
        EXPECT_FALSE(updater->checking());
        return said;
    }

    /// A server that answers HEAD so and has this feed.
    void publish(int head, const QByteArray& feed) {
        server.answer = [=](const Request& request) {
            return request.method == "HEAD" ? UpdaterServer::status(head) : UpdaterServer::status(200, "", feed);
        };
    }

    bool runUntilAsked(std::size_t count) {
        return runUntil([this, count] { return server.requests.size() == count; });
    }

    ManualScheduler scheduler;
    FakeDesktop desktop;
    UpdaterServer server;
    std::unique_ptr<Updater> updater;
    Words said;
};

}  // namespace quorvel
