#include <set>

#include "ui/format_cases.h"
#include "ui/formats.h"

namespace veloran::test {
namespace {

using boost::json::array;
using boost::json::value;

std::optional<double> optionalNumber(const value& argument) {
    return argument.is_null() ? std::nullopt : std::optional(number(argument));
}

std::vector<PassPoint> track(const value& azimuths) {
    std::vector<PassPoint> points;
    for (const value& azimuth : azimuths.as_array()) {
        points.push_back({.date = {}, .azimuth = number(azimuth)});
    }
    return points;
}

/// The formats of the views that this program has.
const Formats& viewFormats() {
    static const Formats formats{
        {"formatBigFreq", ofNumber(formatBigFreq)},
        {"formatMHz", ofNumber(formatMHz)},
        {"formatHzSigned", ofNumber(formatHzSigned)},
        {"rxSatOutputFreq",
         [](const array& a) {
             return value(
                 rxSatOutputFreq(optionalNumber(a.at(0)), number(a.at(1)), number(a.at(2))));
         }},
        {"txSatInputFreq",
         [](const array& a) {
             return value(
                 txSatInputFreq(optionalNumber(a.at(0)), number(a.at(1)), a.at(2).as_bool()));
         }},
        {"azimuthText", ofNumber(azimuthText)},
        {"rangeText", ofNumber(rangeText)},
        {"rateText", ofNumber(rateText)},
        {"updateRateText", ofNumber(updateRateText)},
        {"relativeTime", ofNumber(relativeTime)},
        {"formatDuration", ofNumber(formatDuration)},
        {"elevationText", ofNumber(elevationText)},
        {"elevationColor",
         [](const array& a) { return value(inkName(elevationColor(number(a.at(0))))); }},
        {"compassDir", ofNumber(compassDir)},
        {"listDirection", [](const array& a) { return value(listDirection(track(a.at(0)))); }},
        {"listTime", [](const array& a) { return value(listTime(Instant{number(a.at(0))})); }},
        {"observerPosition",
         [](const array& a) { return value(observerPosition(number(a.at(0)), number(a.at(1)))); }},
        {"endpointText",
         [](const array& a) {
             return value(endpointText(a.at(0).as_string(), a.at(1).as_int64()));
         }},
        {"noradText", [](const array& a) { return value(noradText(a.at(0).as_int64())); }},
        {"upcomingText",
         [](const array& a) {
             return value(upcomingText(static_cast<std::size_t>(a.at(0).as_int64())));
         }},
        {"queuedBadge",
         [](const array& a) {
             return value(queuedBadge(static_cast<std::size_t>(a.at(0).as_int64())));
         }},
        {"conflictMessage",
         [](const array& a) {
             return value(conflictMessage(a.at(0).as_string(), number(a.at(1)), a.at(2).as_string(),
                                          number(a.at(3))));
         }},
        {"versionText", [](const array& a) {
             return value(versionText(a.at(0).is_null()
                                          ? std::nullopt
                                          : std::optional(std::string(a.at(0).as_string()))));
         }}};
    return formats;
}

/// Formats that are tested beside the core or beside their own view.
const std::set<std::string_view>& formatsElsewhere() {
    static const std::set<std::string_view> names{
        // core
        "durationString", "maxElString", "compassDirection", "directionArrow", "utcTime",
        "tleAgeString", "statusLoaded", "statusComputing", "statusPasses", "statusTracking",
        "clampUpdateRate",
        // sky plot
        "plotAngleText", "plotRangeText", "plotVelocityText", "plotAccelerationText", "degreeLabel",
        "passPhase", "passPhaseText", "passCountdown", "formatHMS",
        // queue
        "autoThresholdText",
        // timeline
        "bestHourStep", "minorHourStep", "hoursText", "zoomIn", "zoomOut", "pinchHours",
        "timelineLabel",
        // map
        "trackHoursText", "observerAnnotation",
        // browser and detail sheet
        "sourceDisplay", "sourcesHelp", "passesHelp", "ageColor", "elementAgeColor",
        "orbitalElements", "periodText", "tleEpochString", "toneText", "maxText", "morePasses",
        "passRowTime",
        // settings
        "coordField", "altitudeField", "sectionCount", "thresholdValue"};
    return names;
}

TEST(TextFormatsVectors, FormatsOfTheMainWindow) {
    expectFormats(viewFormats());
}

TEST(TextFormatsVectors, EveryFormatOfTheFileHasAPlace) {
    const auto file = loadVectors("data/text_formats.json");
    forEachCase(file, "text_formats.json", "cases", [](const boost::json::object& c) {
        const std::string_view name = c.at("function").as_string();
        EXPECT_TRUE(viewFormats().contains(name) || formatsElsewhere().contains(name))
            << "unknown function " << name;
    });
}

}  // namespace
}  // namespace veloran::test
