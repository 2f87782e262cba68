#include "qt/desktop_sleep.h"

#include <gmock/gmock.h>

#include <QDBusConnectionInterface>
#include <memory>

#include "desktop/fake_desktop.h"
#include "desktop/private_bus.h"
#include "qt/spin.h"

namespace veloran {
namespace {

using test::spinUntil;
using ::testing::ElementsAre;

/// Session and system bus are one here; the services tell them apart.
class DesktopSleepTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(bus.isUp()) << "dbus-daemon is missing";
        portal = std::make_unique<test::FakePortal>(bus.connect("portal"));
        logind = std::make_unique<test::FakeLogind>(bus.connect("logind"));
        sleep = std::make_unique<DesktopSleep>(bus.connect("session"), bus.connect("system"));
    }
    void TearDown() override { sleep.reset(); }
    bool portalHolds(const QStringList& reasons) {
        return spinUntil(
            [&] { return portal->held == reasons && sleep->isKeptAwake() != reasons.isEmpty(); });
    }
    bool logindHolds(std::size_t call) {
        return spinUntil([&] { return logind->calls.size() > call && sleep->isKeptAwake(); }) &&
               logind->holds(call);
    }
    bool logindReleases(std::size_t call) {
        return spinUntil([&] { return !logind->holds(call); });
    }

    test::PrivateBus bus;
    std::unique_ptr<test::FakePortal> portal;
    std::unique_ptr<test::FakeLogind> logind;
    std::unique_ptr<DesktopSleep> sleep;
};

TEST_F(DesktopSleepTest, ThePortalHoldsSleepOffWithTheReasonUntilItIsReleased) {
    portal->serve();
    logind->serve();
    sleep->keepAwake("Tracking RS-44 until 21:34");
    ASSERT_TRUE(portalHolds({"Tracking RS-44 until 21:34"}));
    EXPECT_THAT(portal->flags, ElementsAre(4U)) << "suspend, and nothing else";
    sleep->keepAwake("Tracking RS-44 until 21:34");
    sleep->keepAwake(std::nullopt);
    ASSERT_TRUE(portalHolds({}));
    EXPECT_EQ(portal->reasons.size(), 1) << "the same reason is told once";
    EXPECT_TRUE(logind->calls.empty());
}

TEST_F(DesktopSleepTest, AnotherReasonTakesThePlaceOfTheFirstWithoutAGap) {
    portal->serve();
    sleep->keepAwake("A");
    ASSERT_TRUE(portalHolds({"A"}));
    sleep->keepAwake("B");
    ASSERT_TRUE(portalHolds({"B"}));
    EXPECT_EQ(portal->heldBefore.back(), "A") << "still held when the next one was asked for";
}

TEST_F(DesktopSleepTest, AReasonThatWentBeforeTheAnswerHoldsNothing) {
    portal->serve();
    sleep->keepAwake("A");
    sleep->keepAwake(std::nullopt);
    sleep->keepAwake("B");
    ASSERT_TRUE(portalHolds({"B"}));
    EXPECT_THAT(portal->reasons, ElementsAre("A", "B"));
}

TEST_F(DesktopSleepTest, WithoutAPortalLogindHoldsItOff) {
    logind->serve();
    sleep->keepAwake("Tracking RS-44");
    ASSERT_TRUE(logindHolds(0));
    EXPECT_THAT(logind->calls[0], ElementsAre("sleep", "Veloran", "Tracking RS-44", "block"));
    sleep->keepAwake("Waiting");
    ASSERT_TRUE(logindHolds(1));
    EXPECT_TRUE(logindReleases(0));
    EXPECT_TRUE(logind->holds(1));
    sleep->keepAwake(std::nullopt);
    EXPECT_TRUE(logindReleases(1));
}

TEST_F(DesktopSleepTest, APortalThatRefusesLeavesItToLogind) {
    portal->serve();
    portal->refuses = true;
    logind->serve();
    sleep->keepAwake("A");
    EXPECT_TRUE(logindHolds(0));
}

TEST_F(DesktopSleepTest, APortalWithNobodyBehindItLeavesItToLogind) {
    portal->serve();
    logind->serve();
    sleep->keepAwake("A");
    ASSERT_TRUE(portalHolds({"A"}));
    portal->respond(0);
    test::spinFor(50);
    EXPECT_TRUE(logind->calls.empty()) << "all is well";
    portal->respond(2);
    EXPECT_TRUE(logindHolds(0));
}

TEST_F(DesktopSleepTest, APortalThatEndsIsReplaced) {
    portal->serve();
    logind->serve();
    sleep->keepAwake("A");
    ASSERT_TRUE(portalHolds({"A"}));
    portal->vanish();
    EXPECT_TRUE(logindHolds(0));
}

TEST_F(DesktopSleepTest, WhereNobodyAnswersNothingHappens) {
    sleep->keepAwake("A");
    test::spinFor(50);
    sleep->keepAwake(std::nullopt);
    const DesktopSleep alone(QDBusConnection("no such bus"), QDBusConnection("nor this"));
    DesktopSleep deaf(QDBusConnection("no such bus"), QDBusConnection("nor this"));
    deaf.keepAwake("A");
    deaf.keepAwake(std::nullopt);
}

TEST_F(DesktopSleepTest, ItsEndReleasesWhatItHolds) {
    portal->serve();
    sleep->keepAwake("A");
    ASSERT_TRUE(portalHolds({"A"}));
    sleep.reset();
    EXPECT_TRUE(spinUntil([&] { return portal->held.isEmpty(); }));
}

TEST_F(DesktopSleepTest, TheEndOfASleepIsToldAndItsBeginIsNot) {
    logind->serve();
    int wakes = 0;
    QObject::connect(sleep.get(), &DesktopSleep::resumed, [&] { ++wakes; });
    // An answer of the bus: it has heard of the program's interest before.
    QDBusConnection("system").interface()->isServiceRegistered("org.freedesktop.login1");
    logind->prepareForSleep(true);
    logind->prepareForSleep(false);
    ASSERT_TRUE(spinUntil([&] { return wakes > 0; }));
    test::spinFor(50);
    EXPECT_EQ(wakes, 1);
}

}  // namespace
}  // namespace veloran
