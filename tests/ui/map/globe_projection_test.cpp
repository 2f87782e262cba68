#include "ui/map/globe_projection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "ui/map/projection_support.h"

namespace veloran::test {
namespace {

constexpr QSizeF kView(420, 400);
constexpr double kFitted = 3e7;
constexpr double kDegrees = 180 / std::numbers::pi;

GlobeProjection globeAt(double lat, double lon, double distance = kFitted, double heading = 0) {
    return GlobeProjection({{lat, lon}, distance, heading}, kView);
}

/// Degrees from the point below the eye to the limb.
double limbDegrees(const GlobeProjection& globe) {
    return std::acos(1 / globe.eyeDistance()) * kDegrees;
}

double fromMiddle(const GlobeProjection& globe, scene::Point point) {
    return distance(globe.middle(), point);
}

GeoPoint onEquator(double lon) {
    return {0, lon};
}

TEST(GlobeProjection, FittedCameraShowsTheDiscInFourFifthsOfTheView) {
    EXPECT_NEAR(globeAt(20, 0).limbRadius(), 0.4 * 400, 1e-9);
    const auto middle = globeAt(20, -84).toScreen({20, -84});
    ASSERT_EQ(middle.size(), 1U);
    EXPECT_NEAR(middle[0].x, 210, 1e-9);
    EXPECT_NEAR(middle[0].y, 200, 1e-9);
}

TEST(GlobeProjection, NorthIsUpAndEastIsRight) {
    const auto globe = globeAt(0, 0);
    EXPECT_LT(globe.toScreen({10, 0})[0].y, 190);
    EXPECT_NEAR(globe.toScreen({10, 0})[0].x, 210, 1e-9);
    EXPECT_GT(globe.toScreen({0, 10})[0].x, 220);
}

TEST(GlobeProjection, HeadingTurnsItsDirectionUp) {
    const auto globe = globeAt(0, 0, kFitted, 90);  // east is up
    EXPECT_LT(globe.toScreen({0, 10})[0].y, 190);
    EXPECT_LT(globe.toScreen({10, 0})[0].x, 200);
}

TEST(GlobeProjection, PlacesComeBackFromTheScreen) {
    for (const double heading : {0.0, 75.0, 200.0}) {
        const auto globe = globeAt(60, 170, kFitted, heading);
        int seen = 0;
        for (double lat = -85; lat <= 85; lat += 5) {
            for (double lon = -180; lon < 180; lon += 10) {
                for (const auto& at : globe.toScreen({lat, lon})) {
                    const auto back = globe.toGeo(at);
                    if (!back) {  // on the limb itself the last digit decides
                        EXPECT_NEAR(fromMiddle(globe, at), globe.limbRadius(), 0.02);
                        continue;
                    }
                    ++seen;
                    EXPECT_NEAR(back->lat, lat, 1e-5);
                    EXPECT_NEAR(std::remainder(back->lon - lon, 360), 0, 1e-5);
                }
            }
        }
        EXPECT_GT(seen, 300);
    }
}

TEST(GlobeProjection, PolesComeBackFromTheScreen) {
    const auto globe = globeAt(70, 33);
    const auto pole = globe.toScreen({90, 0});
    ASSERT_EQ(pole.size(), 1U);
    EXPECT_NEAR(pole[0].x, 210, 1e-9);
    EXPECT_NEAR(globe.toGeo(pole[0])->lat, 90, 1e-5);
    EXPECT_TRUE(globe.toScreen({-90, 0}).empty());
    EXPECT_NEAR(globeAt(90, 0).toScreen({90, 120})[0].x, 210, 1e-9);
}

TEST(GlobeProjection, BesideTheDiscThereIsNoGround) {
    const auto globe = globeAt(20, 0);
    EXPECT_TRUE(globe.toGeo({210 + 159.9, 200}));
    EXPECT_FALSE(globe.toGeo({210 + 160.1, 200}));
}

TEST(GlobeProjection, SatelliteGoingBehindTheLimbDisappearsThere) {
    const auto globe = globeAt(0, 0);
    const double limb = limbDegrees(globe);
    const auto last = globe.toScreen(onEquator(limb - 0.001));
    ASSERT_EQ(last.size(), 1U);
    EXPECT_NEAR(fromMiddle(globe, last[0]), globe.limbRadius(), 0.02);
    EXPECT_TRUE(globe.toScreen(onEquator(limb + 0.001)).empty());
    EXPECT_TRUE(globe.toScreen(onEquator(180)).empty());
    EXPECT_EQ(globe.toScreen(onEquator(-limb + 0.001)).size(), 1U);
}

TEST(GlobeProjection, NearerEyeSeesLessOfTheEarth) {
    EXPECT_EQ(globeAt(0, 0, 3e7).toScreen(onEquator(60)).size(), 1U);
    EXPECT_EQ(globeAt(0, 0, 1.5e6).toScreen(onEquator(60)).size(), 0U);
}

TEST(GlobeProjection, LineEndsExactlyAtTheLimb) {
    const auto globe = globeAt(0, 0);
    const auto pieces = globe.line({{0, 0}, {0, 60}, {0, 120}});
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_NEAR(fromMiddle(globe, pieces[0].front()), 0, 1e-9);
    EXPECT_NEAR(fromMiddle(globe, pieces[0].back()), globe.limbRadius(), 0.02);
    EXPECT_GT(pieces[0].back().x, 210);
}

TEST(GlobeProjection, LineRoundTheEarthComesBackOnTheOtherSide) {
    const auto globe = globeAt(0, 0);
    GeoRing track;
    for (double lon = 0; lon <= 360; lon += 10) track.push_back(onEquator(lon));
    const auto pieces = globe.line(track);
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_NEAR(pieces[1].front().x, 210 - globe.limbRadius(), 0.02);
    EXPECT_NEAR(fromMiddle(globe, pieces[1].back()), 0, 1e-9);
}

TEST(GlobeProjection, LineWithBothEndsBehindTheLimbShowsWhatIsBefore) {
    const auto globe = globeAt(90, 0);
    const double lat = 90 - limbDegrees(globe) - 0.3;
    const auto pieces = globe.line({{lat, 0}, {lat, 40}});  // its great circle runs further north
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_NEAR(fromMiddle(globe, pieces[0].front()), globe.limbRadius(), 0.02);
    EXPECT_NEAR(fromMiddle(globe, pieces[0].back()), globe.limbRadius(), 0.02);
    EXPECT_TRUE(globe.line({{-10, 0}, {-10, 40}}).empty());
}

TEST(GlobeProjection, LongEdgesFollowTheirGreatCircle) {
    const auto globe = globeAt(60, 0);
    const auto pieces = globe.line({{60, -40}, {60, 40}});
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_GT(pieces[0].size(), 15U);
    const double highest = std::min_element(pieces[0].begin(), pieces[0].end(), [](auto a, auto b) {
                               return a.y < b.y;
                           })->y;
    EXPECT_NEAR(highest, globe.toScreen({66.14, 0})[0].y, 0.01);
}

TEST(GlobeProjection, WholeFootprintInSightIsItsOwnOutline) {
    const auto globe = globeAt(0, 180);
    const auto parts = globe.area(footprint(10, 175, 800));
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_TRUE(isFilled(parts, globe.toScreen({10, -170})[0]));
    EXPECT_FALSE(isFilled(parts, globe.toScreen({-30, 175})[0]));
}

TEST(GlobeProjection, FootprintOverThePoleIsFilledOverIt) {
    for (const double side : {1.0, -1.0}) {
        const auto globe = globeAt(side * 60, 20);
        const auto parts = globe.area(footprint(side * 80, 100, 1400));
        ASSERT_EQ(parts.size(), 1U);
        EXPECT_TRUE(isFilled(parts, globe.toScreen({side * 90, 0})[0]));
        EXPECT_FALSE(isFilled(parts, globe.toScreen({side * 40, 20})[0]));
    }
}

TEST(GlobeProjection, FootprintAcrossTheLimbIsClosedAlongIt) {
    const auto globe = globeAt(0, 0);
    auto ring = footprint(0, limbDegrees(globe), 800);
    for (int turn = 0; turn < 2; ++turn) {
        const auto parts = globe.area(ring);
        ASSERT_EQ(parts.size(), 1U);
        EXPECT_TRUE(isFilled(parts, {210 + globe.limbRadius() - 1, 200}));
        EXPECT_FALSE(isFilled(parts, {210 - globe.limbRadius() + 1, 200}));
        EXPECT_FALSE(isFilled(parts, globe.middle()));
        for (const auto& point : parts[0]) {
            EXPECT_LE(fromMiddle(globe, point), globe.limbRadius() + 0.02);
            EXPECT_GT(point.x, 210 + 100);
        }
        std::reverse(ring.begin(), ring.end());
    }
}

TEST(GlobeProjection, FootprintWhoseMiddleIsBehindTheLimbReachesOverIt) {
    const auto globe = globeAt(0, 0);
    const auto parts = globe.area(footprint(0, 110, 20000));  // 76 degrees in radius
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_TRUE(isFilled(parts, globe.toScreen(onEquator(40))[0]));
    EXPECT_FALSE(isFilled(parts, globe.toScreen(onEquator(30))[0]));
    EXPECT_TRUE(isFilled(parts, globe.toScreen({60, 60})[0]));
}

TEST(GlobeProjection, BandAcrossTheDiscCrossesTheLimbAtBothEnds) {
    const auto globe = globeAt(0, 0);
    GeoRing band;
    for (double lon = -100; lon <= 100; lon += 5) band.push_back({10, lon});
    for (double lon = 100; lon >= -100; lon -= 5) band.push_back({-10, lon});
    for (int turn = 0; turn < 2; ++turn) {
        const auto parts = globe.area(band);
        ASSERT_EQ(parts.size(), 1U);
        EXPECT_TRUE(isFilled(parts, globe.middle()));
        EXPECT_TRUE(isFilled(parts, {210 + globe.limbRadius() - 1, 200}));
        EXPECT_TRUE(isFilled(parts, {210 - globe.limbRadius() + 1, 200}));
        EXPECT_FALSE(isFilled(parts, globe.toScreen({20, 0})[0]));
        EXPECT_FALSE(isFilled(parts, globe.toScreen({-20, 60})[0]));
        std::reverse(band.begin(), band.end());
    }
}

TEST(GlobeProjection, TwoArmsBeforeTheLimbAreTwoShapes) {
    const auto globe = globeAt(0, 0);
    // A horseshoe that is joined behind the limb.
    const auto parts = globe.area(
        {{30, 60}, {30, 120}, {-30, 120}, {-30, 60}, {-10, 60}, {-10, 100}, {10, 100}, {10, 60}});
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_TRUE(isFilled(parts, globe.toScreen({20, 65})[0]));
    EXPECT_TRUE(isFilled(parts, globe.toScreen({-20, 65})[0]));
    EXPECT_FALSE(isFilled(parts, globe.toScreen({0, 65})[0]));
}

TEST(GlobeProjection, FootprintRoundTheVisibleDiscFillsIt) {
    const auto globe = globeAt(10, 20, 2e6);
    auto ring = footprint(5, 25, 35786);
    for (int turn = 0; turn < 2; ++turn) {
        const auto parts = globe.area(ring);
        ASSERT_EQ(parts.size(), 1U);
        for (const auto& point : parts[0]) {
            EXPECT_NEAR(fromMiddle(globe, point), globe.limbRadius(), 0.02);
        }
        EXPECT_TRUE(isFilled(parts, globe.middle()));
        std::reverse(ring.begin(), ring.end());
    }
}

TEST(GlobeProjection, FootprintBehindTheGlobeIsNotDrawn) {
    auto small = footprint(-5, -170, 500);
    auto large = footprint(-20, -160, 35786);  // round the point opposite of the eye
    for (int turn = 0; turn < 2; ++turn) {
        EXPECT_TRUE(globeAt(10, 20).area(small).empty());
        EXPECT_TRUE(globeAt(10, 20, 2e6).area(large).empty());
        EXPECT_TRUE(globeAt(10, 20, 2e6).area(small).empty());
        std::reverse(small.begin(), small.end());
        std::reverse(large.begin(), large.end());
    }
}

TEST(GlobeProjection, FillAgreesWithTheDistanceFromTheFootprintsMiddle) {
    const auto inside = [](GeoPoint at, GeoPoint middle, double radius) {
        return std::acos(std::clamp(dot(unitVector(at), unitVector(middle)), -1.0, 1.0)) < radius;
    };
    int checked = 0;
    for (double lat = -90; lat <= 90; lat += 22.5) {
        for (double lon = -180; lon < 180; lon += 36) {
            for (const double altitude : {500.0, 20000.0}) {
                const GeoPoint middle{lat, lon};
                const auto ring = footprint(lat, lon, altitude);
                const double radius = footprintRadiusKm(altitude) / WGS84::radiusEarthKm;
                const auto globe = globeAt(35, 15, 1e7, 30);
                const auto parts = globe.area(ring);
                for (double x = 15; x < 420; x += 30) {
                    for (double y = 13; y < 400; y += 30) {
                        const auto ground = globe.toGeo({x, y});
                        if (!ground) continue;
                        // The ring is a polygon of 72 corners: leave out what lies at its edge.
                        if (inside(*ground, middle, radius + 0.01) !=
                            inside(*ground, middle, radius - 0.01)) {
                            continue;
                        }
                        ++checked;
                        EXPECT_EQ(isFilled(parts, {x, y}), inside(*ground, middle, radius))
                            << lat << ' ' << lon << ' ' << altitude << " at " << x << ' ' << y;
                    }
                }
            }
        }
    }
    EXPECT_GT(checked, 10000);
}

TEST(GlobeProjection, TooFewPointsGiveNothing) {
    EXPECT_TRUE(globeAt(0, 0).line({}).empty());
    EXPECT_TRUE(globeAt(0, 0).line({{0, 0}}).empty());
    EXPECT_TRUE(globeAt(0, 0).area({}).empty());
    EXPECT_TRUE(globeAt(0, 0).area({{0, 0}, {1, 1}}).empty());
}

TEST(GlobeProjection, SightHoldsWhatTheViewShows) {
    const auto whole = globeAt(20, 0);
    EXPECT_NEAR(whole.sight().radius * kDegrees, limbDegrees(whole), 1e-9);
    const auto near = globeAt(20, 0, 2e6);
    const auto corner = near.toGeo({420, 400});
    ASSERT_TRUE(corner);
    EXPECT_NEAR(std::acos(dot(unitVector(*corner), near.sight().middle)), near.sight().radius,
                1e-9);
}

}  // namespace
}  // namespace veloran::test
