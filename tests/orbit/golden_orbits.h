#pragma once

#include <gtest/gtest.h>

#include <boost/json.hpp>
#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "elements/tle_parser.h"
#include "orbit/look_angles.h"
#include "orbit/vec3.h"
#include "support/vectors.h"

// What the golden files of orbital mechanics have in common: element sets by their id, observers
// by their index, angles that wrap.

namespace veloran::test {

inline TLEData elementsOf(const boost::json::object& set) {
    TLEData tle;
    if (const auto* name = set.if_contains("name")) tle.name = name->as_string().c_str();
    tle.noradId = set.at("noradId").to_number<std::int64_t>();
    tle.epochYear = set.at("epochYear").to_number<std::int64_t>();
    tle.epochDays = number(set.at("epochDays"));
    tle.bstar = number(set.at("bstar"));
    tle.inclination = number(set.at("inclination"));
    tle.raan = number(set.at("raan"));
    tle.eccentricity = number(set.at("eccentricity"));
    tle.argPerigee = number(set.at("argPerigee"));
    tle.meanAnomaly = number(set.at("meanAnomaly"));
    tle.meanMotion = number(set.at("meanMotion"));
    tle.revNumber = set.at("revNumber").to_number<std::int64_t>();
    return tle;
}

using SatRecs = std::map<std::int64_t, std::shared_ptr<const SatRec>>;

inline void addSatRecs(SatRecs& records, const boost::json::value& sets) {
    for (const auto& set : sets.as_array()) {
        const auto& object = set.as_object();
        records[object.at("id").to_number<std::int64_t>()] =
            std::make_shared<const SatRec>(TLEParser::createSatRec(elementsOf(object)));
    }
}

/// Every element set of elements.json and the extra ones of passes.json.
inline const SatRecs& goldenSatRecs() {
    static const SatRecs records = [] {
        SatRecs made;
        addSatRecs(made, loadVectors("orbit/elements.json").at("sets"));
        addSatRecs(made, loadVectors("orbit/passes.json").at("extra_sets"));
        return made;
    }();
    return records;
}

inline std::shared_ptr<const SatRec> goldenSatRec(const boost::json::value& id) {
    return goldenSatRecs().at(id.to_number<std::int64_t>());
}

inline std::string traceOf(const boost::json::object& testCase) {
    return "case " + boost::json::serialize(testCase).substr(0, 160);
}

inline Instant instant(const boost::json::value& seconds) {
    return Instant{number(seconds)};
}

inline Vec3 vec3(const boost::json::value& value) {
    const auto& array = value.as_array();
    return {number(array.at(0)), number(array.at(1)), number(array.at(2))};
}

inline void expectNear(const Vec3& actual, const Vec3& expected, double tolerance,
                       const char* field) {
    EXPECT_NEAR(actual.x, expected.x, tolerance) << field << " x";
    EXPECT_NEAR(actual.y, expected.y, tolerance) << field << " y";
    EXPECT_NEAR(actual.z, expected.z, tolerance) << field << " z";
}

struct GoldenObserver {
    double latitude;   // deg
    double longitude;  // deg east
    double heightMeters;
};

inline GoldenObserver observerAt(const boost::json::object& file, const char* list,
                                 const boost::json::value& index) {
    const auto& entry = file.at(list).as_array().at(index.to_number<std::size_t>()).as_array();
    return {number(entry.at(0)), number(entry.at(1)), number(entry.at(2))};
}

/// The difference of two angles, by the shorter way round.
inline double angleBetween(double a, double b, double turn) {
    return std::remainder(a - b, turn);
}

/// Tolerances of a set of look angles; the azimuth's counts on the sky, not on the horizon.
struct LookTolerance {
    double azimuthDeg, elevationDeg, rangeKm, rangeRateKmS;
    double zenithElevationDeg = 0;  // within 0.01 deg of the zenith, if it differs
};

struct ExpectedLook {
    double azimuth, elevation, range, rangeRate;
};

/// From an array with azimuth, elevation, range and range rate beginning at `first`.
inline ExpectedLook expectedLook(const boost::json::array& values, std::size_t first = 0) {
    return {number(values.at(first)), number(values.at(first + 1)), number(values.at(first + 2)),
            number(values.at(first + 3))};
}

inline void expectLook(const TopocentricResult& actual, const ExpectedLook& expected,
                       const LookTolerance& tolerance) {
    const bool atZenith = expected.elevation > 89.99 && tolerance.zenithElevationDeg > 0;
    const double scale = std::cos(expected.elevation * 3.14159265358979 / 180.0);
    EXPECT_GE(actual.azimuth, 0.0);
    EXPECT_LE(actual.azimuth, 360.0);
    EXPECT_NEAR(angleBetween(actual.azimuth, expected.azimuth, 360.0) * scale, 0.0,
                tolerance.azimuthDeg)
        << "azimuth " << actual.azimuth << ", expected " << expected.azimuth;
    EXPECT_NEAR(actual.elevation, expected.elevation,
                atZenith ? tolerance.zenithElevationDeg : tolerance.elevationDeg)
        << "elevation";
    EXPECT_NEAR(actual.range, expected.range, tolerance.rangeKm) << "range";
    EXPECT_NEAR(actual.rangeRate, expected.rangeRate, tolerance.rangeRateKmS) << "range rate";
}

}  // namespace veloran::test
