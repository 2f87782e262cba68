#include "ui/map/map_camera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "ui/map/camera_motion.h"

namespace veloran {
namespace {

TEST(MapStyle, NamesAndLabels) {
    EXPECT_EQ(mapStyleName(MapStyle::standard), "standard");
    EXPECT_EQ(mapStyleLabel(MapStyle::standard), "Map");
    EXPECT_EQ(mapStyleName(MapStyle::imagery), "imagery");
    EXPECT_EQ(mapStyleLabel(MapStyle::imagery), "Satellite");
    EXPECT_EQ(mapStyleName(MapStyle::hybrid), "hybrid");
    EXPECT_EQ(mapStyleLabel(MapStyle::hybrid), "Hybrid");
    for (const MapStyle style : kMapStyles) EXPECT_EQ(mapStyleNamed(mapStyleName(style)), style);
}

TEST(MapStyle, UnknownNameIsTheFirstStyle) {
    for (const char* name : {"", "Standard", "globe", "imagery "}) {
        EXPECT_EQ(mapStyleNamed(name), MapStyle::standard) << name;
    }
}

TEST(FittedCamera, FlatMapShowsTheEquatorBelowTheObserver) {
    EXPECT_EQ(fittedCamera(MapStyle::standard, -84.34),
              (MapCamera{.center = {0, -84.34}, .distance = 50e6, .heading = 0}));
}

TEST(FittedCamera, GlobeIsNearerAndTiltedToTheNorth) {
    for (const MapStyle style : {MapStyle::imagery, MapStyle::hybrid}) {
        EXPECT_EQ(fittedCamera(style, 12.5),
                  (MapCamera{.center = {20, 12.5}, .distance = 30e6, .heading = 0}));
    }
}

TEST(FittedCamera, LongitudeIsBroughtOntoTheEarth) {
    EXPECT_DOUBLE_EQ(fittedCamera(MapStyle::standard, 370).center.lon, 10);
    EXPECT_DOUBLE_EQ(
        fittedCamera(MapStyle::standard, std::numeric_limits<double>::quiet_NaN()).center.lon, 0);
}

const MapCamera kFrom{.center = {0, 170}, .distance = 1e6, .heading = 350};
const MapCamera kTo{.center = {20, -170}, .distance = 1e8, .heading = 10};

TEST(EasedCamera, EndsAreExact) {
    EXPECT_EQ(easedCamera(kFrom, kTo, 0), kFrom);
    EXPECT_EQ(easedCamera(kFrom, kTo, 1), kTo);
    EXPECT_EQ(easedCamera(kFrom, kTo, -3), kFrom);
    EXPECT_EQ(easedCamera(kFrom, kTo, 7), kTo);
}

TEST(EasedCamera, HalfWayGoesTheShortWayRound) {
    const MapCamera half = easedCamera(kFrom, kTo, 0.5);
    EXPECT_DOUBLE_EQ(half.center.lat, 10);
    EXPECT_DOUBLE_EQ(std::abs(half.center.lon), 180) << "over the date line";
    EXPECT_NEAR(half.heading, 0, 1e-9) << "over north";
    EXPECT_NEAR(half.distance, 1e7, 1e-3) << "the geometric mean";
}

TEST(EasedCamera, IsSlowAtBothEnds) {
    const double first = easedCamera(kFrom, kTo, 0.1).center.lat;
    const double middle =
        easedCamera(kFrom, kTo, 0.55).center.lat - easedCamera(kFrom, kTo, 0.45).center.lat;
    const double last = 20 - easedCamera(kFrom, kTo, 0.9).center.lat;
    EXPECT_LT(first, middle / 2);
    EXPECT_NEAR(first, last, 1e-9);
}

TEST(CameraMotion, TakesFourTenthsOfASecond) {
    const Instant start{1000};
    const CameraMotion motion{kFrom, kTo, start};
    EXPECT_EQ(motion.at(start), kFrom);
    EXPECT_NEAR(motion.at(start + 0.2).center.lat, 10, 1e-9);
    EXPECT_FALSE(motion.isOver(start + 0.39));
    EXPECT_TRUE(motion.isOver(start + 0.41));
    EXPECT_EQ(motion.at(start + 0.41), kTo);
}

TEST(CameraMotion, ClockThatIsSetBackEndsIt) {
    const CameraMotion motion{kFrom, kTo, Instant{1000}};
    EXPECT_TRUE(motion.isOver(Instant{900}));
    EXPECT_EQ(motion.at(Instant{900}), kTo);
}

}  // namespace
}  // namespace veloran
