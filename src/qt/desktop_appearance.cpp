#include "qt/desktop_appearance.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

namespace veloran {

namespace {

// https://flatpak.github.io/xdg-desktop-portal, interface org.freedesktop.portal.Settings
constexpr auto kService = "org.freedesktop.portal.Desktop";
constexpr auto kPath = "/org/freedesktop/portal/desktop";
constexpr auto kInterface = "org.freedesktop.portal.Settings";
constexpr auto kGroup = "org.freedesktop.appearance";
constexpr auto kKey = "color-scheme";
constexpr uint kNoPreference = 0;
constexpr uint kDark = 1;

/// Portals wrap the value in one variant or in two, depending on their age.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
    return value;
}

}  // namespace

DesktopAppearance::DesktopAppearance(QDBusConnection bus, QObject* parent)
    : QObject(parent), bus_(std::move(bus)) {
    if (!bus_.isConnected()) return;
    qRegisterMetaType<QDBusVariant>();  // by name, or the slot is not found
    // From any sender: path and interface name the portal, also where no bus names the sender.
    bus_.connect(QString(), kPath, kInterface, "SettingChanged", this,
                 SLOT(onSettingChanged(QString, QString, QDBusVariant)));
    ask();
}

void DesktopAppearance::ask() {
    auto call = QDBusMessage::createMethodCall(kService, kPath, kInterface, "Read");
    call << QString(kGroup) << QString(kKey);
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid()) learn(QVariant::fromValue(reply.value()));
    });
}

void DesktopAppearance::onSettingChanged(const QString& group, const QString& key,
                                         const QDBusVariant& value) {
    if (group == kGroup && key == kKey) learn(value.variant());
}

void DesktopAppearance::learn(const QVariant& value) {
    bool isNumber = false;
    const uint preference = unwrapped(value).toUInt(&isNumber);
    if (!isNumber || preference == told_) return;
    const bool isNews = told_ == kNoPreference || (told_ == kDark) != (preference == kDark);
    told_ = preference;
    if (isNews) Q_EMIT changed(preference == kDark);
}

}  // namespace veloran
