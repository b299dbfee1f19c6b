#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QObject>
#include <QVariantMap>
#include <functional>
#include <optional>

namespace quorvel {

/// How the user wants programs to look, as the desktop's settings portal tells it. What it doesn't tell is absent.
struct DesktopLook {
    std::optional<bool> isDark;
    std::optional<bool> reducesMotion;

    bool operator==(const DesktopLook&) const = default;
};

/// Follows the desktop's settings over a bus. Where there is no bus, or nobody on it who knows, nothing is told. Main
/// thread only; nothing is waited for.
class LookSettings : public QObject {
    Q_OBJECT
public:
    /// `changed` gets each look that differs from the one before it, which at first is one without any wish.
    explicit LookSettings(std::function<void(const DesktopLook&)> changed);

    /// Asks for the settings and listens for their changes from now on; to be called once.
    void follow(const QDBusConnection& bus);

    const DesktopLook& look() const { return look_; }

    /// Whether a bus runs that can be connected to without starting one.
    static bool hasBus();

    /// The question for the settings that are read here.
    static QDBusMessage call();

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void read(const QDBusMessage& answer);
    void take(const QString& group, const QString& key, const QVariant& value);
    void tell();

    std::function<void(const DesktopLook&)> changed_;
    DesktopLook look_;
    DesktopLook told_;
    std::optional<bool> prefersReducedMotion_;
    std::optional<bool> hasAnimations_;
};

}  // namespace quorvel
