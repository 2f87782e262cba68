#include "ui/map/coverage_pieces.h"

#include <cmath>
#include <numbers>

#include "core/satellite.h"
#include "map_bodies.h"

namespace veloran::test {
namespace {

constexpr double kRadians = std::numbers::pi / 180;

std::array<double, 3> vectorOf(const GeoPoint& p) {
    return {std::cos(p.lat * kRadians) * std::cos(p.lon * kRadians),
            std::cos(p.lat * kRadians) * std::sin(p.lon * kRadians), std::sin(p.lat * kRadians)};
}

double triple(const std::array<double, 3>& a, const std::array<double, 3>& b,
              const std::array<double, 3>& c) {
    return a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) +
           a[2] * (b[0] * c[1] - b[1] * c[0]);
}

/// Share of the sphere inside a ring: a fan of spherical triangles (van Oosterom and Strackee).
double shareOf(const GeoRing& ring) {
    const auto dot = [](const auto& a, const auto& b) {
        return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
    };
    double angle = 0;
    const auto a = vectorOf(ring[0]);
    for (std::size_t i = 1; i + 1 < ring.size(); ++i) {
        const auto b = vectorOf(ring[i]);
        const auto c = vectorOf(ring[i + 1]);
        angle += 2 * std::atan2(triple(a, b, c), 1 + dot(a, b) + dot(b, c) + dot(c, a));
    }
    return std::abs(angle) / (4 * std::numbers::pi);
}

std::vector<SubSatellitePoint> alongEquator(double fromLon, double toLon, double altitudeKm) {
    std::vector<SubSatellitePoint> track;
    for (int i = 0; i <= 150; ++i) {
        const double lon = fromLon + (toLon - fromLon) * i / 150;
        track.push_back({0, std::remainder(lon, 360), altitudeKm});
    }
    return track;
}

TEST(CoveragePieces, LowPassIsOnePiece) {
    const auto track = alongEquator(0, 30, 400);
    const GeoRing tube = *coverageTube(track, 24);
    EXPECT_EQ(coveragePieces(tube, track), std::vector<GeoRing>{tube});
}

TEST(CoveragePieces, LongPassOfAHighBodyIsCutIntoPiecesBelowAHemisphere) {
    const auto track = alongEquator(-80, 70, 20000);
    const auto pieces = coveragePieces(*coverageTube(track, 24), track);
    ASSERT_GE(pieces.size(), 4u) << "two caps and a belt between them";
    double sum = 0;
    for (const GeoRing& piece : pieces) {
        EXPECT_LT(shareOf(piece), 0.5);
        sum += shareOf(piece);
    }
    const double radius = footprintRadiusKm(20000) / 6378.137;
    const double expected = (1 - std::cos(radius)) / 2 + 150.0 / 360 * std::sin(radius);
    EXPECT_NEAR(sum, expected, 0.01) << "together what the footprint sweeps";
}

TEST(CoveragePieces, PiecesTouchAlongTheirCuts) {
    const auto track = alongEquator(-80, 70, 20000);
    const auto pieces = coveragePieces(*coverageTube(track, 24), track);
    const auto contains = [](const GeoRing& ring, double lon) {
        return std::ranges::any_of(ring, [lon](const GeoPoint& p) {
            return std::abs(p.lat) < 1e-9 && std::abs(p.lon - lon) < 1e-9;
        });
    };
    EXPECT_TRUE(contains(pieces.front(), -80)) << "the cap of the start ends at its track point";
    EXPECT_TRUE(contains(pieces[1], -80));
    EXPECT_TRUE(contains(pieces.back(), 70));
    EXPECT_TRUE(contains(pieces[pieces.size() - 2], 70));
}

TEST(CoveragePieces, TrackThatStandsStillIsCutIntoItsCaps) {
    const std::vector<SubSatellitePoint> track(3, {0, 10, 35786});
    const auto pieces = coveragePieces(*coverageTube(track, 24), track);
    EXPECT_GE(pieces.size(), 1u);
    for (const GeoRing& piece : pieces) EXPECT_LE(shareOf(piece), 0.5);
}

}  // namespace
}  // namespace veloran::test
