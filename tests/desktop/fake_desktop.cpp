#include "desktop/fake_desktop.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <array>
#include <utility>

namespace veloran::test {

namespace {

constexpr auto kPortalPath = "/org/freedesktop/portal/desktop";
constexpr auto kLogindPath = "/org/freedesktop/login1";
constexpr auto kNotificationsPath = "/org/freedesktop/Notifications";
constexpr auto kWatcherPath = "/StatusNotifierWatcher";
constexpr auto kWatcher = "org.kde.StatusNotifierWatcher";
constexpr auto kItemPath = "/StatusNotifierItem";
constexpr auto kMenuPath = "/MenuBar";
constexpr auto kMenu = "com.canonical.dbusmenu";

QDBusMessage refusal(const QDBusMessage& call) {
    return call.createErrorReply(QDBusError::UnknownMethod, "no such method");
}

}  // namespace

// ---- FakeService

FakeService::FakeService(QDBusConnection bus, QString name, QString path)
    : bus_(std::move(bus)), name_(std::move(name)), path_(std::move(path)) {}

FakeService::~FakeService() {
    vanish();
}

void FakeService::serve() {
    bus_.registerVirtualObject(path_, this, QDBusConnection::SubPath);
    bus_.registerService(name_);
}

void FakeService::vanish() {
    bus_.unregisterService(name_);
    bus_.unregisterObject(path_, QDBusConnection::UnregisterTree);
}

bool FakeService::handleMessage(const QDBusMessage& call, const QDBusConnection& connection) {
    // Left to Qt, which asks introspect().
    if (call.interface() == "org.freedesktop.DBus.Introspectable") return false;
    return connection.send(answer(call));
}

// ---- FakePortal

FakePortal::FakePortal(QDBusConnection bus)
    : FakeService(std::move(bus), "org.freedesktop.portal.Desktop", kPortalPath) {}

QDBusMessage FakePortal::answer(const QDBusMessage& call) {
    if (call.member() == "Close") {
        const auto place = handles_.indexOf(call.path());
        if (place >= 0) {
            handles_.removeAt(place);
            held.removeAt(place);
        }
        return call.createReply();
    }
    if (call.member() != "Inhibit" || call.signature() != "sua{sv}" || refuses) {
        return refusal(call);
    }
    const auto options = qdbus_cast<QVariantMap>(call.arguments().at(2));
    flags.push_back(call.arguments().at(1).toUInt());
    reasons << options.value("reason").toString();
    heldBefore << held.join(", ");
    held << reasons.back();
    latest_ = QString("%1/request/test/%2").arg(kPortalPath).arg(reasons.size());
    handles_ << latest_;
    return call.createReply(QVariant::fromValue(QDBusObjectPath(latest_)));
}

void FakePortal::respond(uint code) {
    auto signal = QDBusMessage::createSignal(latest_, "org.freedesktop.portal.Request", "Response");
    bus_.send(signal << code << QVariantMap());
}

// ---- FakeLogind

FakeLogind::FakeLogind(QDBusConnection bus)
    : FakeService(std::move(bus), "org.freedesktop.login1", kLogindPath) {}

FakeLogind::~FakeLogind() {
    for (const int end : readEnds_) close(end);
}

QDBusMessage FakeLogind::answer(const QDBusMessage& call) {
    std::array<int, 2> ends{};
    if (call.member() != "Inhibit" || call.signature() != "ssss" ||
        pipe2(ends.data(), O_CLOEXEC) != 0) {
        return refusal(call);
    }
    calls.push_back({});
    for (const QVariant& word : call.arguments()) calls.back() << word.toString();
    readEnds_.push_back(ends[0]);
    const QDBusUnixFileDescriptor lock(ends[1]);  // a copy
    close(ends[1]);
    return call.createReply(QVariant::fromValue(lock));
}

bool FakeLogind::holds(std::size_t call) const {
    pollfd end{readEnds_.at(call), POLLIN, 0};
    poll(&end, 1, 0);
    return (end.revents & POLLHUP) == 0;
}

void FakeLogind::prepareForSleep(bool begins) {
    bus_.send(
        QDBusMessage::createSignal(kLogindPath, "org.freedesktop.login1.Manager", "PrepareForSleep")
        << begins);
}

// ---- FakeNotifications

FakeNotifications::FakeNotifications(QDBusConnection bus)
    : FakeService(std::move(bus), "org.freedesktop.Notifications", kNotificationsPath) {}

QDBusMessage FakeNotifications::answer(const QDBusMessage& call) {
    const auto words = call.arguments();
    if (call.member() == "CloseNotification" && call.signature() == "u") {
        closed.push_back(words.at(0).toUInt());
        return call.createReply();
    }
    if (call.member() != "Notify" || call.signature() != "susssasa{sv}i") return refusal(call);
    const uint replaces = words.at(1).toUInt();
    const uint id = replaces != 0 ? replaces : 41 + static_cast<uint>(notices.size());
    notices.push_back(
        {id, replaces, words.at(3).toString(), words.at(4).toString(), words.at(5).toStringList()});
    return call.createReply(id);
}

void FakeNotifications::choose(uint id, const QString& action) {
    bus_.send(QDBusMessage::createSignal(kNotificationsPath, "org.freedesktop.Notifications",
                                         "ActionInvoked")
              << id << action);
}

// ---- FakeTray

FakeTray::FakeTray(QDBusConnection bus) : FakeService(std::move(bus), kWatcher, kWatcherPath) {}

/// Programs look for the property before they ask for it.
QString FakeTray::introspect(const QString&) const {
    return R"(<interface name="org.kde.StatusNotifierWatcher">
        <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
        <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
        </interface>)";
}

