#include "qt/desktop_notices.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>
#include <utility>

namespace veloran {

namespace {

// https://specifications.freedesktop.org/notification-spec
constexpr auto kService = "org.freedesktop.Notifications";
constexpr auto kPath = "/org/freedesktop/Notifications";
constexpr auto kInterface = "org.freedesktop.Notifications";
constexpr auto kClicked = "default";
constexpr int kDesktopDecidesHowLong = -1;

}  // namespace

DesktopNotices::DesktopNotices(QDBusConnection bus, QObject* parent)
    : QObject(parent), bus_(std::move(bus)) {
    // From any sender: to ask the bus who owns the name would be to wait for it.
    bus_.connect(QString(), kPath, kInterface, "ActionInvoked", this,
                 SLOT(onActionInvoked(uint, QString)));
}

void DesktopNotices::show(const Notice& notice, std::function<void()> onChosen) {
    if (!bus_.isConnected()) return;
    onChosen_ = std::move(onChosen);
    auto call = QDBusMessage::createMethodCall(kService, kPath, kInterface, "Notify");
    call << "Veloran" << shown_ << "veloran" << QString::fromStdString(notice.title)
         << QString::fromStdString(notice.text) << QStringList{kClicked, tr("Show")}
         << QVariantMap{{"desktop-entry", "veloran"}} << kDesktopDecidesHowLong;
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, watcher, request = ++requests_] {
                watcher->deleteLater();
                const QDBusPendingReply<uint> reply = *watcher;
                if (!reply.isValid()) return;
                // Withdrawn, or followed by another, before its number was known.
                if (request != requests_) return close(reply.value());
                shown_ = reply.value();
            });
}

void DesktopNotices::withdraw() {
    ++requests_;
    onChosen_ = nullptr;
    if (shown_ != 0) close(std::exchange(shown_, 0));
}

void DesktopNotices::close(uint id) {
    bus_.send(QDBusMessage::createMethodCall(kService, kPath, kInterface, "CloseNotification")
              << id);
}

void DesktopNotices::onActionInvoked(uint id, const QString& action) {
    if (id != shown_ || action != kClicked) return;
    const auto chosen = onChosen_;
    if (chosen) chosen();
}

}  // namespace veloran
