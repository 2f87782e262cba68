#include "orbit/ground_geometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "orbit/constants.h"
#include "orbit/look_angles.h"
#include "sample_orbits.h"

namespace veloran::test {
namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Great-circle distance, degrees.
double distanceDeg(const GeoPoint& a, const GeoPoint& b) {
    const double phi1 = a.lat * deg2rad, phi2 = b.lat * deg2rad;
    const double dLon = (b.lon - a.lon) * deg2rad;
    const double cosine =
        std::sin(phi1) * std::sin(phi2) + std::cos(phi1) * std::cos(phi2) * std::cos(dLon);
    return std::acos(std::min(1.0, std::max(-1.0, cosine))) * rad2deg;
}

bool isCut(const GeoRing& line) {
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (std::abs(line[i].lon - line[i - 1].lon) > 180) return true;
    }
    return false;
}

// ---- Sub-points and tracks

TEST(SubSatellitePointTest, OverThePoleIsFinite) {
    for (const double sign : {1.0, -1.0}) {
        for (const double x : {1e-12, 1e-6}) {
            const auto point = geodeticPoint({x, 0, sign * 7000}, 1.0);
            EXPECT_NEAR(point.latitudeDeg, sign * 90, 1e-6);
            EXPECT_TRUE(std::isfinite(point.altitudeKm));
            EXPECT_LE(std::abs(point.longitudeDeg), 180);
        }
    }
}

TEST(SubSatellitePointTest, OnTheEquatorHeightIsAboveTheEquatorialRadius) {
    const auto point = geodeticPoint({WGS84::radiusEarthKm + 400, 0, 0}, 0);
    EXPECT_EQ(point.latitudeDeg, 0);
    EXPECT_EQ(point.longitudeDeg, 0);
    EXPECT_NEAR(point.altitudeKm, 400, 1e-9);
}

TEST(SubSatellitePointTest, WithoutAnOrbitIsAbsent) {
    auto broken = lowOrbit();
    broken.eccentricity = 1.5;
    EXPECT_FALSE(subSatellitePoint(*satrecOf(broken), sampleEpoch()));
    EXPECT_TRUE(groundTrack(*satrecOf(broken), sampleEpoch(), sampleEpoch() + 300).empty());
}

TEST(GroundTrack, HasBothEndsWhereTheStepLandsExactly) {
    const auto record = satrecOf(lowOrbit());
    const auto from = sampleEpoch();
    EXPECT_EQ(groundTrack(*record, from, from + 60).size(), 3u);
    EXPECT_EQ(groundTrack(*record, from, from + 59).size(), 2u);
    EXPECT_EQ(groundTrack(*record, from, from).size(), 1u);
    EXPECT_TRUE(groundTrack(*record, from, from + -1).empty());
    EXPECT_EQ(groundTrack(*record, from, from + 60, 20).back().longitudeDeg,
              subSatellitePoint(*record, from + 60)->longitudeDeg);
}

TEST(GroundTrack, LeavesOutMomentsWithoutAPoint) {
    const auto from = sampleEpoch();
    const SubPointFn gappy = [from](Instant t) -> std::optional<SubSatellitePoint> {
        if (t == from + 30) return std::nullopt;
        return SubSatellitePoint{t - from, 0, 0};
    };
    const auto track = groundTrack(gappy, from, from + 90);
    ASSERT_EQ(track.size(), 3u);
    EXPECT_EQ(track[1].latitudeDeg, 60);
}

TEST(GroundTrack, WithoutAPositiveStepEndsAtOnce) {
    const auto record = satrecOf(lowOrbit());
    for (const double step : {0.0, -30.0, kNaN}) {
        EXPECT_TRUE(groundTrack(*record, sampleEpoch(), sampleEpoch() + 60, step).empty());
    }
}

// ---- Footprints

TEST(Footprint, RadiusIsZeroOnTheGroundAndAbout2200KilometresFrom400) {
    EXPECT_EQ(footprintRadiusKm(0), 0);
    EXPECT_NEAR(footprintRadiusKm(400), 2200, 10);
}

