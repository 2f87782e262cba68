#include "ui/detail_sheet/detail_sheet_texts.h"

#include <fmt/format.h>

#include <cmath>
#include <numbers>

#include "base/calendar.h"
#include "ui/formats.h"

namespace veloran {

namespace {

constexpr double kSecondsPerDay = 86400;
constexpr double kMinutesPerDay = 1440;
constexpr double kEarthMu = 398600.4418;     // km^3/s^2, WGS-84
constexpr double kEquatorRadius = 6378.137;  // km, WGS-84

/// km, of a mean motion in revolutions per day: a^3 n^2 = mu.
double semiMajorAxis(double meanMotion) {
    const double n = meanMotion * 2 * std::numbers::pi / kSecondsPerDay;
    return std::pow(kEarthMu / (n * n), 1.0 / 3);
}

}  // namespace

std::vector<LabeledText> orbitalElements(const TLEData& tle) {
    const double a = semiMajorAxis(tle.meanMotion);
    return {{"Inclination", numberText(tle.inclination, 4, "°")},
            {"Eccentricity", numberText(tle.eccentricity, 7, "")},
            {"RAAN", numberText(tle.raan, 4, "°")},
            {"Arg. Perigee", numberText(tle.argPerigee, 4, "°")},
            {"Mean Anomaly", numberText(tle.meanAnomaly, 4, "°")},
            {"Mean Motion", numberText(tle.meanMotion, 8, " rev/day")},
            {"Period", periodText(tle.meanMotion)},
            {"Semi-major axis", numberText(a, 1, " km")},
            {"Altitude (avg)", numberText(a - kEquatorRadius, 1, " km")}};
}

std::string periodText(double meanMotion) {
    if (!(meanMotion > 0)) return "—";
    return numberText(kMinutesPerDay / meanMotion, 1, " min");
}

std::string tleEpochString(std::int64_t year, double days, Instant now) {
    const auto newYear = instantFromDate(year, 1, 1);
    if (!newYear) return "—";
    const Instant epoch = *newYear + (days - 1) * kSecondsPerDay;
    if (!isCivil(epoch)) return "—";
    const CivilTime t = civilTime(epoch);
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02} UTC ({})", t.year, t.month, t.day,
                       t.hour, t.minute, t.second,
                       numberText((now - epoch) / kSecondsPerDay, 1, " days ago"));
}

std::string toneText(double hz) {
    return numberText(hz, 1, " Hz tone");
}

std::string maxText(double degrees) {
    return "max " + elevationText(degrees);
}

Ink maxColor(double degrees) {
    return degrees >= 30 ? Ink::green : Ink::yellow;
}

std::string passRowTime(Instant rise) {
    return calendarTime(rise, true);
}

std::optional<std::string> morePasses(std::size_t count) {
    if (count <= kToldPasses) return std::nullopt;
    return fmt::format("+ {} more", count - kToldPasses);
}

TransmitterLook transmitterLook(const Transmitter& transmitter) {
    return {.isUplink = transmitter.direction == "up",
            .description = transmitter.description,
            .frequency = transmitter.displayFreqMHz(),
            .mode = transmitter.mode,
            .inverting = transmitter.inverting,
            .tone = transmitter.ctcss ? toneText(*transmitter.ctcss) : ""};
}

std::string spokenTransmitter(const TransmitterLook& look) {
    std::string text = look.isUplink ? "Uplink" : "Downlink";
    for (const std::string& part : {look.description, look.frequency, look.mode}) {
        if (!part.empty()) text += ", " + part;
    }
    if (look.inverting) text += ", inverting";
    if (!look.tone.empty()) text += ", " + look.tone;
    return text;
}

}  // namespace veloran
