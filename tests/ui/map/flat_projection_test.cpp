#include "ui/map/flat_projection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "ui/map/projection_support.h"

namespace veloran::test {
namespace {

constexpr QSizeF kView(420, 360);  // two pixels a degree from the fitted camera
constexpr double kFitted = 5e7;

FlatProjection flatAt(double lat, double lon, double distance = kFitted, QSizeF size = kView) {
    return FlatProjection({{lat, lon}, distance, 0}, size);
}

TEST(FlatProjection, FittedCameraShowsPoleToPoleInTheHeight) {
    const auto map = flatAt(0, 10);
    EXPECT_DOUBLE_EQ(map.yOf(90), 0);
    EXPECT_DOUBLE_EQ(map.yOf(-90), 360);
    const auto north = map.toScreen({90, 10});
    ASSERT_EQ(north.size(), 1U);
    EXPECT_EQ(north[0], (scene::Point{210, 0}));
}

TEST(FlatProjection, PlacesComeBackFromTheScreen) {
    const auto map = flatAt(20, 170, 2e7);
    for (double lat = -10; lat <= 50; lat += 7.5) {
        for (double lon = -180; lon < 180; lon += 7.5) {
            for (const auto& at : map.toScreen({lat, lon})) {
                const auto back = map.toGeo(at);
                ASSERT_TRUE(back);
                EXPECT_NEAR(back->lat, lat, 1e-9);
                EXPECT_NEAR(back->lon, lon, 1e-9);
            }
        }
    }
}

TEST(FlatProjection, NothingLiesBeyondThePoles) {
    const auto map = flatAt(0, 0, 1e8);  // 90 to 270 of the height
    EXPECT_FALSE(map.toGeo({210, 89}));
    EXPECT_TRUE(map.toGeo({210, 91}));
    EXPECT_TRUE(map.toGeo({210, 269}));
    EXPECT_FALSE(map.toGeo({210, 271}));
}

TEST(FlatProjection, LongitudesOfTheScreenAreWrapped) {
    const auto map = flatAt(0, 170);
    EXPECT_NEAR(map.toGeo({210 + 40, 180})->lon, -170, 1e-9);
    EXPECT_DOUBLE_EQ(map.toGeo({210 + 20, 180})->lon, -180);
}

TEST(FlatProjection, PointStandsInEveryCopyOfTheWorldInView) {
    const auto map = flatAt(0, 0, kFitted, QSizeF(1440, 360));  // two worlds wide
    const auto copies = map.toScreen({0, 90});
    ASSERT_EQ(copies.size(), 2U);
    EXPECT_DOUBLE_EQ(copies[0].x, 180);
    EXPECT_DOUBLE_EQ(copies[1].x, 900);
}

TEST(FlatProjection, PointFarBesideTheViewIsNotShown) {
    EXPECT_EQ(flatAt(0, 0).toScreen({0, 120}).size(), 1U);  // a marker may reach in
    EXPECT_EQ(flatAt(0, 0).toScreen({0, 160}).size(), 0U);
    EXPECT_EQ(flatAt(0, 0, 5e6).toScreen({60, 0}).size(), 0U);
}

TEST(FlatProjection, LineOverTheDateLineIsOnePieceWithoutAJump) {
    const auto pieces = flatAt(0, 180).line({{0, 160}, {5, 175}, {10, -170}, {12, -150}});
    ASSERT_EQ(pieces.size(), 1U);
    ASSERT_EQ(pieces[0].size(), 4U);
    EXPECT_NEAR(pieces[0][2].x - pieces[0][1].x, 30, 1e-9);
    EXPECT_NEAR(pieces[0][0].x, 170, 1e-9);
}

TEST(FlatProjection, LineOverTheDateLineReachesInFromBothEdges) {
    const auto pieces = flatAt(0, 0, kFitted, QSizeF(720, 360)).line({{0, 160}, {0, -160}});
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_DOUBLE_EQ(pieces[0][0].x, -40);
    EXPECT_DOUBLE_EQ(pieces[0][1].x, 40);
    EXPECT_DOUBLE_EQ(pieces[1][0].x, 680);
    EXPECT_DOUBLE_EQ(pieces[1][1].x, 760);
}

TEST(FlatProjection, ShapeLongerThanTheMarginReachesInFromBothEdges) {
    const auto map = flatAt(0, 0, kFitted, QSizeF(720, 360));  // one world wide
    const auto lines = map.line({{0, 120}, {0, 170}, {0, -140}});
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].back(), (scene::Point{80, 180}));
    EXPECT_EQ(lines[1].front(), (scene::Point{600, 180}));
    EXPECT_EQ(lines[1].back(), (scene::Point{800, 180}));
    const auto far = map.line({{0, 120}, {0, 170}, {0, -130}});
    ASSERT_EQ(far.size(), 2U);
    EXPECT_EQ(far[1].back(), (scene::Point{820, 180})) << "its end lies beyond the margin";
}

