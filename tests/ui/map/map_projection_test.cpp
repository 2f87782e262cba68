#include "ui/map/map_projection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace veloran::test {
namespace {

constexpr QSizeF kView(420, 400);
constexpr MapStyle kFlat = MapStyle::standard;
constexpr MapStyle kGlobe = MapStyle::imagery;

TEST(MapCameraBounds, FittedCamerasStayAsTheyAre) {
    for (const MapStyle style : kMapStyles) {
        for (const QSizeF size : {kView, QSizeF(1600, 300), QSizeF(250, 900)}) {
            const auto fitted = fittedCamera(style, -84);
            EXPECT_EQ(clampedCamera(style, fitted, size), fitted);
        }
    }
}

TEST(MapCameraBounds, FlatMapZoomsOutToTheWholeWidthOfTheWorld) {
    const auto camera = clampedCamera(kFlat, {{0, 0}, 1e12, 0}, kView);
    const auto map = makeProjection(kFlat, camera, kView);
    EXPECT_NEAR(map->toScreen({0, -90})[0].x, 105, 1e-9);
    EXPECT_NEAR(map->toScreen({0, 90})[0].x, 315, 1e-9);
}

TEST(MapCameraBounds, WideFlatMapZoomsOutToTheHeightOfTheWorld) {
    EXPECT_DOUBLE_EQ(greatestFlatDistance(QSizeF(1600, 300)), 5e7);
}

TEST(MapCameraBounds, BothStylesZoomInToFiveDegrees) {
    for (const MapStyle style : kMapStyles) {
        const auto camera = clampedCamera(style, {{0, 30}, 1, 0}, kView);
        const auto map = makeProjection(style, camera, kView);
        EXPECT_NEAR(map->toGeo({0, 200})->lon, 27.5, 1e-6) << mapStyleName(style);
        EXPECT_NEAR(map->toGeo({420, 200})->lon, 32.5, 1e-6) << mapStyleName(style);
    }
}

TEST(MapCameraBounds, FlatMapShowsNothingBeyondThePolesThatItNeedNot) {
    const auto near = clampedCamera(kFlat, {{89, 0}, 2.5e7, 0}, kView);
    EXPECT_DOUBLE_EQ(near.center.lat, 45);
    EXPECT_DOUBLE_EQ(clampedCamera(kFlat, {{-89, 0}, 2.5e7, 0}, kView).center.lat, -45);
    EXPECT_DOUBLE_EQ(clampedCamera(kFlat, {{30, 0}, 5e7, 0}, kView).center.lat, 0);
    EXPECT_DOUBLE_EQ(clampedCamera(kFlat, {{30, 0}, 9e7, 0}, kView).center.lat, 0);
}

TEST(MapCameraBounds, AnglesAreWrapped) {
    const auto camera = clampedCamera(kGlobe, {{99, 540}, 3e7, -30}, kView);
    EXPECT_EQ(camera, (MapCamera{{90, -180}, 3e7, 330}));
    EXPECT_EQ(clampedCamera(kGlobe, {{0, 0}, 3e7, 720}, kView).heading, 0);
    EXPECT_EQ(clampedCamera(kGlobe, {{0, 0}, 3e7, -1e-30}, kView).heading, 0);
    EXPECT_EQ(clampedCamera(kFlat, {{0, 190}, 5e7, 45}, kView), (MapCamera{{0, -170}, 5e7, 0}));
}

TEST(MapCameraBounds, WhatIsNotFiniteBecomesTheFittedCameras) {
    const double inf = std::numeric_limits<double>::infinity();
    for (const double bad : {inf, -inf, std::nan("")}) {
        for (const MapStyle style : kMapStyles) {
            EXPECT_EQ(clampedCamera(style, {{bad, bad}, bad, bad}, kView), fittedCamera(style, 0));
        }
    }
}

TEST(MapCameraBounds, EmptyViewStillHasAProjection) {
    for (const MapStyle style : kMapStyles) {
        const auto camera = clampedCamera(style, fittedCamera(style, 0), QSizeF(0, 0));
        const auto map = makeProjection(style, camera, QSizeF(0, 0));
        EXPECT_TRUE(std::isfinite(map->toScreen(camera.center).front().x));
    }
}

}  // namespace
}  // namespace veloran::test
