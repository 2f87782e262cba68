// The settings file, as a start of the program reads it.

#include <algorithm>
#include <string>
#include <tuple>
#include <variant>
#include <vector>

#include "checks.h"
#include "core/setting_limits.h"
#include "elements/user_tle_source.h"
#include "qt/settings_file.h"
#include "require.h"
#include "setting_properties.h"
#include "support/core_world.h"

namespace veloran::fuzz {

namespace {

void requireLimits(const AppState& app) {
    requireBearableSettings(app);
    require(lies(app.obs2Latitude, kLowestLatitude, kLargestNumber), "second latitude");
    require(lies(app.obs2Longitude, kLowestLongitude, kLargestNumber), "second longitude");
    require(app.rigPort > 0, "port");
    require(lies(app.dopplerUpdateHz, 0.001, 1000), "update rate");
    require(lies(app.minAutoTrackElevation, -kLargestNumber, kLargestNumber), "lowest elevation");
    require(lies(app.timelineHoursVisible, 0.01, 24 * 366), "hours of the timeline");
}

auto persisted(const AppState& app) {
    return std::tuple(app.obsLatitude.get(), app.obsLongitude.get(), app.obsAltitude.get(),
                      app.obsName.get(), app.rigHost.get(), app.rigPort.get(),
                      app.rigAutoConnect.get(), app.dopplerUpdateHz.get(),
                      app.forceClassicRigctld.get(), app.satProtoRestPattern.get(),
                      app.minAutoTrackElevation.get(), app.polarBearingLine.get(),
                      app.obs2Enabled.get(), app.obs2Name.get(), app.obs2Latitude.get(),
                      app.obs2Longitude.get(), app.timelineHoursVisible.get(),
                      app.subscribedCategories.get(), app.selectedSatelliteIds.get());
}

template <class T>
void assignItself(Published<T>& field) {
    field = T(field.get());
}

void assignAll(AppState& app) {
    assignItself(app.obsLatitude), assignItself(app.obsLongitude), assignItself(app.obsAltitude);
    assignItself(app.obsName), assignItself(app.rigHost), assignItself(app.rigPort);
    assignItself(app.rigAutoConnect), assignItself(app.dopplerUpdateHz);
    assignItself(app.forceClassicRigctld), assignItself(app.satProtoRestPattern);
    assignItself(app.minAutoTrackElevation), assignItself(app.polarBearingLine);
    assignItself(app.obs2Enabled), assignItself(app.obs2Name), assignItself(app.obs2Latitude);
    assignItself(app.obs2Longitude), assignItself(app.timelineHoursVisible);
    assignItself(app.subscribedCategories), assignItself(app.selectedSatelliteIds);
}

SettingValues valuesIn(std::string_view text) {
    const auto file = parseSettings(text);
    return file ? readableSettings(*file) : SettingValues{};
}

/// An empty list has no type in a file.
bool isEmptyList(const SettingValue& value) {
    const auto* texts = std::get_if<std::vector<std::string>>(&value);
    const auto* integers = std::get_if<std::vector<std::int64_t>>(&value);
    return (texts && texts->empty()) || (integers && integers->empty());
}

bool isSame(const SettingValues& a, const SettingValues& b) {
    return std::ranges::equal(a, b, [](const auto& one, const auto& other) {
        const bool bothEmpty = isEmptyList(one.second) && isEmptyList(other.second);
        return one.first == other.first && (bothEmpty || one.second == other.second);
    });
}

/// What the program holds becomes a file that reads back the same.
void requireFileOf(const test::MemorySettings& settings) {
    SettingChanges changes;
    for (const auto& [key, value] : settings.values) changes.emplace(key, value);
    boost::json::object file;
    applyChanges(changes, file);
    require(isSame(valuesIn(settingsText(file)), settings.values),
            "settings read back from their file");
}

/// A session with whatever was stored for its body, on a radio that speaks the extension.
void requireTracks(test::CoreWorld& world) {
    const auto body = std::make_shared<Satellite>("ISS (ZARYA)", 25544);
    body->transmitters = {test::channel(145.8e6), test::channel(437.8e6, "up")};
    world.setRangeRates(-7.5, -7.4);
    world.trackArmed(body, std::nullopt);
    require(world.app->selectedTransmitter.get().has_value(), "a channel is chosen");
    world.app->updateTracking();
    world.app->bumpSatCalibration(10);
    world.app->saveSatCalibration();
    world.app->updateTracking();
    world.app->stopTracking();
    world.machine.loop.runPosted();
}

}  // namespace

void checkStoredSettings(std::string_view bytes) {
    const auto file = parseSettings(bytes);
    if (!file) return;
    const auto stored = readableSettings(*file);
    require(valuesIn(settingsText(*file)) == stored, "a file that is written anew reads the same");

    test::CoreWorld world;
    world.machine.settings.values = stored;
    world.start();
    requireLimits(*world.app);
    const auto restored = persisted(*world.app);
    assignAll(*world.app);
    requireFileOf(world.machine.settings);
    world.start();
    require(persisted(*world.app) == restored, "settings come back at the next start");

    const auto sources = world.app->userSources().load();
    world.app->userSources().save(sources);
    require(world.app->userSources().load() == sources, "sources that are saved come back");
    require(world.app->elements().categories().size() ==
                world.app->elements().builtinCategories().size() + sources.size(),
            "every source is a group");
    requireTracks(world);
}

}  // namespace veloran::fuzz