TEST(Footprint, StartsDueNorthAndGoesClockwise) {
    const auto ring = footprintPolygon({10, 20, 800}, 4);
    ASSERT_EQ(ring.size(), 4u);
    const double radius = footprintRadiusKm(800) / WGS84::radiusEarthKm * rad2deg;
    EXPECT_NEAR(ring[0].lat, 10 + radius, 1e-9);
    EXPECT_NEAR(ring[0].lon, 20, 1e-9);
    EXPECT_GT(ring[1].lon, 20);
    EXPECT_NEAR(ring[2].lat, 10 - radius, 1e-9);
    EXPECT_LT(ring[3].lon, 20);
    for (const auto& point : ring) EXPECT_NEAR(distanceDeg(point, {10, 20}), radius, 1e-6);
}

TEST(Footprint, AtOrBelowTheGroundIsEmpty) {
    EXPECT_TRUE(footprintPolygon({10, 20, 0}).empty());
    EXPECT_TRUE(footprintPolygon({10, 20, -5}).empty());
    EXPECT_TRUE(footprintPolygon({10, 20, kNaN}).empty());
    EXPECT_TRUE(footprintPolygon({10, 20, 400}, 0).empty());
    EXPECT_EQ(footprintPolygon({10, 20, 400}).size(), 48u);
}

TEST(Arc, HasOnePointMoreThanStepsAndNoneWithoutSteps) {
    const auto arc = arcPoints({0, 0}, 0, twoPi / 2, 0.1, 8);
    ASSERT_EQ(arc.size(), 9u);
    EXPECT_NEAR(arc.front().lat, 0.1 * rad2deg, 1e-9);
    EXPECT_NEAR(arc.back().lat, -0.1 * rad2deg, 1e-9);
    EXPECT_TRUE(arcPoints({0, 0}, 0, 1, 0.1, 0).empty());
    EXPECT_TRUE(arcPoints({0, 0}, 0, 1, 0.1, -3).empty());
}

TEST(Arc, MoreThanATurnIsTakenBackOnce) {
    const auto arc = arcPoints({0, 0}, 0, twoPi + twoPi / 4, 0.1, 1);
    EXPECT_NEAR(arc.back().lon, 0.1 * rad2deg, 1e-9);
    const auto back = arcPoints({0, 0}, 0, -twoPi - twoPi / 4, 0.1, 1);
    EXPECT_NEAR(back.back().lon, -0.1 * rad2deg, 1e-9);
}

TEST(Bearings, LeadToWhereTheyCameFrom) {
    const GeoPoint from{48, 11}, to{-33, 151};
    const double bearing = initialBearing(from.lat, from.lon, to.lat, to.lon);
    const auto reached =
        destinationPoint(from.lat, from.lon, bearing, distanceDeg(from, to) * deg2rad);
    EXPECT_NEAR(reached.lat, to.lat, 1e-9);
    EXPECT_NEAR(reached.lon, to.lon, 1e-9);
}

// ---- Coverage tubes

TEST(CoverageTube, OfOnePointIsAbsent) {
    EXPECT_FALSE(coverageTube({}));
    EXPECT_FALSE(coverageTube({{0, 0, 400}}));
}

TEST(CoverageTube, OfTwoPointsIsACapsule) {
    const double delta = footprintRadiusKm(400) / WGS84::radiusEarthKm * rad2deg;
    const auto tube = coverageTube({{0, 0, 400}, {0, 10, 400}}, 8);
    ASSERT_TRUE(tube);
    ASSERT_EQ(tube->size(), 2u + 9u + 2u + 9u);
    // Left side, cap at the end, right side back, cap at the start.
    EXPECT_NEAR((*tube)[0].lat, delta, 1e-6);
    EXPECT_NEAR((*tube)[0].lon, 0, 1e-6);
    EXPECT_NEAR((*tube)[1].lon, 10, 1e-6);
    EXPECT_NEAR((*tube)[6].lat, 0, 1e-6);
    EXPECT_NEAR((*tube)[6].lon, 10 + delta, 1e-6);
    EXPECT_NEAR((*tube)[11].lat, -delta, 1e-6);
    EXPECT_NEAR((*tube)[11].lon, 10, 1e-6);
    EXPECT_NEAR((*tube)[12].lon, 0, 1e-6);
    EXPECT_NEAR((*tube)[17].lon, -delta, 1e-6);
    for (const auto& point : *tube) {
        const double nearest = std::min(distanceDeg(point, {0, 0}), distanceDeg(point, {0, 10}));
        EXPECT_NEAR(nearest, delta, 1e-6);
    }
}

