#include "orbit/constants.h"

#include <gtest/gtest.h>

#include <cmath>

namespace veloran {
namespace {

TEST(Constants, GravityModelsStayMixed) {
    EXPECT_NEAR(WGS84::xke, 60.0 / std::sqrt(std::pow(6378.135, 3) / 398600.8), 1e-14);
    EXPECT_NEAR(WGS84::tumin, 1.0 / WGS84::xke, 1e-12);
    EXPECT_EQ(WGS84::radiusEarthKm, 6378.137);
    EXPECT_DOUBLE_EQ(WGS84::j3oj2, WGS84::j3 / WGS84::j2);
    EXPECT_DOUBLE_EQ(WGS84::flattening, 1.0 / 298.257223563);
    EXPECT_DOUBLE_EQ(WGS84::e2, WGS84::flattening * (2.0 - WGS84::flattening));
}

TEST(Constants, DerivedNumbersOfThePropagator) {
    EXPECT_DOUBLE_EQ(WGS84::radiusEarthKm * WGS84::xke / 60.0, 7.905372989414474);
    EXPECT_DOUBLE_EQ(78.0 / WGS84::radiusEarthKm + 1.0, 1.0122292763545218);
    EXPECT_DOUBLE_EQ(std::pow((120.0 - 78.0) / WGS84::radiusEarthKm, 4), 1.8802768006108976e-09);
    EXPECT_DOUBLE_EQ(1.0 - WGS84::e2, 0.9933056200098587);
    EXPECT_DOUBLE_EQ(xpdotp * twoPi, minutesPerDay);
}

}  // namespace
}  // namespace veloran