QDBusMessage FakeTray::answer(const QDBusMessage& call) {
    if (call.member() == "RegisterStatusNotifierItem") {
        const QString name = call.arguments().value(0).toString();
        symbol_ = name.startsWith('/') ? call.service() : name;
        return call.createReply();
    }
    if (call.interface() == "org.freedesktop.DBus.Properties" && call.member() == "Get") {
        return call.createReply(QVariant::fromValue(QDBusVariant(true)));
    }
    return refusal(call);
}

QString FakeTray::symbol() const {
    return bus_.interface()->isServiceRegistered(symbol_) ? symbol_ : QString();
}

std::vector<FakeTray::Entry> FakeTray::menu() {
    auto call = QDBusMessage::createMethodCall(symbol_, kMenuPath, kMenu, "GetLayout");
    call << 0 << -1 << QStringList();
    const QDBusMessage reply = bus_.call(call, QDBus::BlockWithGui);
    std::vector<Entry> entries;
    if (reply.arguments().size() != 2) return entries;
    const auto layout = reply.arguments().at(1).value<QDBusArgument>();  // (ia{sv}av)
    int root = 0;
    QVariantMap properties;
    layout.beginStructure();
    layout >> root >> properties;
    layout.beginArray();
    while (!layout.atEnd()) {
        QDBusVariant child;
        layout >> child;
        const auto item = child.variant().value<QDBusArgument>();
        Entry entry;
        QVariantMap what;
        item.beginStructure();
        item >> entry.id >> what;
        item.endStructure();
        if (what.value("type") == "separator") continue;
        entry.text = what.value("label").toString();
        entry.enabled = what.value("enabled", true).toBool();
        entries.push_back(entry);
    }
    layout.endArray();
    layout.endStructure();
    return entries;
}

QStringList FakeTray::menuTexts() {
    QStringList texts;
    for (const auto& entry : menu()) texts << entry.text;
    return texts;
}

bool FakeTray::choose(const QString& text) {
    for (const auto& entry : menu()) {
        if (!entry.text.startsWith(text) || !entry.enabled) continue;
        auto call = QDBusMessage::createMethodCall(symbol_, kMenuPath, kMenu, "Event");
        call << entry.id << "clicked" << QVariant::fromValue(QDBusVariant(0)) << uint{0};
        return bus_.send(call);
    }
    return false;
}

void FakeTray::click() {
    bus_.send(
        QDBusMessage::createMethodCall(symbol_, kItemPath, "org.kde.StatusNotifierItem", "Activate")
        << 0 << 0);
}

}  // namespace veloran::test