TEST(FlatProjection, ShapesThatLieOutOfViewAreLeftOut) {
    const auto map = flatAt(0, 0, 1e7);
    EXPECT_TRUE(map.line({{0, 100}, {10, 110}}).empty());
    EXPECT_TRUE(map.line({{80, 0}, {85, 10}}).empty());
    EXPECT_TRUE(map.area({{80, 0}, {85, 10}, {85, 0}}).empty());
    EXPECT_TRUE(map.line({{0, 0}}).empty());
    EXPECT_TRUE(map.area({{0, 0}, {1, 1}}).empty());
}

TEST(FlatProjection, AreaOverTheDateLineIsFilledOnBothSidesOfIt) {
    const auto map = flatAt(0, 180);
    const auto parts = map.area(footprint(10, 175, 800));
    EXPECT_TRUE(isFilled(parts, map.toScreen({10, 165}).front()));
    EXPECT_TRUE(isFilled(parts, map.toScreen({10, 180}).front()));
    EXPECT_TRUE(isFilled(parts, map.toScreen({10, -170}).front()));
    EXPECT_FALSE(isFilled(parts, map.toScreen({10, -140}).front()));
    EXPECT_FALSE(isFilled(parts, map.toScreen({10, 130}).front()));
}

TEST(FlatProjection, AreaRoundThePoleIsFilledUpToTheEdgeOfTheWorld) {
    for (const double side : {1.0, -1.0}) {
        const auto map = flatAt(0, 0, kFitted, QSizeF(720, 360));
        for (const double lon : {0.0, 50.0, 180.0}) {
            const auto parts = map.area(footprint(side * 80, lon, 800));
            ASSERT_EQ(parts.size(), 1U) << "one shape without seams";
            for (double x = 1; x < 720; x += 17) {
                EXPECT_TRUE(isFilled(parts, {x, map.yOf(side * 89.9)})) << side << ' ' << x;
                EXPECT_FALSE(isFilled(parts, {x, map.yOf(side * 40)})) << side << ' ' << x;
                EXPECT_FALSE(isFilled(parts, {x, map.yOf(side * -89)})) << side << ' ' << x;
            }
        }
    }
}

TEST(FlatProjection, DirectionOfARingRoundThePoleDoesNotMatter) {
    auto ring = footprint(80, 50, 800);
    std::reverse(ring.begin(), ring.end());
    const auto map = flatAt(0, 0);
    EXPECT_TRUE(isFilled(map.area(ring), {210, 0.5}));
    EXPECT_FALSE(isFilled(map.area(ring), {210, 359.5}));
}

TEST(FlatProjection, CutRunRoundThePoleIsFilledAsTheWholeRing) {
    const auto parts = splitPolygonAtAntimeridian(footprint(80, 50, 800));
    ASSERT_EQ(parts.size(), 1U);
    const auto map = flatAt(0, 0);
    EXPECT_TRUE(isFilled(map.area(parts[0]), {1, 0.5}));
    EXPECT_TRUE(isFilled(map.area(parts[0]), {419, 0.5}));
}

TEST(FlatProjection, FarAwayCameraGivesAFewCopiesOnly) {
    const auto map = flatAt(0, 0, 1e30);
    EXPECT_LE(map.toScreen({0, 0}).size(), 40U);
    EXPECT_LE(map.area(footprint(80, 0, 800)).front().size(), 40U * 72);
}

}  // namespace
}  // namespace veloran::test
