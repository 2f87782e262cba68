#include "ui/commands.h"

#include "ui_fixture.h"

namespace veloran::test {
namespace {

class CommandsTest : public UiFixture {};

TEST_F(CommandsTest, ZoomStopsAtItsLimits) {
    state->timelineHoursVisible = 3;
    zoomIn(*state);
    zoomIn(*state);
    EXPECT_EQ(state->timelineHoursVisible.get(), 2);
    state->timelineHoursVisible = 47;
    zoomOut(*state);
    zoomOut(*state);
    EXPECT_EQ(state->timelineHoursVisible.get(), 48);
    EXPECT_EQ(machine.settings.value("timelineHours"), SettingValue(48.0));
}

TEST_F(CommandsTest, ScrollToNowHasAQuarterInThePast) {
    state->timelineHoursVisible = 8;
    scrollToNow(*state);
    EXPECT_EQ(state->timelineStartTime.get(), start - 2 * 3600);
}

TEST_F(CommandsTest, SelectingTheSelectedPassAgainIsSafe) {
    addSatellite("RS-44", 44909, {passAt(start)}, {channel("down", 435.64e6)});
    selectPass(*state, state->satellites->front(), state->satellites->front()->passes->front());
    const UniqueId before = (*state->selectedPass)->id;
    selectPass(*state, (*state->selectedPass)->satellite, (*state->selectedPass)->pass);
    EXPECT_EQ((*state->selectedPass)->satName(), "RS-44");
    EXPECT_NE((*state->selectedPass)->id, before);
}

TEST_F(CommandsTest, SubscriptionTakesOrDropsTheGroupAndLoads) {
    state->subscribedCategories = std::set<std::string>{"amateur"};
    subscribe(*state, "weather", true);
    EXPECT_EQ(state->subscribedCategories.get(), (std::set<std::string>{"amateur", "weather"}));
    EXPECT_TRUE(state->isLoadingTLEs);
    machine.loop.runPosted();
    ASSERT_FALSE(state->isLoadingTLEs);
    subscribe(*state, "amateur", false);
    EXPECT_EQ(state->subscribedCategories.get(), std::set<std::string>{"weather"});
    EXPECT_TRUE(state->isLoadingTLEs);
}

TEST_F(CommandsTest, DeselectAllLeavesNothingBehind) {
    const auto satellite = addSatellite("RS-44", 44909, {});
    state->selectedSatelliteIds = std::set<std::int64_t>{44909, 7};
    deselectAll(*state);
    EXPECT_FALSE(satellite->isSelected);
    EXPECT_TRUE(state->selectedSatelliteIds->empty()) << "no group has 7 any more";
}

}  // namespace
}  // namespace veloran::test
