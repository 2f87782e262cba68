#include "golden_orbits.h"
#include "orbit/constants.h"
#include "orbit/ground_geometry.h"

namespace veloran::test {
namespace {

constexpr const char* kFile = "orbit/coverage.json";

boost::json::object load() {
    auto file = loadVectors(kFile);
    expectKnownMembers(file,
                       {"about", "tolerance", "radius", "bearing", "destination", "arcs",
                        "footprints", "tubes", "splits"},
                       kFile);
    expectKnownMembers(file.at("tolerance").as_object(),
                       {"radius_km", "bearing_rad", "latitude_deg",
                        "longitude_deg_times_cos_latitude", "split_deg", "count", "why"},
                       kFile);
    return file;
}

double within(const boost::json::object& file, const char* name) {
    return number(file.at("tolerance").as_object().at(name));
}

GeoPoint point(const boost::json::value& value) {
    return {number(value.at(0)), number(value.at(1))};
}

GeoRing ring(const boost::json::value& value) {
    GeoRing points;
    for (const auto& element : value.as_array()) points.push_back(point(element));
    return points;
}

SubSatellitePoint subPoint(const boost::json::value& value) {
    return {number(value.at(0)), number(value.at(1)), number(value.at(2))};
}

void expectPoint(const GeoPoint& actual, const GeoPoint& expected,
                 const boost::json::object& file) {
    const double latitude = std::abs(expected.lat) > 89.9 ? 1e-6 : within(file, "latitude_deg");
    EXPECT_NEAR(actual.lat, expected.lat, latitude);
    const double onGround =
        angleBetween(actual.lon, expected.lon, 360.0) * std::cos(expected.lat * deg2rad);
    EXPECT_NEAR(onGround, 0.0, within(file, "longitude_deg_times_cos_latitude"));
}

void expectRing(const GeoRing& actual, const GeoRing& expected, const boost::json::object& file) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        SCOPED_TRACE("point " + std::to_string(i));
        expectPoint(actual[i], expected[i], file);
    }
}

TEST(CoverageVectors, Radius) {
    const auto file = load();
    forEachCase(file, kFile, "radius", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"altitudeKm", "radiusKm"}, kFile);
        EXPECT_NEAR(footprintRadiusKm(number(c.at("altitudeKm"))), number(c.at("radiusKm")),
                    within(file, "radius_km"));
    });
}

TEST(CoverageVectors, Bearing) {
    const auto file = load();
    forEachCase(file, kFile, "bearing", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"from", "to", "bearing"}, kFile);
        const auto from = point(c.at("from"));
        const auto to = point(c.at("to"));
        EXPECT_NEAR(angleBetween(initialBearing(from.lat, from.lon, to.lat, to.lon),
                                 number(c.at("bearing")), twoPi),
                    0.0, within(file, "bearing_rad"));
    });
}

TEST(CoverageVectors, Destination) {
    const auto file = load();
    forEachCase(file, kFile, "destination", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"from", "bearing", "distance", "to"}, kFile);
        const auto from = point(c.at("from"));
        expectPoint(
            destinationPoint(from.lat, from.lon, number(c.at("bearing")), number(c.at("distance"))),
            point(c.at("to")), file);
    });
}

TEST(CoverageVectors, Arcs) {
    const auto file = load();
    forEachCase(file, kFile, "arcs", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"center", "start", "end", "distance", "steps", "points"}, kFile);
        expectRing(arcPoints(point(c.at("center")), number(c.at("start")), number(c.at("end")),
                             number(c.at("distance")), c.at("steps").to_number<int>()),
                   ring(c.at("points")), file);
    });
}

TEST(CoverageVectors, Footprints) {
    const auto file = load();
    forEachCase(file, kFile, "footprints", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"center", "altitudeKm", "steps", "points"}, kFile);
        const auto center = point(c.at("center"));
        expectRing(footprintPolygon({center.lat, center.lon, number(c.at("altitudeKm"))},
                                    c.at("steps").to_number<int>()),
                   ring(c.at("points")), file);
    });
}

TEST(CoverageVectors, Tubes) {
    const auto file = load();
    forEachCase(file, kFile, "tubes", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"note", "track", "capSteps", "points"}, kFile);
        SCOPED_TRACE(traceOf(c));
        std::vector<SubSatellitePoint> track;
        for (const auto& element : c.at("track").as_array()) track.push_back(subPoint(element));
        const auto tube = coverageTube(track, c.at("capSteps").to_number<int>());
        ASSERT_EQ(tube.has_value(), !c.at("points").is_null());
        if (tube) expectRing(*tube, ring(c.at("points")), file);
    });
}

void expectParts(const std::vector<GeoRing>& actual, const boost::json::value& expected,
                 double tolerance) {
    const auto& parts = expected.as_array();
    ASSERT_EQ(actual.size(), parts.size());
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto part = ring(parts[i]);
        ASSERT_EQ(actual[i].size(), part.size()) << "part " << i;
        for (std::size_t k = 0; k < part.size(); ++k) {
            // Plainly: +180 and -180 are different points here.
            EXPECT_NEAR(actual[i][k].lat, part[k].lat, tolerance) << "part " << i << ", " << k;
            EXPECT_NEAR(actual[i][k].lon, part[k].lon, tolerance) << "part " << i << ", " << k;
        }
    }
}

TEST(CoverageVectors, Splits) {
    const auto file = load();
    forEachCase(file, kFile, "splits", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"note", "ring", "polygons", "strokes"}, kFile);
        SCOPED_TRACE(traceOf(c));
        const auto whole = ring(c.at("ring"));
        expectParts(splitPolygonAtAntimeridian(whole), c.at("polygons"), within(file, "split_deg"));
        expectParts(splitPolygonArcsAtAntimeridian(whole), c.at("strokes"),
                    within(file, "split_deg"));
    });
}

}  // namespace
}  // namespace veloran::test
