#include "core/app_state.h"

#include <string_view>
#include <utility>

#include "core/maidenhead.h"
#include "core/setting_limits.h"

namespace veloran {

namespace {

// How a field reads its key at start-up. A number 0 cannot be told from a missing one and counts as
// missing. So does a number that the rest of the program could not bear (a pole that has been
// passed, a port of 17 bits, a timer of no length): the file may have been edited by hand, and a
// bad value in it must not stop the program. Anything else is taken as it stands.

auto number(double fallback, double lowest = -kLargestNumber, double highest = kLargestNumber) {
    return [=](const SettingsStore& settings, std::string_view key) {
        const double stored = settings.number(key);
        return stored != 0 && stored >= lowest && stored <= highest ? stored : fallback;
    };
}

std::int64_t readPort(const SettingsStore& settings, std::string_view key) {
    constexpr std::int64_t kRigctldPort = 4532;
    const std::int64_t stored = settings.integer(key);
    return stored > 0 && stored <= kHighestPort ? stored : kRigctldPort;
}

bool readFlag(const SettingsStore& settings, std::string_view key) {
    return settings.flag(key);
}

auto text(std::string fallback) {
    return [fallback = std::move(fallback)](const SettingsStore& settings, std::string_view key) {
        return settings.text(key).value_or(fallback);
    };
}

SatProtoRestPattern readPattern(const SettingsStore& settings, std::string_view key) {
    return satProtoRestPatternFrom(settings.text(key).value_or(""))
        .value_or(SatProtoRestPattern::selectedDL);
}

std::set<std::string> readGroups(const SettingsStore& settings, std::string_view key) {
    const auto stored = settings.texts(key);
    if (!stored) return {"amateur", "stations"};
    return {stored->begin(), stored->end()};
}

std::set<std::int64_t> readIds(const SettingsStore& settings, std::string_view key) {
    const auto stored = settings.integers(key).value_or(std::vector<std::int64_t>{});
    return {stored.begin(), stored.end()};
}

// How a field's value is stored.

template <class T>
SettingValue stored(const T& value) {
    return value;
}
SettingValue stored(SatProtoRestPattern pattern) {
    return std::string(rawValue(pattern));
}
template <class T>
SettingValue stored(const std::set<T>& values) {
    return std::vector<T>(values.begin(), values.end());
}

}  // namespace

/// Reads the field, without a notification, and makes it write itself after each assignment.
template <class T, class Read>
void AppState::persist(Published<T>& field, const char* key, Read read) {
    field.initialise(read(machine_.settings, key));
    field.setAfterChange(
        [&settings = machine_.settings, key](const T& value) { settings.set(key, stored(value)); });
}

void AppState::restoreSettings() {
    constexpr double kSlowestHz = 0.001;
    constexpr double kFastestHz = 1000;
    constexpr double kShortestHours = 0.01;
    constexpr double kLongestHours = 24 * 366;

    persist(obsLatitude, "obsLat", number(33.87, kLowestLatitude));
    persist(obsLongitude, "obsLon", number(-84.34, kLowestLongitude));
    persist(obsAltitude, "obsAlt", number(300.0));
    persist(obsName, "obsName", text("Home"));
    persist(rigHost, "rigHost", text("localhost"));
    persist(rigPort, "rigPort", readPort);
    persist(rigAutoConnect, "rigAutoConnect", readFlag);
    persist(dopplerUpdateHz, "dopplerUpdateHz", number(10.0, kSlowestHz, kFastestHz));
    persist(forceClassicRigctld, "forceClassicRigctld", readFlag);
    persist(satProtoRestPattern, "satProtoRestPattern", readPattern);
    persist(minAutoTrackElevation, "minAutoTrackElevation", number(5.0));
    persist(polarBearingLine, "polarBearingLine", readFlag);
    persist(obs2Enabled, "obs2Enabled", readFlag);
    persist(obs2Name, "obs2Name", text("Site 2"));
    persist(obs2Latitude, "obs2Lat", number(0, kLowestLatitude));
    persist(obs2Longitude, "obs2Lon", number(0, kLowestLongitude));
    persist(timelineHoursVisible, "timelineHours", number(12.0, kShortestHours, kLongestHours));
    persist(subscribedCategories, "tleCategories", readGroups);
    persist(selectedSatelliteIds, "selectedSatIds", readIds);
}

AppState::AppState(const Machine& machine, AppConfig config)
    : machine_(machine),
      config_(std::move(config)),
      presets_(veloran::presetSources(config_.presetHosts)),
      imported_(machine.files),
      elements_(machine, config_.elementServiceBase,
                {[sources = UserTLESourceStore(machine.settings)] {
                     return asCategories(sources.load());
                 },
                 [store = imported_] { return store.load(); }}),
      channelCache_(machine, SatNOGSFetch(machine, config_.transmitterServiceBase)),
      preferences_(machine.settings),
      calibrations_(machine.settings),
      importWork_(machine) {
    timelineStartTime.initialise(now());
    restoreSettings();
    // A change takes effect at once on a live connection.
    forceClassicRigctld.alsoAfterChange([this](bool force) {
        if (!rigClient_) return;
        rigClient_->forceClassic = force;
        rigClient_->detectCapabilities();
    });
    // The one key that is written back when it is read, so that it holds each number once.
    if (machine_.settings.integers("selectedSatIds")) {
        selectedSatelliteIds = selectedSatelliteIds.get();
    }
    gridLocator = toMaidenhead(obsLatitude, obsLongitude);
}

AppState::~AppState() = default;

std::shared_ptr<AppState> AppState::create(const Machine& machine, AppConfig config) {
    return std::shared_ptr<AppState>(new AppState(machine, std::move(config)));
}

}  // namespace veloran
