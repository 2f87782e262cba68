#include "qt/desktop_sleep.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QVariantMap>
#include <utility>

namespace veloran {

namespace {

// https://flatpak.github.io/xdg-desktop-portal, interfaces Inhibit and Request
constexpr auto kPortal = "org.freedesktop.portal.Desktop";
constexpr auto kPortalPath = "/org/freedesktop/portal/desktop";
constexpr auto kPortalInhibit = "org.freedesktop.portal.Inhibit";
constexpr auto kRequest = "org.freedesktop.portal.Request";
constexpr uint kSuspend = 4;
constexpr uint kAccepted = 0;

// https://www.freedesktop.org/software/systemd/man/latest/org.freedesktop.login1.html
constexpr auto kLogind = "org.freedesktop.login1";
constexpr auto kLogindPath = "/org/freedesktop/login1";
constexpr auto kLogindManager = "org.freedesktop.login1.Manager";

template <class Then>
void onReply(const QDBusPendingCall& call, QObject* owner, Then then) {
    auto* watcher = new QDBusPendingCallWatcher(call, owner);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, owner,
                     [watcher, then = std::move(then)] {
                         watcher->deleteLater();
                         then(*watcher);
                     });
}

void closeRequest(const QDBusConnection& bus, const QString& handle) {
    bus.send(QDBusMessage::createMethodCall(kPortal, handle, kRequest, "Close"));
}

}  // namespace

/// One asking, and what it was given. Lets go of it at its end.
struct DesktopSleep::Hold {
    explicit Hold(QDBusConnection session) : bus(std::move(session)) {}
    ~Hold() {
        if (!portalHandle.isEmpty()) closeRequest(bus, portalHandle);
    }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

    QDBusConnection bus;
    QString why;
    QString portalHandle;              // empty unless the portal holds
    QDBusUnixFileDescriptor lockFile;  // logind's, until it is closed
};

DesktopSleep::DesktopSleep(QDBusConnection session, QDBusConnection system, QObject* parent)
    : QObject(parent),
      session_(std::move(session)),
      system_(std::move(system)),
      portal_(kPortal, session_, QDBusServiceWatcher::WatchForUnregistration) {
    // From any sender: to ask the bus who owns the name would be to wait for it.
    system_.connect(QString(), kLogindPath, kLogindManager, "PrepareForSleep", this,
                    SLOT(onPrepareForSleep(bool)));
    session_.connect(QString(), QString(), kRequest, "Response", this,
                     SLOT(onPortalResponse(QDBusMessage)));
    // A portal that ends takes with it what it held.
    connect(&portal_, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        if (!held_ || held_->portalHandle.isEmpty()) return;
        held_->portalHandle.clear();
        ask();
    });
}

DesktopSleep::~DesktopSleep() = default;

void DesktopSleep::onPrepareForSleep(bool begins) {
    if (!begins) Q_EMIT resumed();
}

void DesktopSleep::keepAwake(const std::optional<std::string>& why) {
    if (why == why_) return;
    why_ = why;
    if (why_) return ask();
    asking_.reset();
    held_.reset();
}

/// What is held for another reason stays until this is answered, so that there is no gap.
void DesktopSleep::ask() {
    asking_ = std::make_shared<Hold>(session_);
    asking_->why = QString::fromStdString(*why_);
    if (session_.isConnected()) {
        askPortal(asking_);
    } else {
        askLogind(asking_);
    }
}

void DesktopSleep::askPortal(const std::shared_ptr<Hold>& hold) {
    auto call = QDBusMessage::createMethodCall(kPortal, kPortalPath, kPortalInhibit, "Inhibit");
    call << QString() << kSuspend << QVariantMap{{"reason", hold->why}};
    onReply(session_.asyncCall(call), this,
            [this, weak = std::weak_ptr(hold)](const QDBusPendingCall& answer) {
                const QDBusPendingReply<QDBusObjectPath> reply = answer;
                const auto asked = weak.lock();
                if (!reply.isValid()) {
                    if (asked) askLogind(asked);
                    return;
                }
                const QString handle = reply.value().path();
                if (!asked) return closeRequest(session_, handle);
                asked->portalHandle = handle;
                granted(asked);
            });
}

/// A portal without anybody behind it takes the question, and says later that it came to nothing.
void DesktopSleep::onPortalResponse(const QDBusMessage& response) {
    if (!held_ || response.path() != held_->portalHandle) return;
    if (response.arguments().value(0).toUInt() == kAccepted) return;
    held_->portalHandle.clear();
    if (asking_) return;  // for another reason, whose answer is on its way
    asking_ = held_;
    askLogind(asking_);
}

void DesktopSleep::askLogind(const std::shared_ptr<Hold>& hold) {
    if (!system_.isConnected()) return;
    auto call = QDBusMessage::createMethodCall(kLogind, kLogindPath, kLogindManager, "Inhibit");
    call << "sleep"
         << "Veloran" << hold->why << "block";
    onReply(system_.asyncCall(call), this,
            [this, weak = std::weak_ptr(hold)](const QDBusPendingCall& answer) {
                const QDBusPendingReply<QDBusUnixFileDescriptor> reply = answer;
                const auto asked = weak.lock();
                if (!asked || !reply.isValid()) return;  // a descriptor nobody takes is closed
                asked->lockFile = reply.value();
                granted(asked);
            });
}

void DesktopSleep::granted(const std::shared_ptr<Hold>& hold) {
    held_ = hold;
    asking_.reset();
}

}  // namespace veloran