// ---- Cuts at the antimeridian

TEST(AntimeridianCut, FootprintOverTheMeridianGivesTwoRingsThatMeet) {
    const auto parts = splitPolygonAtAntimeridian(footprintPolygon({5, 175, 800}));
    ASSERT_EQ(parts.size(), 2u);
    std::vector<double> edges[2];
    for (std::size_t part = 0; part < 2; ++part) {
        EXPECT_FALSE(isCut(parts[part]));
        for (const auto& point : parts[part]) {
            if (std::abs(point.lon) == 180) edges[part].push_back(point.lat);
        }
        ASSERT_EQ(edges[part].size(), 2u);
        std::sort(edges[part].begin(), edges[part].end());
    }
    EXPECT_EQ(edges[0], edges[1]);
}

TEST(AntimeridianCut, TwoCrossingsGiveAPartOnEachSide) {
    const GeoRing ring{{0, 170}, {10, -170}, {0, -160}, {-10, -170}};
    const auto polygons = splitPolygonAtAntimeridian(ring);
    const auto strokes = splitPolygonArcsAtAntimeridian(ring);
    ASSERT_EQ(polygons.size(), 2u);
    EXPECT_EQ(polygons, strokes);
    EXPECT_EQ(polygons[0], (GeoRing{{-5, 180}, {0, 170}, {5, 180}}));
    EXPECT_EQ(polygons[1], (GeoRing{{5, -180}, {10, -170}, {0, -160}, {-10, -170}, {-5, -180}}));
}

TEST(AntimeridianCut, FootprintWithThePoleIsOneOpenRun) {
    const auto ring = footprintPolygon({85, 30, 800});
    const auto parts = splitPolygonAtAntimeridian(ring);
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_EQ(parts[0].size(), ring.size() + 2);
    EXPECT_FALSE(isCut(parts[0]));
    EXPECT_EQ(std::abs(parts[0].front().lon), 180);
    EXPECT_EQ(parts[0].back().lon, -parts[0].front().lon);
    EXPECT_EQ(parts[0].back().lat, parts[0].front().lat);
    for (const auto& point : parts[0]) EXPECT_LT(point.lat, 89) << "no point at the pole is added";
    EXPECT_EQ(splitPolygonArcsAtAntimeridian(ring), parts);
}

TEST(AntimeridianCut, WithoutACrossingTheStrokeIsClosedAndTheRingIsNot) {
    const GeoRing ring{{0, 0}, {10, 0}, {0, 10}};
    EXPECT_EQ(splitPolygonAtAntimeridian(ring), std::vector<GeoRing>{ring});
    EXPECT_EQ(splitPolygonArcsAtAntimeridian(ring),
              (std::vector<GeoRing>{{{0, 0}, {10, 0}, {0, 10}, {0, 0}}}));
}

TEST(AntimeridianCut, TooFewPointsPassUnchanged) {
    const GeoRing two{{0, 170}, {0, -170}};
    EXPECT_EQ(splitPolygonAtAntimeridian(two), std::vector<GeoRing>{two});
    EXPECT_EQ(splitPolygonAtAntimeridian({}), std::vector<GeoRing>{{}});
    const GeoRing one{{0, 170}};
    EXPECT_EQ(splitPolygonArcsAtAntimeridian(one), std::vector<GeoRing>{one});
}

TEST(AntimeridianCut, CornerBehindTheMeridianIsKeptFromTheSmallestStrokeOn) {
    const GeoRing ring{{0, 170}, {0, -170}};
    const auto strokes = splitPolygonArcsAtAntimeridian(ring);
    ASSERT_EQ(strokes.size(), 2u);
    for (const auto& stroke : strokes) EXPECT_EQ(stroke.size(), 3u);
}

TEST(AntimeridianCut, EdgeFromPlusToMinus180StaysFinite) {
    const GeoRing ring{{0, 180}, {10, -180}, {5, -170}};
    for (const auto& part : splitPolygonAtAntimeridian(ring)) {
        for (const auto& point : part) EXPECT_TRUE(std::isfinite(point.lat));
    }
}

}  // namespace
}  // namespace veloran::test
