#include "QtDesktop/LookSettings.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QMap>
#include <QStringList>
#include <utility>

namespace quorvel {

namespace {

const QString service = "org.freedesktop.portal.Desktop";
const QString path = "/org/freedesktop/portal/desktop";
const QString interface = "org.freedesktop.portal.Settings";
const QString appearance = "org.freedesktop.appearance";
const QString gnome = "org.gnome.desktop.interface";  // older portals know of motion only there

}  // namespace

LookSettings::LookSettings(std::function<void(const DesktopLook&)> changed) : changed_(std::move(changed)) {}

bool LookSettings::hasBus() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return true;
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !folder.isEmpty() && QFileInfo::exists(folder + "/bus");
}

QDBusMessage LookSettings::call() {
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, "ReadAll");
    message.setArguments({QStringList{appearance, gnome}});
    return message;
}

void LookSettings::follow(const QDBusConnection& bus) {
    if (!bus.isConnected()) return;
    // A slot is found only while the types that it takes are known by their names.
    qRegisterMetaType<QDBusVariant>();
    // Whoever the sender is: finding out who owns the name would be waited for.
    QDBusConnection(bus).connect({}, path, interface, "SettingChanged", this,
                                 SLOT(settingChanged(QString, QString, QDBusVariant)));
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(call()), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        if (!answer->isError()) read(answer->reply());
    });
}

void LookSettings::read(const QDBusMessage& answer) {
    if (answer.signature() != "a{sa{sv}}") return;
    const auto groups = qdbus_cast<QMap<QString, QVariantMap>>(answer.arguments().constFirst());
    for (auto group = groups.begin(); group != groups.end(); ++group)
        for (auto setting = group->begin(); setting != group->end(); ++setting)
            take(group.key(), setting.key(), setting.value());
    tell();
}

void LookSettings::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    take(group, key, value.variant());
    tell();
}

void LookSettings::take(const QString& group, const QString& key, const QVariant& value) {
    if (group == appearance && key == "color-scheme") {
        const uint scheme = value.toUInt();
        look_.isDark = scheme == 1 || scheme == 2 ? std::optional(scheme == 1) : std::nullopt;
    } else if (group == appearance && key == "reduced-motion") {
        prefersReducedMotion_ = value.toUInt() == 1;
    } else if (group == gnome && key == "enable-animations") {
        hasAnimations_ = value.toBool();
    }
    const bool isCalm = prefersReducedMotion_.value_or(false) || !hasAnimations_.value_or(true);
    // That one source has nothing against motion doesn't speak for the others.
    look_.reducesMotion = isCalm ? std::optional(true) : std::nullopt;
}

void LookSettings::tell() {
    if (look_ == told_) return;
    told_ = look_;
    changed_(look_);
}

}  // namespace quorvel
