#include "element_properties.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include "elements/element_merge.h"
#include "elements/omm_lines.h"
#include "elements/tle_parser.h"
#include "orbit/constants.h"
#include "orbit/look_angles.h"
#include "orbit/pass_predictor.h"
#include "orbit/satellite_sky.h"
#include "orbit/sgp4.h"
#include "require.h"

namespace veloran::fuzz {

namespace {

auto members(const TLEData& set) {
    return std::tie(set.name, set.noradId, set.line1, set.line2, set.epochYear, set.epochDays,
                    set.bstar, set.inclination, set.raan, set.eccentricity, set.argPerigee,
                    set.meanAnomaly, set.meanMotion, set.revNumber, set.source);
}

bool isFinite(const Vec3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

void requireSoundState(const SatRec& satrec, double minutes) {
    const Propagation found = propagate(satrec, minutes);
    const Propagation again = propagate(satrec, minutes);
    require(found.error == again.error, "one record and time give one outcome");
    if (found.error != Sgp4Error::none) return;
    const auto& [position, velocity] = found.state;
    require(isFinite(position) && isFinite(velocity), "a state is finite");
    const double radius = std::hypot(position.x, position.y, position.z);
    require(radius > WGS84::radiusEarthKm * 0.999999, "a state is above the ground");
}

void requireSoundLook(const SatRec& satrec, Instant at) {
    const auto look = lookAngles(satrec, at, 33.87, -84.34, 0.3);
    if (!look) return;
    require(look->azimuth >= 0 && look->azimuth <= 360, "an azimuth is in its circle");
    // NaN right at the zenith.
    require(!(std::abs(look->elevation) > 90), "an elevation is between nadir and zenith");
    require(std::isfinite(look->range) && look->range >= 0, "a range is finite");
    require(!std::isnan(look->rangeRate), "a range rate is a number");
}

bool isNear(double value, double expected, double atMost) {
    // The last digit is cut by arithmetic as well as by the columns.
    return std::abs(value - expected) <= atMost * 1.001 + std::abs(expected) * 1e-12;
}

bool isSameNumber(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool isSamePass(const PredictedPass& a, const PredictedPass& b) {
    return a.riseTime == b.riseTime && a.peakTime == b.peakTime && a.setTime == b.setTime &&
           isSameNumber(a.maxElevation, b.maxElevation) &&
           isSameNumber(a.riseAzimuth, b.riseAzimuth) &&
           a.trackPoints.size() == b.trackPoints.size();
}

}  // namespace

bool isSame(const TLEData& a, const TLEData& b) {
    return members(a) == members(b);
}

bool areSame(const std::vector<TLEData>& a, const std::vector<TLEData>& b) {
    return std::ranges::equal(a, b, isSame);
}

void requireSoundOrbit(const TLEData& set) {
    const auto epoch = set.epochDate();
    require(epoch.has_value(), "a set that parses has an epoch");
    for (const double number :
         {set.epochDays, set.bstar, set.inclination, set.raan, set.eccentricity, set.argPerigee,
          set.meanAnomaly, set.meanMotion, epoch->secondsSinceReference}) {
        require(std::isfinite(number), "a set that parses has finite numbers");
    }
    const SatRec satrec = TLEParser::createSatRec(set);
    for (const double minutes : {0.0, 1.0, -1440.0, 43200.0, 5.3e6, 1e15}) {
        requireSoundState(satrec, minutes);
    }
    const Instant now{817000000.0};
    require(!set.ageString(now).empty(), "an age has a text");
    for (const Instant at : {*epoch, now, now + 1e9}) requireSoundLook(satrec, at);
}

void requireSameSearch(const TLEData& set) {
    constexpr double kHours = 3;
    constexpr double kLat = 50, kLon = 10, kMetres = 100;
    const auto satrec = std::make_shared<const SatRec>(TLEParser::createSatRec(set));
    const auto sky = satelliteSky(satrec, kLat, kLon, kMetres);
    const auto passes = [&](SkyFunctions functions) {
        return PassPredictor(std::move(functions), kLat, kLon, kMetres)
            .findPasses(*set.epochDate(), kHours, 0);
    };
    require(std::ranges::equal(passes(sky), passes({sky.observe}), isSamePass),
            "a search that spares places finds the same passes");
}

void requireSoundSets(const std::vector<TLEData>& sets) {
    constexpr std::size_t kEnough = 16;
    for (std::size_t i = 0; i < std::min(sets.size(), kEnough); ++i) requireSoundOrbit(sets[i]);
    if (!sets.empty()) requireSameSearch(sets.front());

    const auto merged = mergeElements({sets, sets});
    std::set<std::int64_t> numbers;
    for (const auto& set : sets) numbers.insert(set.noradId);
    require(merged.size() == numbers.size(), "a merge has each number once");
    require(areSame(mergeElements({merged}), merged), "a merged list merges to itself");
}

Lines writtenLines(const TLEData& set) {
    return {omm_lines::synthesizeLine1({.noradId = set.noradId,
                                        .intlDesignator = "1998-067A",
                                        .epoch = {set.epochYear, set.epochDays},
                                        .bstar = set.bstar}),
            omm_lines::synthesizeLine2({.noradId = set.noradId,
                                        .inclination = set.inclination,
                                        .raan = set.raan,
                                        .eccentricity = set.eccentricity,
                                        .argPerigee = set.argPerigee,
                                        .meanAnomaly = set.meanAnomaly,
                                        .meanMotion = set.meanMotion,
                                        .revNumber = set.revNumber})};
}

bool fitsColumns(const TLEData& set) {
    const auto fitsAngle = [](double degrees) { return degrees > -99 && degrees < 999; };
    return set.noradId >= 0 && set.noradId <= 99999 && set.epochYear >= 1957 &&
           set.epochYear <= 2056 && set.epochDays >= 0 && set.epochDays < 999 &&
           fitsAngle(set.inclination) && fitsAngle(set.raan) && fitsAngle(set.argPerigee) &&
           fitsAngle(set.meanAnomaly) && set.eccentricity >= 0 && set.eccentricity < 0.9999999 &&
           set.meanMotion > -9 && set.meanMotion < 99 && set.revNumber >= -9999 &&
           set.revNumber <= 99999;
}

void requireReadsBack(const TLEData& set, const Lines& lines) {
    const auto read = TLEParser::parseTwoLines(set.name, lines.line1, lines.line2);
    require(read.has_value(), "written lines read");
    require(read->name == set.name && read->line1 == lines.line1 && read->line2 == lines.line2,
            "what was read keeps its texts");
    require(read->noradId == set.noradId, "a catalogue number reads back");
    require(read->epochYear == set.epochYear, "a year reads back");
    require(isNear(read->epochDays, set.epochDays, 5e-9), "a day reads back");
    require(isNear(read->inclination, set.inclination, 5e-5), "an inclination reads back");
    require(isNear(read->raan, set.raan, 5e-5), "a node reads back");
    require(isNear(read->eccentricity, set.eccentricity, 5e-8), "an eccentricity reads back");
    require(isNear(read->argPerigee, set.argPerigee, 5e-5), "a perigee reads back");
    require(isNear(read->meanAnomaly, set.meanAnomaly, 5e-5), "an anomaly reads back");
    require(isNear(read->meanMotion, set.meanMotion, 5e-9), "a mean motion reads back");
    require(read->revNumber == set.revNumber, "a revolution number reads back");
    const std::string drag = omm_lines::formatExponentNotation(set.bstar);
    if (drag.size() != 8 || lines.line1.compare(53, 8, drag) != 0) return;
    require(isNear(read->bstar, set.bstar, std::abs(set.bstar) * 5e-5), "a drag term reads back");
}

}  // namespace veloran::fuzz
