#include "QtDesktop/FileReveal.h"
#include "Support/Desktop/EventLoop.h"
#include "Support/TemporaryFolder.h"

#include <QDBusServer>
#include <QDBusVirtualObject>
#include <gmock/gmock.h>
#include <optional>

namespace quorvel {
namespace {

using testing::Optional;
using Path = std::filesystem::path;

TEST(FileReveal, writesAnyPathAsAnAddress) {
    EXPECT_EQ(FileReveal::address("/home/a/Card deck #1 100%.pdf"), "file:///home/a/Card%20deck%20%231%20100%25.pdf");
    EXPECT_EQ(FileReveal::address("/ä/“x”?&;+.pdf"), "file:///%C3%A4/%E2%80%9Cx%E2%80%9D%3F%26%3B%2B.pdf");
    EXPECT_EQ(FileReveal::address("/not\xff"
                                  "utf8"),
              "file:///not%FFutf8");
}

TEST(FileReveal, asksTheFileManagerToSelect) {
    const QDBusMessage call = FileReveal::call("/a/b c.pdf");
    EXPECT_EQ(call.service(), "org.freedesktop.FileManager1");
    EXPECT_EQ(call.path(), "/org/freedesktop/FileManager1");
    EXPECT_EQ(call.interface(), "org.freedesktop.FileManager1");
    EXPECT_EQ(call.member(), "ShowItems");
    EXPECT_EQ(call.signature(), "");
    EXPECT_EQ(call.arguments(), QVariantList({QStringList("file:///a/b%20c.pdf"), QString()}));
}

TEST(FileReveal, findsTheFolderThatIsThere) {
    const TemporaryFolder folder;
    EXPECT_EQ(FileReveal::folderAround(folder / "deck.pdf"), folder.path());
    EXPECT_EQ(FileReveal::folderAround(folder / "gone/further/deck.pdf"), folder.path());
    EXPECT_EQ(FileReveal::folderAround("/none-such/deck.pdf"), "/");
}

/// A file manager at the other end of a connection without a bus between.
class FileManager : public QDBusVirtualObject {
public:
    enum class Answer { done, failure };

    explicit FileManager(Answer answer) : answer_(answer) {}

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        asked = message;
        connection.send(answer_ == Answer::done ? message.createReply()
                                                : message.createErrorReply(QDBusError::Failed, "no window"));
        return true;
    }

    std::optional<QDBusMessage> asked;

private:
    Answer answer_;
};

class FileRevealing : public testing::Test {
protected:
    /// A connection to `manager`, or to someone who knows of no file manager.
    QDBusConnection connectTo(FileManager* manager) {
        QObject::connect(&server, &QDBusServer::newConnection, &server, [this, manager](QDBusConnection connection) {
            if (manager) {
                EXPECT_TRUE(connection.registerVirtualObject("/org/freedesktop/FileManager1", manager));
            }
            isThere = true;
        });
        QDBusConnection connection = QDBusConnection::connectToPeer(server.address(), "peer");
        EXPECT_TRUE(connection.isConnected());
        EXPECT_TRUE(runUntil([this] { return isThere; }));
        return connection;
    }

    ~FileRevealing() override { QDBusConnection::disconnectFromPeer("peer"); }

    void reveal(const QDBusConnection& bus) {
        FileReveal::reveal(folder / "deck 1.pdf", bus, [this](const Path& each) { opened = each; });
        EXPECT_EQ(opened, std::nullopt) << "nothing happens within the call";
    }

    TemporaryFolder folder;
    QDBusServer server{"unix:tmpdir=" + QString::fromStdString(folder.path().string())};
    bool isThere = false;
    std::optional<Path> opened;
};

TEST_F(FileRevealing, leavesItToTheFileManager) {
    FileManager manager(FileManager::Answer::done);
    reveal(connectTo(&manager));
    ASSERT_TRUE(runUntil([&] { return manager.asked.has_value(); }));
    runWhatWaits();
    EXPECT_EQ(manager.asked->member(), "ShowItems");
    EXPECT_EQ(manager.asked->signature(), "ass");
    const QString address = QString::fromStdString(FileReveal::address(folder / "deck 1.pdf"));
    EXPECT_EQ(manager.asked->arguments().at(0).toStringList(), QStringList(address));
    EXPECT_EQ(opened, std::nullopt);
}

TEST_F(FileRevealing, opensTheFolderWhenTheFileManagerCannot) {
    FileManager manager(FileManager::Answer::failure);
    reveal(connectTo(&manager));
    ASSERT_TRUE(runUntil([&] { return opened.has_value(); }));
    EXPECT_TRUE(manager.asked);
    EXPECT_THAT(opened, Optional(folder.path()));
}

TEST_F(FileRevealing, opensTheFolderWhenThereIsNoFileManager) {
    reveal(connectTo(nullptr));
    ASSERT_TRUE(runUntil([&] { return opened.has_value(); }));
    EXPECT_THAT(opened, Optional(folder.path()));
}

TEST_F(FileRevealing, opensTheFolderWhenThereIsNoBus) {
    reveal(QDBusConnection("never connected"));
    ASSERT_TRUE(runUntil([&] { return opened.has_value(); }));
    EXPECT_THAT(opened, Optional(folder.path()));
}

}  // namespace
}  // namespace quorvel
