#include "support/core_world.h"
#include "support/vectors.h"
#include "ui/settings/settings_form.h"

namespace veloran::test {
namespace {

using boost::json::object;

std::string textIn(const object& c, const char* member) {
    return std::string(c.at(member).as_string());
}

void assign(AppState& app, const object& old) {
    expectKnownMembers(
        old,
        {"obsLatitude", "obsLongitude", "obsAltitude", "rigHost", "rigPort", "dopplerUpdateHz"},
        "old");
    app.obsLatitude = number(old.at("obsLatitude"));
    app.obsLongitude = number(old.at("obsLongitude"));
    app.obsAltitude = number(old.at("obsAltitude"));
    app.rigHost = textIn(old, "rigHost");
    app.rigPort = old.at("rigPort").as_int64();
    app.dopplerUpdateHz = number(old.at("dopplerUpdateHz"));
}

void expectFields(const AppState& app, const object& expected) {
    expectKnownMembers(expected,
                       {"obsLatitude", "obsLongitude", "obsAltitude", "rigHost", "rigPort",
                        "dopplerUpdateHz", "gridLocator"},
                       "expected");
    EXPECT_EQ(app.obsLatitude, number(expected.at("obsLatitude")));
    EXPECT_EQ(app.obsLongitude, number(expected.at("obsLongitude")));
    EXPECT_EQ(app.obsAltitude, number(expected.at("obsAltitude")));
    EXPECT_EQ(app.rigHost.get(), textIn(expected, "rigHost"));
    EXPECT_EQ(app.rigPort, expected.at("rigPort").as_int64());
    EXPECT_EQ(app.dopplerUpdateHz, number(expected.at("dopplerUpdateHz")));
    EXPECT_EQ(app.gridLocator.get(), textIn(expected, "gridLocator"));
}

TEST(SettingsApplyVectors, TextsOfTheFormBecomeSettings) {
    const auto file = loadVectors("data/settings_apply.json");
    forEachCase(file, "settings_apply.json", "cases", [](const object& c) {
        expectKnownMembers(
            c, {"id", "note", "old", "lat", "lon", "alt", "host", "port", "rate", "expected"},
            "case");
        CoreWorld world;
        world.start();
        assign(*world.app, c.at("old").as_object());
        applySettings(*world.app, {.latitude = textIn(c, "lat"),
                                   .longitude = textIn(c, "lon"),
                                   .altitude = textIn(c, "alt"),
                                   .host = textIn(c, "host"),
                                   .port = textIn(c, "port"),
                                   .updateRate = textIn(c, "rate")});
        expectFields(*world.app, c.at("expected").as_object());
    });
}

}  // namespace
}  // namespace veloran::test
