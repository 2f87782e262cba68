#include "golden_orbits.h"
#include "orbit/constants.h"
#include "orbit/ground_geometry.h"
#include "orbit/sun_moon.h"

namespace veloran::test {
namespace {

constexpr const char* kFile = "orbit/ground.json";

struct GroundTolerance {
    double latitude, longitude, height;  // deg, deg on the ground, km
};

GroundTolerance toleranceIn(const boost::json::object& object) {
    return {number(object.at("latitude_deg")),
            number(object.at("longitude_deg_times_cos_latitude")), number(object.at("height_km"))};
}

boost::json::object load() {
    auto file = loadVectors(kFile);
    expectKnownMembers(file, {"about", "tolerance", "sub_points", "geodetic", "tracks"}, kFile);
    expectKnownMembers(file.at("tolerance").as_object(),
                       {"latitude_deg", "longitude_deg_times_cos_latitude", "height_km", "geodetic",
                        "sun_moon_height_relative", "why"},
                       kFile);
    return file;
}

void expectPoint(const SubSatellitePoint& actual, const Vec3& expected,
                 const GroundTolerance& tolerance, bool pole = false) {
    // The arcsine loses half its digits at the poles.
    const double latitude = std::abs(expected.x) > 89.9 ? 1e-6 : tolerance.latitude;
    EXPECT_NEAR(actual.latitudeDeg, expected.x, latitude);
    if (pole) return;
    EXPECT_NEAR(
        angleBetween(actual.longitudeDeg, expected.y, 360.0) * std::cos(expected.x * deg2rad), 0.0,
        tolerance.longitude);
    EXPECT_LE(std::abs(actual.longitudeDeg), 180.0);
    EXPECT_NEAR(actual.altitudeKm, expected.z, tolerance.height);
}

TEST(GroundVectors, SubPoints) {
    const auto file = load();
    const auto tolerance = toleranceIn(file.at("tolerance").as_object());
    forEachCase(file, kFile, "sub_points", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"id", "seconds", "sub"}, kFile);
        SCOPED_TRACE(traceOf(c));
        const auto point = subSatellitePoint(*goldenSatRec(c.at("id")), instant(c.at("seconds")));
        ASSERT_EQ(point.has_value(), !c.at("sub").is_null());
        if (point) expectPoint(*point, vec3(c.at("sub")), tolerance);
    });
}

TEST(GroundVectors, GeodeticPoints) {
    const auto file = load();
    const auto tolerance = toleranceIn(file.at("tolerance").as_object().at("geodetic").as_object());
    forEachCase(file, kFile, "geodetic", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"pos", "gmst", "sub", "pole"}, kFile);
        SCOPED_TRACE(traceOf(c));
        expectPoint(geodeticPoint(vec3(c.at("pos")), number(c.at("gmst"))), vec3(c.at("sub")),
                    tolerance, c.if_contains("pole"));
    });
}

SubPointFn subPointOf(const boost::json::value& body) {
    if (body == "sun") return [](Instant t) { return std::optional(sunSubPoint(t)); };
    if (body == "moon") return [](Instant t) { return std::optional(moonSubPoint(t)); };
    return [record = goldenSatRec(body)](Instant t) { return subSatellitePoint(*record, t); };
}

TEST(GroundVectors, Tracks) {
    const auto file = load();
    const auto& tolerances = file.at("tolerance").as_object();
    forEachCase(file, kFile, "tracks", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"body", "from", "to", "step", "note", "points"}, kFile);
        SCOPED_TRACE(traceOf(c));
        const auto track = groundTrack(subPointOf(c.at("body")), instant(c.at("from")),
                                       instant(c.at("to")), number(c.at("step")));
        const auto& points = c.at("points").as_array();
        ASSERT_EQ(track.size(), points.size());
        for (std::size_t i = 0; i < track.size(); ++i) {
            SCOPED_TRACE("point " + std::to_string(i));
            auto tolerance = toleranceIn(tolerances);
            const Vec3 expected = vec3(points[i]);
            if (c.at("body").is_string()) {
                tolerance.height = number(tolerances.at("sun_moon_height_relative")) * expected.z;
            }
            expectPoint(track[i], expected, tolerance);
        }
    });
}

}  // namespace
}  // namespace veloran::test
