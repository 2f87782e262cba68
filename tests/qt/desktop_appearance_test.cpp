#include "qt/desktop_appearance.h"

#include <gmock/gmock.h>

#include <QDBusMessage>
#include <QDBusServer>
#include <QDBusVirtualObject>
#include <memory>
#include <optional>
#include <vector>

#include "qt/spin.h"

namespace veloran {
namespace {

using test::spinUntil;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr auto kPath = "/org/freedesktop/portal/desktop";
constexpr auto kInterface = "org.freedesktop.portal.Settings";
constexpr auto kGroup = "org.freedesktop.appearance";
constexpr auto kKey = "color-scheme";

/// A settings portal at the other end of a connection without a bus between.
class Portal final : public QDBusVirtualObject {
  public:
    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override {
        asked = true;
        const bool known = call.member() == "Read" && call.arguments().value(0) == kGroup &&
                           call.arguments().value(1) == kKey;
        if (!known || !answer) {
            return connection.send(call.createErrorReply(QDBusError::InvalidArgs, "not found"));
        }
        return connection.send(call.createReply(QVariant::fromValue(QDBusVariant(*answer))));
    }

    std::optional<QVariant> answer;
    bool asked = false;
};

class DesktopAppearanceTest : public ::testing::Test {
  protected:
    DesktopAppearanceTest() {
        server.setAnonymousAuthenticationAllowed(true);
        QObject::connect(&server, &QDBusServer::newConnection, &server,
                         [this](QDBusConnection connection) {
                             connection.registerVirtualObject(kPath, &portal);
                             desk = std::make_unique<QDBusConnection>(connection);
                         });
    }
    ~DesktopAppearanceTest() override {
        appearance.reset();
        QDBusConnection::disconnectFromPeer("desk");
    }

    void ask(std::optional<QVariant> answer) {
        portal.answer = std::move(answer);
        const auto bus = QDBusConnection::connectToPeer(server.address(), "desk");
        ASSERT_TRUE(spinUntil([&] { return desk && bus.isConnected(); }));
        appearance = std::make_unique<DesktopAppearance>(bus);
        QObject::connect(appearance.get(), &DesktopAppearance::changed, &portal,
                         [this](bool dark) { told.push_back(dark); });
        ASSERT_TRUE(spinUntil([&] { return portal.asked; }));
    }
    void change(const QVariant& value, const QString& key = kKey) {
        auto signal = QDBusMessage::createSignal(kPath, kInterface, "SettingChanged");
        signal << QString(kGroup) << key << QVariant::fromValue(QDBusVariant(value));
        desk->send(signal);
    }

    QDBusServer server;
    Portal portal;
    std::unique_ptr<QDBusConnection> desk;
    std::unique_ptr<DesktopAppearance> appearance;
    std::vector<bool> told;
};

TEST_F(DesktopAppearanceTest, ADarkDesktopIsToldAndItsChangesToo) {
    ask(1U);
    ASSERT_TRUE(spinUntil([&] { return told.size() == 1; }));
    change(2U);
    change(0U);
    change(1U, "contrast");
    change("dark");
    change(1U);
    ASSERT_TRUE(spinUntil([&] { return told.size() == 3; }));
    EXPECT_THAT(told, ElementsAre(true, false, true));
}

TEST_F(DesktopAppearanceTest, OlderPortalsWrapTheValueTwice) {
    ask(QVariant::fromValue(QDBusVariant(2U)));
    ASSERT_TRUE(spinUntil([&] { return !told.empty(); }));
    EXPECT_THAT(told, ElementsAre(false));
}

TEST_F(DesktopAppearanceTest, ADesktopWithoutPreferenceIsToldOnceItHasOne) {
    ask(0U);
    test::spinFor(30);
    EXPECT_THAT(told, IsEmpty());
    change(1U);
    change(0U);
    ASSERT_TRUE(spinUntil([&] { return told.size() == 2; }));
    EXPECT_THAT(told, ElementsAre(true, false));
}

TEST_F(DesktopAppearanceTest, APortalWithoutTheSettingTellsNothing) {
    ask(std::nullopt);
    test::spinFor(30);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(DesktopAppearanceTest, WithoutABusNothingIsTold) {
    const DesktopAppearance alone(QDBusConnection("no such connection"));
    QObject::connect(&alone, &DesktopAppearance::changed, &portal,
                     [this](bool dark) { told.push_back(dark); });
    test::spinFor(20);
    EXPECT_THAT(told, IsEmpty());
}

}  // namespace
}  // namespace veloran
