#include "QtDesktop/LookSettings.h"
#include "Support/Desktop/EnvironmentVariable.h"
#include "Support/Desktop/EventLoop.h"
#include "Support/TemporaryFolder.h"

#include <QDBusMetaType>
#include <QDBusServer>
#include <QDBusVirtualObject>
#include <QMap>
#include <QPointer>
#include <fstream>
#include <gtest/gtest.h>
#include <vector>

namespace quorvel {
namespace {

using Settings = QMap<QString, QVariantMap>;

const QString portalPath = "/org/freedesktop/portal/desktop";
const QString portalInterface = "org.freedesktop.portal.Settings";
const QString appearance = "org.freedesktop.appearance";
const QString gnome = "org.gnome.desktop.interface";

/// A portal at the other end of a connection without a bus between.
class Portal : public QDBusVirtualObject {
public:
    explicit Portal(QVariant answer) : answer_(std::move(answer)) {}

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        asked.push_back(message);
        connection.send(answer_.isValid() ? message.createReply(answer_)
                                          : message.createErrorReply(QDBusError::UnknownMethod, "no settings"));
        return true;
    }

    std::vector<QDBusMessage> asked;

private:
    QVariant answer_;
};

class LookSettingsTest : public testing::Test {
protected:
    static void SetUpTestSuite() { qDBusRegisterMetaType<Settings>(); }
    ~LookSettingsTest() override { QDBusConnection::disconnectFromPeer("settings"); }

    /// Follows a portal that answers this, until it has.
    void follow(QVariant answer) {
        portal = std::make_unique<Portal>(std::move(answer));
        QObject::connect(&server, &QDBusServer::newConnection, &server, [this](const QDBusConnection& connection) {
            other = connection;
            EXPECT_TRUE(other.registerVirtualObject(portalPath, portal.get()));
            isThere = true;
        });
        const QDBusConnection connection = QDBusConnection::connectToPeer(server.address(), "settings");
        ASSERT_TRUE(connection.isConnected());
        ASSERT_TRUE(runUntil([this] { return isThere; }));
        settings.follow(connection);
        EXPECT_TRUE(told.empty()) << "nothing happens within the call";
        ASSERT_TRUE(runUntil([this] { return !portal->asked.empty(); }));
        sync();
    }

    void change(const QString& group, const QString& key, const QVariant& value) {
        QDBusMessage signal = QDBusMessage::createSignal(portalPath, portalInterface, "SettingChanged");
        signal.setArguments({group, key, QVariant::fromValue(QDBusVariant(value))});
        ASSERT_TRUE(other.send(signal));
        sync();
    }

    /// What has been told, once it is as much as this. What comes from the other thread of a connection may be handed
    /// on a moment later than what came after it.
    const std::vector<DesktopLook>& toldAtLeast(std::size_t count) {
        EXPECT_TRUE(runUntil([&] { return told.size() >= count; }));
        return told;
    }

    /// For what should tell nothing: messages come in their order, and after this one nearly all before it are here.
    void sync() {
        marker_ = new QObject;
        QDBusConnection("settings").connect({}, "/sync", "a.b", "Sync", marker_.data(), SLOT(deleteLater()));
        ASSERT_TRUE(other.send(QDBusMessage::createSignal("/sync", "a.b", "Sync")));
        ASSERT_TRUE(runUntil([this] { return marker_.isNull(); }));
        runWhatWaits();
    }

    static Settings with(const QString& group, const QString& key, const QVariant& value) {
        return {{group, {{key, value}}}};
    }

