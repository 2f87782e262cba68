#include "ui/settings/settings_form.h"

#include <gtest/gtest.h>

#include "support/core_world.h"

namespace veloran::test {
namespace {

class SettingsForm : public ::testing::Test {
  protected:
    SettingsForm() { world.start(); }

    AppState& app() { return *world.app; }
    /// Applies the texts of the present state, but for what `edit` changes.
    template <class Edit>
    void applyEdited(Edit edit) {
        auto texts = settingsTexts(app());
        edit(texts);
        applySettings(app(), texts);
    }

    CoreWorld world;
};

TEST_F(SettingsForm, FieldsShowTheState) {
    app().obsLatitude = 51.5;
    app().obsLongitude = -0.1234567;
    app().obsAltitude = 12.7;
    app().rigHost = std::string("radio");
    app().rigPort = 14532;
    app().dopplerUpdateHz = 20.5;
    EXPECT_EQ(settingsTexts(app()), (SettingsTexts{.latitude = "51.500000",
                                                   .longitude = "-0.123457",
                                                   .altitude = "13",
                                                   .host = "radio",
                                                   .port = "14532",
                                                   .updateRate = "20"}));
}

TEST_F(SettingsForm, LatitudeBeyondThePoleIsTakenAsItStands) {
    applyEdited([](auto& texts) { texts.latitude = "200"; });
    EXPECT_EQ(app().obsLatitude, 200);
    EXPECT_EQ(app().gridLocator.get(), toMaidenhead(200, -84.34));
}

TEST_F(SettingsForm, PositionThatHasNoLocatorKeepsTheOldOne) {
    for (const char* bad : {"-90.5", "-1e300", "1e300", "2e9", "inf", "nan", "", " 5", "5,5"}) {
        applyEdited([bad](auto& texts) { texts.latitude = bad; });
        EXPECT_EQ(app().obsLatitude, 33.87) << bad;
    }
    for (const char* bad : {"-180.5", "1e300", "-inf", "W84"}) {
        applyEdited([bad](auto& texts) { texts.longitude = bad; });
        EXPECT_EQ(app().obsLongitude, -84.34) << bad;
    }
    EXPECT_EQ(app().gridLocator->substr(0, 4), "EM73");
}

TEST_F(SettingsForm, SouthPoleOnTheDateLineIsAPosition) {
    applyEdited([](auto& texts) {
        texts.latitude = "-90";
        texts.longitude = "-180";
    });
    EXPECT_EQ(app().gridLocator.get(), "AA00aa");
}

TEST_F(SettingsForm, AltitudeThatIsNoMeasurementKeepsTheOldOne) {
    for (const char* bad : {"1e300", "-1e10", "high"}) {
        applyEdited([bad](auto& texts) { texts.altitude = bad; });
        EXPECT_EQ(app().obsAltitude, 300) << bad;
    }
}

TEST_F(SettingsForm, WhatIsTakenComesBackAtTheNextStart) {
    applyEdited([](auto& texts) {
        texts = {.latitude = "1e9",
                 .longitude = "400",
                 .altitude = "-1e9",
                 .host = "",
                 .port = "65535",
                 .updateRate = "1e300"};
    });
    world.start();
    EXPECT_EQ(app().obsLatitude, 1e9);
    EXPECT_EQ(app().obsLongitude, 400);
    EXPECT_EQ(app().obsAltitude, -1e9);
    EXPECT_EQ(app().rigHost.get(), "");
    EXPECT_EQ(app().rigPort, 65535);
    EXPECT_EQ(app().dopplerUpdateHz, 50);
}

TEST_F(SettingsForm, PortThatIsNoneKeepsTheOldOne) {
    for (const char* bad : {"-1", "65536", "4532.5", "", "99999999999999999999"}) {
        applyEdited([bad](auto& texts) { texts.port = bad; });
        EXPECT_EQ(app().rigPort, 4532) << bad;
    }
}

TEST_F(SettingsForm, LocatorThatIsNoneHasNoPosition) {
    for (const char* bad : {"", "EM7", "EMx3", "7373", "E", "EM73 1", "\u00c9M73",
                            "EM73\u00e9\u00e9", "__12", "[M73", "E^73", "EM73_a", "EM73a{"}) {
        EXPECT_FALSE(readLocator(bad)) << bad;
    }
    const auto square = readLocator(" em73 ");
    ASSERT_TRUE(square);
    EXPECT_EQ(square->lat, 33.5);
    EXPECT_EQ(square->lon, -85);
}

TEST_F(SettingsForm, FieldsAreAppliedInOrderAndPassesSearchedLast) {
    world.machine.settings.writes.clear();
    applyEdited([](auto&) {});
    EXPECT_EQ(world.machine.settings.writes,
              (std::vector<std::string>{"obsLat", "obsLon", "obsAlt", "rigHost", "rigPort",
                                        "dopplerUpdateHz"}));
    EXPECT_EQ(app().statusMessage.get(), "Computing passes for 0 satellites...");
}

TEST_F(SettingsForm, UnreadableFieldIsNotStoredAnew) {
    world.machine.settings.writes.clear();
    applyEdited([](auto& texts) {
        texts = SettingsTexts{};
        texts.host = "localhost";
    });
    EXPECT_EQ(world.machine.settings.writes, std::vector<std::string>{"rigHost"});
}

TEST_F(SettingsForm, LocatorFollowsThePositionBeforeTheHostIsStored) {
    std::string locatorAtHost;
    app().rigHost.alsoAfterChange(
        [&](const std::string&) { locatorAtHost = app().gridLocator.get(); });
    applyEdited([](auto& texts) {
        texts.latitude = "0";
        texts.longitude = "0";
    });
    EXPECT_EQ(locatorAtHost, "JJ00aa");
}

}  // namespace
}  // namespace veloran::test
