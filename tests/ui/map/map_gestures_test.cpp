#include "ui/map/map_gestures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "ui/map/map_projection.h"

namespace veloran {
namespace {

using scene::Point;

const QSizeF kSize(600, 400);
const Point kMiddle{300, 200};

std::optional<GeoPoint> groundAt(MapStyle style, const MapCamera& camera, Point at) {
    return makeProjection(style, camera, kSize)->toGeo(at);
}

void expectSameGround(const std::optional<GeoPoint>& a, const std::optional<GeoPoint>& b,
                      double tolerance = 1e-6) {
    ASSERT_TRUE(a && b);
    EXPECT_NEAR(a->lat, b->lat, tolerance);
    EXPECT_NEAR(std::remainder(a->lon - b->lon, 360), 0, tolerance);
}

MapCamera globeCamera(double heading = 0) {
    return {.center = {20, -84}, .distance = 30e6, .heading = heading};
}
MapCamera flatCamera(double distance = 20e6) {
    return {.center = {0, -84}, .distance = distance, .heading = 0};
}

TEST(PannedCamera, FlatMapFollowsThePointer) {
    const Point from{100, 150};
    const Point to{180, 120};
    const MapCamera panned = pannedCamera(MapStyle::standard, flatCamera(), kSize, from, to);
    expectSameGround(groundAt(MapStyle::standard, panned, to),
                     groundAt(MapStyle::standard, flatCamera(), from));
    EXPECT_EQ(panned.distance, flatCamera().distance);
}

TEST(PannedCamera, FlatMapWrapsAtTheDateLine) {
    MapCamera camera = flatCamera();
    camera.center.lon = 179;
    const MapCamera panned =
        pannedCamera(MapStyle::standard, camera, kSize, {400, 200}, {300, 200});
    EXPECT_LT(panned.center.lon, -100) << "on the other side";
    expectSameGround(groundAt(MapStyle::standard, panned, {300, 200}),
                     groundAt(MapStyle::standard, camera, {400, 200}));
}

TEST(PannedCamera, FlatMapStopsAtThePole) {
    const MapCamera panned =
        pannedCamera(MapStyle::standard, flatCamera(), kSize, kMiddle, {300, 100000});
    EXPECT_EQ(panned, clampedCamera(MapStyle::standard, panned, kSize));
    EXPECT_LT(panned.center.lat, 90);
    EXPECT_GT(panned.center.lat, 30);
}

TEST(PannedCamera, GlobeTurnsSoThatTheGroundFollowsThePointer) {
    for (const double heading : {0.0, 40.0, 200.0}) {
        for (const Point to : {Point{340, 180}, Point{250, 260}, Point{300, 90}, Point{380, 200}}) {
            const Point from{290, 210};
            const MapCamera camera = globeCamera(heading);
            const MapCamera panned = pannedCamera(MapStyle::imagery, camera, kSize, from, to);
            SCOPED_TRACE(testing::Message() << heading << ": " << to.x << " " << to.y);
            expectSameGround(groundAt(MapStyle::imagery, panned, to),
                             groundAt(MapStyle::imagery, camera, from));
            EXPECT_NEAR(panned.heading, heading, 1e-9) << "north stays where it is";
            EXPECT_EQ(panned.distance, camera.distance);
        }
    }
}

TEST(PannedCamera, GlobeAtThePoleStaysWithinIt) {
    MapCamera camera = globeCamera();
    camera.center.lat = 85;
    const MapCamera panned = pannedCamera(MapStyle::imagery, camera, kSize, kMiddle, {300, 300});
    EXPECT_LE(std::abs(panned.center.lat), 90);
    EXPECT_GE(panned.center.lat, 85);
}

TEST(PannedCamera, DragBesideTheGlobeTurnsItByItsLimb) {
    const MapCamera camera = globeCamera();
    ASSERT_FALSE(groundAt(MapStyle::imagery, camera, {5, 200}));
    const MapCamera panned = pannedCamera(MapStyle::imagery, camera, kSize, kMiddle, {5, 200});
    EXPECT_GT(std::remainder(panned.center.lon - camera.center.lon, 360), 40)
        << "to the left: the east comes into view";
    const MapCamera kept = pannedCamera(MapStyle::imagery, camera, kSize, {5, 200}, {-900, 200});
    EXPECT_NEAR(kept.center.lat, camera.center.lat, 0.1) << "the same point of the limb";
    EXPECT_NEAR(kept.center.lon, camera.center.lon, 0.1);
}

TEST(PannedCamera, NoWayIsNoChange) {
    for (const MapStyle style : kMapStyles) {
        const MapCamera camera = isFlat(style) ? flatCamera() : globeCamera(30);
        const MapCamera panned = pannedCamera(style, camera, kSize, {310, 190}, {310, 190});
        EXPECT_NEAR(panned.center.lat, camera.center.lat, 1e-9);
        EXPECT_NEAR(panned.center.lon, camera.center.lon, 1e-9);
    }
}

TEST(ZoomedAbout, GroundBelowThePointerStays) {
    for (const MapStyle style : kMapStyles) {
        const MapCamera camera = isFlat(style) ? flatCamera() : globeCamera(30);
        for (const double factor : {1.5, 0.8}) {
            const Point pointer{340, 170};
            const MapCamera zoomed = zoomedAbout(style, camera, kSize, pointer, factor);
            EXPECT_NEAR(zoomed.distance, camera.distance / factor, 1);
            expectSameGround(groundAt(style, zoomed, pointer), groundAt(style, camera, pointer));
        }
    }
}

TEST(ZoomedAbout, InAndOutAgainIsWhereItBegan) {
    for (const MapStyle style : kMapStyles) {
        const MapCamera camera = isFlat(style) ? flatCamera() : globeCamera();
        const Point pointer{260, 230};
        const MapCamera in = zoomedAbout(style, camera, kSize, pointer, 2);
        const MapCamera out = zoomedAbout(style, in, kSize, pointer, 0.5);
        EXPECT_NEAR(out.center.lat, camera.center.lat, 1e-6);
        EXPECT_NEAR(out.center.lon, camera.center.lon, 1e-6);
        EXPECT_NEAR(out.distance, camera.distance, 1);
    }
}

TEST(ZoomedAbout, EndsAtTheBoundsOfTheStyle) {
    for (const MapStyle style : kMapStyles) {
        MapCamera camera = isFlat(style) ? flatCamera() : globeCamera();
        for (int i = 0; i < 50; ++i) camera = zoomedAbout(style, camera, kSize, {310, 190}, 4);
        EXPECT_NEAR(camera.distance, smallestDistance(style, kSize), 1);
        const MapCamera nearest = camera;
        EXPECT_NEAR(zoomedAbout(style, nearest, kSize, {10, 10}, 4).center.lat, nearest.center.lat,
                    1e-9)
            << "what cannot come nearer does not move either";
        for (int i = 0; i < 50; ++i) camera = zoomedAbout(style, camera, kSize, {310, 190}, 0.25);
        EXPECT_EQ(camera, clampedCamera(style, camera, kSize));
        EXPECT_GE(camera.distance, 50e6 - 1);
    }
}

TEST(ZoomedAbout, BesideTheGlobeItZoomsAboutTheMiddle) {
    const MapCamera zoomed = zoomedAbout(MapStyle::imagery, globeCamera(), kSize, {5, 5}, 1.2);
    EXPECT_EQ(zoomed.center, globeCamera().center);
    EXPECT_NEAR(zoomed.distance, 25e6, 1);
}

TEST(ZoomedAbout, FactorThatIsNoneChangesNothing) {
    for (const double factor : {0.0, -2.0, std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_EQ(zoomedAbout(MapStyle::imagery, globeCamera(), kSize, kMiddle, factor),
                  globeCamera());
    }
}

TEST(Rotated, PictureOfTheGlobeTurnsClockwise) {
    const MapCamera turned = rotated(MapStyle::hybrid, globeCamera(), kSize, 30);
    EXPECT_NEAR(turned.heading, 330, 1e-9) << "what points up now lay to the left";
    const auto place = [](const MapCamera& camera) {
        return makeProjection(MapStyle::hybrid, camera, kSize)->toScreen({30, -84}).at(0);
    };
    EXPECT_NEAR(place(globeCamera()).x, kMiddle.x, 1e-6);
    EXPECT_GT(place(turned).x, kMiddle.x + 5);
    EXPECT_EQ(rotated(MapStyle::hybrid, globeCamera(), kSize, std::nan("")), globeCamera());
}

TEST(Rotated, FlatMapKeepsNorthUp) {
    EXPECT_EQ(rotated(MapStyle::standard, flatCamera(), kSize, 30), flatCamera());
}

TEST(TurnAboutMiddle, CountsClockwiseDegrees) {
    EXPECT_NEAR(turnAboutMiddle(kSize, {300, 100}, {400, 200}), 90, 1e-9);
    EXPECT_NEAR(turnAboutMiddle(kSize, {400, 200}, {300, 100}), -90, 1e-9);
    EXPECT_NEAR(turnAboutMiddle(kSize, {200, 201}, {200, 199}), 2 * std::atan(0.01) * 57.29577951,
                1e-6)
        << "over the angle where its sign changes";
}

TEST(WheelZoom, ThreeNotchesOrSomePixelsDouble) {
    EXPECT_NEAR(wheelZoomFactor({}, {0, 360}), 2, 1e-9);
    EXPECT_NEAR(wheelZoomFactor({}, {0, -120}), std::exp2(-1.0 / 3), 1e-9);
    EXPECT_NEAR(wheelZoomFactor({0, 150}, {0, 120}), 2, 1e-9) << "pixels go before notches";
    EXPECT_EQ(wheelZoomFactor({30, 0}, {120, 0}), 1) << "to the side";
    EXPECT_EQ(wheelZoomFactor({}, {0, 1000000}), 8);
}

TEST(SteppedCamera, FlatMapMovesByAShareOfTheView) {
    const MapCamera right = steppedCamera(MapStyle::standard, flatCamera(), kSize, 0.15, 0);
    expectSameGround(right.center,
                     groundAt(MapStyle::standard, flatCamera(), {300 + 0.15 * 600, 200}));
    const MapCamera down = steppedCamera(MapStyle::standard, flatCamera(), kSize, 0, 0.15);
    expectSameGround(down.center,
                     groundAt(MapStyle::standard, flatCamera(), {300, 200 + 0.15 * 400}));
}

TEST(SteppedCamera, GlobeTurnsAlongItsParallelOrItsMeridian) {
    for (const double latitude : {-80.0, 0.0, 20.0, 60.0, 89.0}) {
        MapCamera camera = globeCamera();
        camera.center.lat = latitude;
        MapCamera right = camera;
        for (int i = 0; i < 9; ++i) {
            const MapCamera before = right;
            right = steppedCamera(MapStyle::imagery, right, kSize, 0.15, 0);
            EXPECT_DOUBLE_EQ(right.center.lat, latitude);
            const double turn = std::remainder(right.center.lon - before.center.lon, 360);
            EXPECT_GT(turn, 3);
            EXPECT_LE(turn, 100);
        }
        const MapCamera up = steppedCamera(MapStyle::imagery, camera, kSize, 0, -0.15);
        EXPECT_DOUBLE_EQ(up.center.lon, -84);
        EXPECT_GT(up.center.lat, latitude);
        EXPECT_LE(up.center.lat, 90);
        const MapCamera down = steppedCamera(MapStyle::imagery, camera, kSize, 0, 0.15);
        EXPECT_DOUBLE_EQ(down.center.lon, -84);
        EXPECT_LT(down.center.lat, latitude);
    }
}

TEST(SteppedCamera, StepBackIsTheSameStep) {
    const MapCamera there = steppedCamera(MapStyle::imagery, globeCamera(), kSize, 0.15, 0);
    expectSameGround(steppedCamera(MapStyle::imagery, there, kSize, -0.15, 0).center,
                     globeCamera().center);
}

TEST(SteppedCamera, NearTheGroundItIsAShareOfTheView) {
    MapCamera near = globeCamera();
    near.distance = 5e5;
    const auto ground = groundAt(MapStyle::imagery, near, {300 + 0.15 * 600, 200});
    const MapCamera stepped = steppedCamera(MapStyle::imagery, near, kSize, 0.15, 0);
    ASSERT_TRUE(ground);
    EXPECT_NEAR(stepped.center.lon, ground->lon, 0.05);
}

TEST(SteppedCamera, TurnedGlobeGoesTowardsTheKey) {
    // What lies right of the middle, with this direction up.
    struct Case {
        double heading;
        double east, north;
    };
    for (const Case& c :
         {Case{30, 1, 0}, Case{100, 0, -1}, Case{180, -1, 0}, Case{265, 0, 1}, Case{330, 1, 0}}) {
        const MapCamera from = globeCamera(c.heading);
        const MapCamera to = steppedCamera(MapStyle::hybrid, from, kSize, 0.1, 0);
        const double east = to.center.lon - from.center.lon;
        const double north = to.center.lat - from.center.lat;
        EXPECT_EQ(std::abs(east) < 1e-9, c.east == 0) << c.heading;
        EXPECT_EQ(std::abs(north) < 1e-9, c.north == 0) << c.heading;
        EXPECT_GE(east * c.east + north * c.north, 1) << c.heading;
        EXPECT_EQ(to.heading, from.heading);
    }
}

}  // namespace
}  // namespace veloran
