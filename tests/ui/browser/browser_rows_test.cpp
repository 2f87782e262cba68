#include "ui/browser/browser_rows.h"

#include <gtest/gtest.h>

#include <limits>

#include "ui/browser/browser_texts.h"

namespace veloran::test {
namespace {

const Instant kNow{817000000.0};

TLEData elementsOf(double ageDays) {
    TLEData tle;
    tle.epochYear = 2026;
    tle.epochDays = 1;
    tle.epochDays += *tle.ageDays(kNow) - ageDays;
    return tle;
}

TEST(BrowserTexts, TellCountsOnlyOfSome) {
    EXPECT_EQ(countInBrackets(0), "(0)");
    EXPECT_EQ(selectedText(0), "");
    EXPECT_EQ(selectedText(3), "· 3 selected");
    EXPECT_EQ(channelCountText(0), "");
    EXPECT_EQ(channelCountText(12), "12tx");
    EXPECT_EQ(elementAgeText("2h ago"), "TLE 2h ago");
}

TEST(BrowserTexts, SwitchTellsWhatItWillDo) {
    EXPECT_EQ(subscriptionHelp(true), "Unsubscribe (stop downloading)");
    EXPECT_EQ(subscriptionHelp(false), "Subscribe (download TLEs)");
}

TEST(BrowserSectionLook, OnlyGroupsOfTheServiceHaveASwitch) {
    for (const char* key : {"celestial", "custom", "uncategorized"}) {
        EXPECT_EQ(sectionLook({key, "", {}}, 0, {key}).isSubscribed, std::nullopt) << key;
    }
    EXPECT_EQ(sectionLook({"amateur", "", {}}, 0, {"amateur"}).isSubscribed, true);
    EXPECT_EQ(sectionLook({"weather", "", {}}, 0, {"amateur"}).isSubscribed, false);
}

TEST(BrowserSectionLook, OnlyImportedSetsCanBeCleared) {
    for (const char* key : {"celestial", "amateur", "uncategorized"}) {
        EXPECT_FALSE(sectionLook({key, "", {}}, 0, {}).canClear) << key;
    }
    EXPECT_TRUE(sectionLook({"custom", "", {}}, 0, {}).canClear);
}

TEST(BrowserSectionLook, IsSpoken) {
    const SectionLook look{
        .label = "Amateur", .satellites = 1, .selected = 0, .isSubscribed = true};
    EXPECT_EQ(spokenSection(look), "Amateur, 1 satellite, subscribed");
    EXPECT_EQ(
        spokenSection({.label = "Weather", .satellites = 12, .selected = 3, .isSubscribed = false}),
        "Weather, 12 satellites, 3 selected, not subscribed");
    EXPECT_EQ(spokenSection({.label = "Custom TLEs", .satellites = 2}),
              "Custom TLEs, 2 satellites");
}

TEST(BrowserRowLook, LeavesOutWhatIsUnknown) {
    const SatelliteRowLook look = satelliteRowLook(Satellite("Sun", -1), kNow);
    EXPECT_EQ(look.number, "-1");
    EXPECT_EQ(look.age, "");
    EXPECT_EQ(look.channels, 0U);
    EXPECT_EQ(look.frequency, "");
    EXPECT_EQ(spokenSatelliteRow(look), "Sun, not tracked, NORAD -1");
}

TEST(BrowserRowLook, ShowsTheFirstFrequencyAndTheCountOfChannels) {
    Satellite satellite("AO-7", 7530);
    satellite.tle = elementsOf(2);
    Transmitter down, beacon;
    down.freq = 145.95e6;
    beacon.freq = 435.1e6;
    satellite.transmitters = {down, beacon};
    satellite.isSelected = true;
    const SatelliteRowLook look = satelliteRowLook(satellite, kNow);
    EXPECT_EQ(look.channels, 2U);
    EXPECT_EQ(look.frequency, "145.950 MHz");
    EXPECT_EQ(spokenSatelliteRow(look),
              "AO-7, tracked, NORAD 7530, elements 2.0d old, 2 transmitters, 145.950 MHz");
}

TEST(BrowserRowLook, AgeIsGreenBelowAWeekAndYellowBelowTwo) {
    const auto ink = [](double days) {
        Satellite satellite("AO-7", 7530);
        satellite.tle = elementsOf(days);
        return satelliteRowLook(satellite, kNow).ageInk;
    };
    EXPECT_EQ(ink(6.99), (Tint{Ink::green, 0.8}));
    EXPECT_EQ(ink(7.01), (Tint{Ink::yellow, 0.8}));
    EXPECT_EQ(ink(13.99), (Tint{Ink::yellow, 0.8}));
    EXPECT_EQ(ink(14.01), (Tint{Ink::red, 0.8}));
}

TEST(BrowserRowLook, AgeOfAnUnreadableEpochIsAQuestionInRed) {
    Satellite satellite("AO-7", 7530);
    satellite.tle = TLEData{};
    satellite.tle->epochDays = std::numeric_limits<double>::quiet_NaN();
    const SatelliteRowLook look = satelliteRowLook(satellite, kNow);
    EXPECT_EQ(look.age, "?");
    EXPECT_EQ(look.ageInk, (Tint{Ink::red, 0.8}));
}

}  // namespace
}  // namespace veloran::test
