// The fields of the settings form, a line each: latitude, longitude, altitude, host, port, rate.

#include <fmt/format.h>

#include <cmath>
#include <string>
#include <vector>

#include "base/text.h"
#include "checks.h"
#include "require.h"
#include "setting_properties.h"
#include "support/core_world.h"
#include "ui/settings/settings_form.h"
#include "ui/settings/typed_values.h"

namespace veloran::fuzz {

namespace {

void requireThereAndBack(std::string_view text) {
    if (const auto number = parseDouble(text)) {
        require(std::isfinite(*number), "a number that reads is finite");
        require(parseDouble(shortestText(*number)) == number, "the shortest text reads back");
    }
    if (const auto whole = parseInt64(text)) {
        require(parseInt64(fmt::format("{}", *whole)) == whole, "a whole number reads back");
    }
}

/// What is typed and what becomes of it.
void requirePlain(const SettingsTexts& typed) {
    const SettingsTexts plain = plainTexts(typed);
    const TypedPlace place = typedPlace(typed.latitude, typed.longitude);
    require(readLatitude(plain.latitude) == place.latitude, "a latitude that is typed is read");
    require(readLongitude(plain.longitude) == place.longitude, "a longitude that is typed is read");
    require(readAltitude(plain.altitude) == typedAltitude(typed.altitude), "an altitude, too");
    require(readUpdateRate(plain.updateRate) == typedNumber(typed.updateRate), "a rate, too");
    require(plainTexts(plain) == plain, "a plain text is its own plain form");
    require(plain.host == typed.host, "a host is no number");
}

void requireTaken(const AppState& app, const AppState& before, const SettingsTexts& typed) {
    require(app.obsLatitude == readLatitude(typed.latitude).value_or(before.obsLatitude),
            "a latitude is taken or stays");
    require(app.obsLongitude == readLongitude(typed.longitude).value_or(before.obsLongitude),
            "a longitude is taken or stays");
    require(app.obsAltitude == readAltitude(typed.altitude).value_or(before.obsAltitude),
            "an altitude is taken or stays");
    require(app.rigPort == readPort(typed.port).value_or(before.rigPort), "a port is or stays");
    require(app.rigHost.get() == typed.host, "a host is taken as it stands");
    require(lies(app.dopplerUpdateHz, 1, 50), "a rate keeps its limits");
    require(canHaveLocator(app.obsLatitude, app.obsLongitude) &&
                app.gridLocator.get() == toMaidenhead(app.obsLatitude, app.obsLongitude),
            "the locator follows");
}

/// At the place that was typed the sky is there or absent, never half there.
void requireSky(const AppState& app) {
    for (const auto& body : app.satellites.get()) {
        const auto look =
            body->observe(app.now(), app.obsLatitude, app.obsLongitude, app.obsAltitude);
        require(!look || std::isfinite(look->range), "a range is finite");
    }
}

}  // namespace

void checkTypedNumbers(std::string_view bytes) {
    auto lines = split(bytes, '\n');
    for (const auto line : lines) requireThereAndBack(line);
    lines.resize(6);
    const SettingsTexts typed{std::string(lines[0]), std::string(lines[1]), std::string(lines[2]),
                              std::string(lines[3]), std::string(lines[4]), std::string(lines[5])};

    requirePlain(typed);

    test::CoreWorld world, untouched;
    world.start();
    untouched.start();
    AppState& app = *world.app;
    app.satellites = app.celestialBodies();
    applySettings(app, typed);
    world.machine.loop.runPosted();
    requireBearableSettings(app);
    requireTaken(app, *untouched.app, typed);
    requireSky(app);

    const SettingsTexts shown = settingsTexts(app);
    applySettings(app, shown);
    require(settingsTexts(app) == shown, "fields that are applied as shown stay");
    world.machine.loop.runPosted();
}

}  // namespace veloran::fuzz
