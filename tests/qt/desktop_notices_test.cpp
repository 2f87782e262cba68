#include "qt/desktop_notices.h"

#include <gmock/gmock.h>

#include <memory>

#include "desktop/fake_desktop.h"
#include "desktop/private_bus.h"
#include "qt/spin.h"

namespace veloran {
namespace {

using test::spinUntil;
using ::testing::ElementsAre;

class DesktopNoticesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(bus.isUp()) << "dbus-daemon is missing";
        service = std::make_unique<test::FakeNotifications>(bus.connect("service"));
        notices = std::make_unique<DesktopNotices>(bus.connect("program"));
    }
    void TearDown() override { notices.reset(); }
    void show(const std::string& title) {
        const auto before = service->notices.size();
        notices->show({title, "text"}, [this] { ++chosen; });
        ASSERT_TRUE(
            spinUntil([&] { return service->notices.size() > before && notices->isShown(); }));
    }

    test::PrivateBus bus;
    std::unique_ptr<test::FakeNotifications> service;
    std::unique_ptr<DesktopNotices> notices;
    int chosen = 0;
};

TEST_F(DesktopNoticesTest, ANoticeIsShownAndTellsOfAClick) {
    service->serve();
    show("title");
    ASSERT_EQ(service->notices.size(), 1U);
    const auto& notice = service->notices.front();
    EXPECT_EQ(notice.title, "title");
    EXPECT_EQ(notice.text, "text");
    EXPECT_TRUE(notice.actions.contains("default"));
    service->choose(notice.id + 1);
    service->choose(notice.id, "other");
    service->choose(notice.id);
    ASSERT_TRUE(spinUntil([&] { return chosen > 0; }));
    EXPECT_EQ(chosen, 1) << "other programs' notices are theirs";
}

TEST_F(DesktopNoticesTest, ALaterOneTakesThePlaceOfTheEarlier) {
    service->serve();
    show("first");
    show("second");
    EXPECT_EQ(service->notices.back().replaces, service->notices.front().id);
}

TEST_F(DesktopNoticesTest, WithdrawingTakesItAway) {
    service->serve();
    show("title");
    notices->withdraw();
    ASSERT_TRUE(spinUntil([&] { return !service->closed.empty(); }));
    EXPECT_THAT(service->closed, ElementsAre(service->notices.front().id));
    service->choose(service->notices.front().id);
    test::spinFor(50);
    EXPECT_EQ(chosen, 0);
    notices->withdraw();
    test::spinFor(50);
    EXPECT_EQ(service->closed.size(), 1U);
}

TEST_F(DesktopNoticesTest, WithdrawnBeforeItsNumberIsKnownItIsTakenAwayAllTheSame) {
    service->serve();
    notices->show({"title", "text"}, [this] { ++chosen; });
    notices->withdraw();
    ASSERT_TRUE(spinUntil([&] { return !service->closed.empty(); }));
    EXPECT_THAT(service->closed, ElementsAre(service->notices.front().id));
}

TEST_F(DesktopNoticesTest, WithoutAServiceOrABusNothingHappens) {
    notices->show({"title", "text"}, [] {});
    test::spinFor(50);
    notices->withdraw();
    DesktopNotices deaf(QDBusConnection("no such bus"));
    deaf.show({"title", "text"}, [] {});
    deaf.withdraw();
}

}  // namespace
}  // namespace veloran
