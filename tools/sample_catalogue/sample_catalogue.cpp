#include "sample_catalogue/sample_catalogue.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/calendar.h"
#include "base/text.h"

namespace veloran {
namespace {

constexpr double kDaySeconds = 86400.0;
constexpr Instant kCatalogueEpoch{757382400.0};  // 2025-01-01 00:00 UTC
constexpr double kEarthRadiusKm = 6378.137;
constexpr double kMuKm3S2 = 398600.4418;
constexpr double kJ2 = 1.08263e-3;
constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;

double wrapped(double degrees) {
    const double rest = std::fmod(degrees, 360.0);
    return rest < 0 ? rest + 360.0 : rest;
}

bool readNumbers(const std::vector<std::string_view>& fields, SampleSatellite& satellite) {
    double* const targets[] = {
        &satellite.inclination, &satellite.eccentricity, &satellite.meanMotion, &satellite.raan,
        &satellite.argPerigee,  &satellite.meanAnomaly,  &satellite.bstar};
    std::size_t at = 3;
    for (double* target : targets) {
        const auto value = parseDouble(fields[at++]);
        if (!value) return false;
        *target = *value;
    }
    return satellite.meanMotion > 0 && satellite.eccentricity >= 0 && satellite.eccentricity < 1;
}

std::optional<SampleSatellite> readLine(std::string_view line) {
    const auto fields = split(line, ',');
    // Texts go into JSON as they stand.
    if (fields.size() != 11 || line.find_first_of("\"\\") != std::string_view::npos) return {};
    const auto noradId = parseInt64(fields[1]);
    if (!noradId) return {};
    SampleSatellite satellite;
    satellite.name = fields[0];
    satellite.noradId = *noradId;
    satellite.designator = fields[2];
    if (!readNumbers(fields, satellite)) return {};
    for (const auto group : split(fields[10], ';')) satellite.groups.emplace_back(group);
    return satellite;
}

std::string ommRecord(const SampleSatellite& s, Instant day) {
    const CivilTime t = civilTime(day);
    const double revolutions = s.meanMotion * (day - kCatalogueEpoch) / kDaySeconds;
    return fmt::format(
        R"({{"OBJECT_NAME":"{}","OBJECT_ID":"{}",)"
        R"("EPOCH":"{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.000000",)"
        R"("MEAN_MOTION":{:.8f},"ECCENTRICITY":{:.7f},"INCLINATION":{:.4f},)"
        R"("RA_OF_ASC_NODE":{:.4f},"ARG_OF_PERICENTER":{:.4f},"MEAN_ANOMALY":{:.4f},)"
        R"("EPHEMERIS_TYPE":0,"CLASSIFICATION_TYPE":"U","NORAD_CAT_ID":{},)"
        R"("ELEMENT_SET_NO":999,"REV_AT_EPOCH":{},"BSTAR":{:.8f},)"
        R"("MEAN_MOTION_DOT":0,"MEAN_MOTION_DDOT":0}})",
        s.name, s.designator, t.year, t.month, t.day, t.hour, t.minute, t.second, s.meanMotion,
        s.eccentricity, s.inclination, s.raan, s.argPerigee, s.meanAnomaly, s.noradId,
        std::llround(std::abs(revolutions)) % 100000, s.bstar);
}

}  // namespace

bool SampleSatellite::isIn(std::string_view group) const {
    return std::ranges::find(groups, group) != groups.end();
}

std::optional<std::vector<SampleSatellite>> readSampleCatalogue(std::string_view csv) {
    std::vector<SampleSatellite> satellites;
    for (const auto line : splitLines(csv)) {
        if (line.empty() || line.starts_with('#')) continue;
        auto satellite = readLine(line);
        if (!satellite) return {};
        satellites.push_back(std::move(*satellite));
    }
    return satellites;
}

SampleSatellite carriedTo(const SampleSatellite& satellite, Instant day) {
    const double days = (day - kCatalogueEpoch) / kDaySeconds;
    const double n = satellite.meanMotion * 2.0 * std::numbers::pi / kDaySeconds;  // rad/s
    const double a = std::cbrt(kMuKm3S2 / (n * n));
    const double p = a * (1.0 - satellite.eccentricity * satellite.eccentricity);
    const double cosI = std::cos(satellite.inclination * kRadiansPerDegree);
    // Vallado, Fundamentals of Astrodynamics, secular rates of node and perigee by J2:
    //   dΩ/dt = -3/2 n J2 (R/p)² cos i      dω/dt = 3/4 n J2 (R/p)² (5 cos² i - 1)
    const double ratio = kEarthRadiusKm / p;
    const double degreesPerDay = 1.5 * kJ2 * ratio * ratio * satellite.meanMotion * 360.0;
    SampleSatellite carried = satellite;
    carried.raan = wrapped(satellite.raan - degreesPerDay * cosI * days);
    carried.argPerigee =
        wrapped(satellite.argPerigee + degreesPerDay * 0.5 * (5.0 * cosI * cosI - 1.0) * days);
    carried.meanAnomaly = wrapped(satellite.meanAnomaly + satellite.meanMotion * 360.0 * days);
    return carried;
}

std::string ommArray(const std::vector<SampleSatellite>& satellites, std::string_view group,
                     Instant day) {
    std::string text;
    for (const auto& satellite : satellites) {
        if (!satellite.isIn(group)) continue;
        text += (text.empty() ? "[" : ",\n") + ommRecord(carriedTo(satellite, day), day);
    }
    return text.empty() ? "[]" : text + "]";
}

Instant startOfDay(Instant t) {
    return Instant{std::floor(t.secondsSinceReference / kDaySeconds) * kDaySeconds};
}

}  // namespace veloran
