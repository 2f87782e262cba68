#include "orbit/look_angles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "sample_orbits.h"

namespace veloran::test {
namespace {

constexpr double kEarthRotation = 7.2921158553e-5;  // rad/s

TEST(Jday, NoonIsHalfADay) {
    const JulianDate noon = jday(2000, 1, 1, 12, 0, 0.0);
    EXPECT_EQ(noon.jd, 2451544.5);
    EXPECT_EQ(noon.jdFrac, 0.5);
}

TEST(Jday, FractionIsNotNormalised) {
    EXPECT_EQ(jday(2000, 1, 1, 48, 0, 0.0).jd, 2451544.5);
    EXPECT_EQ(jday(2000, 1, 1, 48, 0, 0.0).jdFrac, 2.0);
    EXPECT_EQ(jday(2000, 1, 1, 0, -60, 0.0).jdFrac, -1.0 / 24.0);
}

TEST(JdayFromDate, CountsDaysFrom1901To2099) {
    Random random;
    SCOPED_TRACE(random.trace());
    for (int i = 0; i < 10000; ++i) {
        const double seconds = std::floor(random.between(-3.1556e9, 3.1241e9));
        const JulianDate date = jdayFromDate(Instant{seconds});
        EXPECT_EQ(date.jd, 2451910.5 + std::floor(seconds / 86400.0)) << seconds;
        EXPECT_NEAR(date.jdFrac, seconds / 86400.0 - std::floor(seconds / 86400.0), 1e-11)
            << seconds;
        EXPECT_GE(date.jdFrac, 0.0);
        EXPECT_LT(date.jdFrac, 1.0);
    }
}

TEST(JdayFromDate, MomentBeyondTheCalendarIsNoNumber) {
    for (const double seconds : {std::numeric_limits<double>::quiet_NaN(),
                                 std::numeric_limits<double>::infinity(), -1e300}) {
        EXPECT_TRUE(std::isnan(jdayFromDate(Instant{seconds}).jd));
        EXPECT_TRUE(std::isnan(jdayFromDate(Instant{seconds}).jdFrac));
        EXPECT_TRUE(std::isnan(minutesSinceEpoch(SatRec{}, Instant{seconds})));
    }
}

TEST(DateFromJday, IsNotTheInverseOfJdayFromDate) {
    EXPECT_EQ(dateFromJday(2451545.0, 0.0), Instant::fromUnixSeconds(0.0));
    EXPECT_EQ(dateFromJday(2451546.0, 0.5), Instant::fromUnixSeconds(129600.0));
}

TEST(Gstime, StaysWithinOneTurn) {
    Random random;
    SCOPED_TRACE(random.trace());
    for (int i = 0; i < 100000; ++i) {
        const double jd = random.between(2400000.0, 2500000.0);
        const double angle = gstime(jd);
        EXPECT_GE(angle, 0.0) << jd;
        EXPECT_LT(angle, twoPi) << jd;
    }
}

TEST(Gstime, TurnsOnceInASiderealDay) {
    const double turned = gstime(2460000.5 + 0.25) - gstime(2460000.5);
    EXPECT_NEAR(std::remainder(turned - kEarthRotation * 21600.0, twoPi), 0.0, 1e-7);
}

TEST(ObserverEcef, EquatorAndPole) {
    const Vec3 equator = observerECEF(0.0, 90.0, 1.0);
    EXPECT_NEAR(equator.x, 0.0, 1e-9);
    EXPECT_NEAR(equator.y, 6379.137, 1e-9);
    EXPECT_NEAR(equator.z, 0.0, 1e-9);
    const Vec3 pole = observerECEF(-90.0, 0.0, 0.0);
    EXPECT_NEAR(pole.z, -6356.752314245, 1e-8);
}

TEST(TemeToTopocentric, BodyDueWestHasAzimuth270) {
    const TopocentricResult look =
        temeToTopocentric({6378.137, -1000.0, 0.0}, {0.0, 0.0, 0.0}, 0.0, 0.0, 0.0, 0.0);
    EXPECT_NEAR(look.azimuth, 270.0, 1e-9);
    EXPECT_NEAR(look.elevation, 0.0, 1e-9);
    EXPECT_NEAR(look.range, 1000.0, 1e-9);
}

TEST(TemeToTopocentric, BodyAHairWestOfNorthHasAzimuth360) {
    const TopocentricResult look =
        temeToTopocentric({6378.137, -1e-20, 1000.0}, {0.0, 0.0, 0.0}, 0.0, 0.0, 0.0, 0.0);
    EXPECT_EQ(look.azimuth, 360.0);
}

TEST(TemeToTopocentric, BodyAtTheZenithHasElevation90) {
    const TopocentricResult look =
        temeToTopocentric({0.0, 7000.0, 0.0}, {0.0, 0.0, 0.0}, 0.0, 90.0, 0.0, 0.0);
    EXPECT_NEAR(look.elevation, 90.0, 2e-6);
}

TEST(TemeToTopocentric, SineThatRoundsPastOneIsNoNumber) {
    int places = 0;
    int noNumbers = 0;
    for (double lat = -90.0; lat <= 90.0; lat += 2.5) {
        for (double theta = 0.0; theta < 360.0; theta += 7.5) {
            ++places;
            const Vec3 below = observerECEF(lat, theta, 0.0);
            const double out = std::cos(lat * deg2rad);
            const Vec3 body{below.x + 1000.0 * out * std::cos(theta * deg2rad),
                            below.y + 1000.0 * out * std::sin(theta * deg2rad),
                            below.z + 1000.0 * std::sin(lat * deg2rad)};
            const double elevation =
                temeToTopocentric(body, {}, lat, 0.0, 0.0, theta * deg2rad).elevation;
            if (std::isnan(elevation)) {
                ++noNumbers;
            } else {
                EXPECT_NEAR(elevation, 90.0, 2e-6) << lat << ", " << theta;
            }
        }
    }
    EXPECT_GT(noNumbers, 0);
    EXPECT_LT(noNumbers, places);
}

TEST(TemeToTopocentric, OverheadAndHorizontalMotionHasNoRangeRate) {
    const TopocentricResult look =
        temeToTopocentric({6878.137, 0.0, 0.0}, {0.0, 7.6, 0.0}, 0.0, 0.0, 0.0, 0.0);
    EXPECT_NEAR(look.rangeRate, 0.0, 1e-12);
}

TEST(TemeToTopocentric, BodyAtRestInTheStarsRecedesByTheRotation) {
    // Due west on the horizon, at rest: the observer is carried east.
    const TopocentricResult look =
        temeToTopocentric({6378.137, -1000.0, 0.0}, {0.0, 0.0, 0.0}, 0.0, 0.0, 0.0, 0.0);
    EXPECT_NEAR(look.rangeRate, kEarthRotation * 6378.137, 1e-9);
}

TEST(TemeToTopocentric, HeightIsInKilometres) {
    const auto range = [](double altKm) {
        return temeToTopocentric({7378.137, 0.0, 0.0}, {}, 0.0, 0.0, altKm, 0.0).range;
    };
    EXPECT_NEAR(range(0.0) - range(1.0), 1.0, 1e-9);
}

TEST(LookAngles, RangeRateIsTheRateOfTheRange) {
    Random random;
    SCOPED_TRACE(random.trace());
    for (int i = 0; i < 100; ++i) {
        const SatRec satrec = TLEParser::createSatRec(randomOrbit(random));
        const Instant t = sampleEpoch() + std::floor(random.between(0.0, 86400.0));
        const double lat = random.between(-90.0, 90.0);
        const double lon = random.between(-180.0, 180.0);
        const auto before = lookAngles(satrec, t - 0.5, lat, lon, 0.0);
        const auto at = lookAngles(satrec, t, lat, lon, 0.0);
        const auto after = lookAngles(satrec, t + 0.5, lat, lon, 0.0);
        ASSERT_TRUE(before && at && after) << i;
        EXPECT_NEAR(at->rangeRate, after->range - before->range, 0.02) << i;
    }
}

TEST(LookAngles, NonsenseIsAbsent) {
    const SatRec satrec = TLEParser::createSatRec(lowOrbit());
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(lookAngles(satrec, sampleEpoch(), 48.0, 11.0, 0.5));
    EXPECT_FALSE(lookAngles(satrec, Instant{nan}, 48.0, 11.0, 0.5));
    EXPECT_FALSE(lookAngles(satrec, Instant{1e300}, 48.0, 11.0, 0.5));
    EXPECT_FALSE(lookAngles(satrec, sampleEpoch(), nan, 11.0, 0.5));
    EXPECT_FALSE(lookAngles(satrec, sampleEpoch(), 48.0, 11.0, 1e300));
}

TEST(LookAngles, FailedPropagationIsAbsent) {
    EXPECT_FALSE(lookAngles(SatRec{}, sampleEpoch(), 48.0, 11.0, 0.5));
}

}  // namespace
}  // namespace veloran::test
