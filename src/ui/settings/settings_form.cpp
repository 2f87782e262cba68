#include "ui/settings/settings_form.h"

#include <fmt/format.h>

#include "base/text.h"
#include "core/setting_limits.h"
#include "ui/settings/typed_values.h"

namespace veloran {

namespace {

std::optional<double> readNumber(std::string_view text, double lowest) {
    const auto number = parseDouble(text);
    return number && *number >= lowest && *number <= kLargestNumber ? number : std::nullopt;
}

void makePlain(std::string& text, std::optional<double> number) {
    if (number) text = shortestText(*number);
}

template <class T>
void take(Published<T>& field, const std::optional<T>& value) {
    if (value) field = *value;
}

}  // namespace

std::optional<double> readLatitude(std::string_view text) {
    return readNumber(text, kLowestLatitude);
}

std::optional<double> readLongitude(std::string_view text) {
    return readNumber(text, kLowestLongitude);
}

std::optional<double> readAltitude(std::string_view text) {
    return readNumber(text, -kLargestNumber);
}

std::optional<std::int64_t> readPort(std::string_view text) {
    const auto number = parseInt64(text);
    return number && *number >= 0 && *number <= kHighestPort ? number : std::nullopt;
}

std::optional<double> readUpdateRate(std::string_view text) {
    return parseDouble(text);
}

std::optional<LatLon> readLocator(std::string_view text) {
    const std::string_view locator = trimmed(text, Blanks::horizontal);
    return readsAsLocator(locator) ? fromMaidenhead(locator) : std::nullopt;
}

std::string coordField(double degrees) {
    return fmt::format("{:.6f}", degrees);
}

std::string altitudeField(double metres) {
    return fmt::format("{:.0f}", metres);
}

std::string updateRateField(double hertz) {
    return fmt::format("{:.0f}", hertz);
}

std::string sectionCount(std::size_t subscribed, std::size_t groups) {
    return subscribed > 0 ? fmt::format("{}/{}", subscribed, groups) : fmt::format("{}", groups);
}

SettingsTexts settingsTexts(const AppState& state) {
    return {.latitude = coordField(state.obsLatitude),
            .longitude = coordField(state.obsLongitude),
            .altitude = altitudeField(state.obsAltitude),
            .host = state.rigHost,
            .port = fmt::format("{}", state.rigPort.get()),
            .updateRate = updateRateField(state.dopplerUpdateHz)};
}

SettingsTexts plainTexts(SettingsTexts typed) {
    const TypedPlace place = typedPlace(typed.latitude, typed.longitude);
    makePlain(typed.latitude, place.latitude);
    makePlain(typed.longitude, place.longitude);
    makePlain(typed.altitude, typedAltitude(typed.altitude));
    makePlain(typed.updateRate, typedNumber(typed.updateRate));
    typed.port = std::string(trimmed(typed.port, Blanks::horizontal));
    return typed;
}

void applySettings(AppState& state, const SettingsTexts& texts) {
    take(state.obsLatitude, readLatitude(texts.latitude));
    take(state.obsLongitude, readLongitude(texts.longitude));
    take(state.obsAltitude, readAltitude(texts.altitude));
    state.gridLocator = toMaidenhead(state.obsLatitude, state.obsLongitude);
    state.rigHost = texts.host;
    take(state.rigPort, readPort(texts.port));
    if (const auto rate = readUpdateRate(texts.updateRate)) state.updateDopplerRate(*rate);
    state.computeAllPasses();
}

}  // namespace veloran