    TemporaryFolder folder;
    QDBusServer server{"unix:tmpdir=" + QString::fromStdString(folder.path().string())};
    QDBusConnection other{"not yet"};
    bool isThere = false;
    std::unique_ptr<Portal> portal;
    std::vector<DesktopLook> told;
    LookSettings settings{[this](const DesktopLook& look) { told.push_back(look); }};

private:
    QPointer<QObject> marker_;
};

TEST_F(LookSettingsTest, AsksOnceForTheGroupsThatItReads) {
    follow(QVariant::fromValue(Settings()));
    ASSERT_EQ(portal->asked.size(), 1U);
    EXPECT_EQ(portal->asked[0].interface(), portalInterface);
    EXPECT_EQ(portal->asked[0].member(), "ReadAll");
    EXPECT_EQ(portal->asked[0].arguments(), QVariantList{(QStringList{appearance, gnome})});
    EXPECT_TRUE(told.empty()) << "nothing differs from before";
}

TEST_F(LookSettingsTest, DarkIsDark) {
    follow(QVariant::fromValue(with(appearance, "color-scheme", 1U)));
    EXPECT_EQ(toldAtLeast(1), (std::vector<DesktopLook>{{true, std::nullopt}}));
}

TEST_F(LookSettingsTest, LightIsLight) {
    follow(QVariant::fromValue(with(appearance, "color-scheme", 2U)));
    EXPECT_EQ(toldAtLeast(1), (std::vector<DesktopLook>{{false, std::nullopt}}));
}

TEST_F(LookSettingsTest, WhatIsUnknownIsNoPreference) {
    follow(QVariant::fromValue(with(appearance, "color-scheme", 7U)));
    EXPECT_TRUE(told.empty());
}

TEST_F(LookSettingsTest, MotionIsReducedByEitherSetting) {
    follow(QVariant::fromValue(Settings{{appearance, {{"color-scheme", 1U}, {"reduced-motion", 0U}}},
                                        {gnome, {{"enable-animations", false}}}}));
    EXPECT_EQ(toldAtLeast(1), (std::vector<DesktopLook>{{true, true}}));
    told.clear();
    change(gnome, "enable-animations", true);
    EXPECT_EQ(toldAtLeast(1), (std::vector<DesktopLook>{{true, std::nullopt}}));
    change(appearance, "reduced-motion", 1U);
    EXPECT_EQ(toldAtLeast(2).back(), (DesktopLook{true, true}));
}

TEST_F(LookSettingsTest, ChangesAreFollowed) {
    follow(QVariant::fromValue(with(appearance, "color-scheme", 1U)));
    change(appearance, "color-scheme", 2U);
    change(appearance, "color-scheme", 0U);
    change(appearance, "color-scheme", 0U);
    change(appearance, "contrast", 1U);
    change("org.example.other", "color-scheme", 1U);
    EXPECT_EQ(toldAtLeast(3), (std::vector<DesktopLook>{{true, std::nullopt}, {false, std::nullopt}, {}}));
}

TEST_F(LookSettingsTest, AnErrorTellsNothing) {
    follow(QVariant());
    EXPECT_TRUE(told.empty());
}

TEST_F(LookSettingsTest, RubbishTellsNothing) {
    follow("dark");
    change(appearance, "color-scheme", "dark");
    change(appearance, "color-scheme", QStringList{"dark"});
    change(gnome, "enable-animations", QStringList{});
    EXPECT_EQ(settings.look().isDark, std::nullopt);
}

TEST_F(LookSettingsTest, WithoutABusNothingIsTold) {
    settings.follow(QDBusConnection("never connected"));
    runWhatWaits();
    EXPECT_TRUE(told.empty());
}

TEST_F(LookSettingsTest, MayGoWhileItAsks) {
    portal = std::make_unique<Portal>(QVariant::fromValue(with(appearance, "color-scheme", 1U)));
    {
        LookSettings brief([](const DesktopLook&) { ADD_FAILURE(); });
        const QDBusConnection connection = QDBusConnection::connectToPeer(server.address(), "settings");
        brief.follow(connection);
    }
    runWhatWaits();
}

TEST(LookSettings, knowsABusByItsAddressOrItsSocket) {
    const TemporaryFolder folder;
    const EnvironmentVariable runtime("XDG_RUNTIME_DIR", folder.path().string());
    const EnvironmentVariable none("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
    EXPECT_FALSE(LookSettings::hasBus());
    {
        const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", "unix:path=/somewhere");
        EXPECT_TRUE(LookSettings::hasBus());
    }
    EXPECT_FALSE(LookSettings::hasBus());
    std::ofstream(folder / "bus") << "";
    EXPECT_TRUE(LookSettings::hasBus());
}

}  // namespace
}  // namespace quorvel
