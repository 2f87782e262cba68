#include "orbit/sun_moon.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/calendar.h"
#include "orbit/constants.h"

namespace veloran {
namespace {

Instant date(std::int64_t year, std::int64_t month, std::int64_t day, double hours = 0.0) {
    return *instantFromDate(year, month, day) + hours * 3600.0;
}

TEST(Sun, DeclinationFollowsTheSeasons) {
    EXPECT_NEAR(sunEquatorial(date(2024, 3, 20, 3.1)).dec * rad2deg, 0.0, 0.5);
    EXPECT_NEAR(sunEquatorial(date(2024, 6, 20, 20.9)).dec * rad2deg, 23.44, 0.05);
    EXPECT_NEAR(sunEquatorial(date(2024, 12, 21, 9.3)).dec * rad2deg, -23.44, 0.05);
}

TEST(Sun, DistanceStaysWithinItsOrbit) {
    for (int day = 0; day < 366; ++day) {
        const double km = sunEquatorial(date(2024, 1, 1) + day * 86400.0).distanceKm;
        EXPECT_GT(km, 147.05e6) << day;
        EXPECT_LT(km, 152.15e6) << day;
    }
}

TEST(Moon, DistanceStaysWithinItsOrbit) {
    for (int hour = 0; hour < 24 * 400; hour += 3) {
        const double km = moonEquatorial(date(2024, 1, 1) + hour * 3600.0).distanceKm;
        EXPECT_GT(km, 356000.0) << hour;
        EXPECT_LT(km, 407000.0) << hour;
    }
}

TEST(SunAndMoon, RightAscensionIsWithinOneTurn) {
    for (int hour = 0; hour < 24 * 400; hour += 5) {
        for (const double ra : {sunEquatorial(date(2024, 1, 1) + hour * 3600.0).ra,
                                moonEquatorial(date(2024, 1, 1) + hour * 3600.0).ra}) {
            EXPECT_GE(ra, 0.0) << hour;
            EXPECT_LT(ra, twoPi) << hour;
        }
    }
}

TEST(Sun, SubPointStaysInTheTropicsAndMovesWest15DegreesAnHour) {
    for (int hour = 0; hour < 24 * 366; hour += 7) {
        const Instant at = date(2024, 1, 1) + hour * 3600.0;
        const SubSatellitePoint now = sunSubPoint(at);
        const SubSatellitePoint next = sunSubPoint(at + 3600.0);
        EXPECT_LE(std::abs(now.latitudeDeg), obliquity(at) * rad2deg + 1e-9);
        EXPECT_LE(std::abs(now.longitudeDeg), 180.0);
        EXPECT_NEAR(std::remainder(next.longitudeDeg - now.longitudeDeg, 360.0), -15.0, 0.05);
        EXPECT_EQ(now.altitudeKm, sunEquatorial(at).distanceKm);
    }
}

TEST(SunAndMoon, StandInTheZenithOverTheirSubPoint) {
    // A little beside it, where the arcsine is not at its end.
    constexpr double beside = 0.01;
    for (int hour = 0; hour < 24 * 30; hour += 5) {
        const Instant at = date(2024, 5, 1) + hour * 3600.0;
        const SubSatellitePoint sun = sunSubPoint(at);
        EXPECT_NEAR(sunTopocentric(at, sun.latitudeDeg + beside, sun.longitudeDeg).elevation,
                    90.0 - beside, 1e-8);
        const SubSatellitePoint moon = moonSubPoint(at);
        EXPECT_NEAR(moonTopocentric(at, moon.latitudeDeg + beside, moon.longitudeDeg).elevation,
                    90.0 - beside, 1e-8);
    }
}

TEST(Sun, AzimuthJustWestOfNorthIsBelow360) {
    // South of the tropics the noon Sun crosses the north from east to west.
    double previous = sunTopocentric(date(2024, 6, 1), -40.0, 0.0).azimuth;
    bool crossed = false;
    for (int second = 0; second < 86400; second += 10) {
        const double azimuth = sunTopocentric(date(2024, 6, 1) + second, -40.0, 0.0).azimuth;
        EXPECT_GE(azimuth, 0.0);
        EXPECT_LE(azimuth, 360.0);
        if (previous < 1.0 && azimuth > 359.0) crossed = true;
        previous = azimuth;
    }
    EXPECT_TRUE(crossed);
}

TEST(SunAndMoon, HaveNoRangeRate) {
    EXPECT_EQ(sunTopocentric(date(2024, 6, 1), 48.0, 11.0).rangeRate, 0.0);
    EXPECT_EQ(moonTopocentric(date(2024, 6, 1), 48.0, 11.0).rangeRate, 0.0);
}

TEST(SunAndMoon, NonsenseOfTimeAndPlaceEnds) {
    EXPECT_TRUE(std::isnan(sunTopocentric(Instant{std::nan("")}, 48.0, 11.0).elevation));
    EXPECT_TRUE(std::isnan(moonSubPoint(Instant{1e300}).latitudeDeg));
    EXPECT_TRUE(std::isfinite(sunTopocentric(date(2024, 6, 1), 48.0, 1e300).elevation));
    EXPECT_TRUE(std::isnan(moonTopocentric(date(2024, 6, 1), std::nan(""), 11.0).elevation));
}

}  // namespace
}  // namespace veloran
