#include "orbit/angles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace veloran {
namespace {

TEST(WithoutWholeTurns, IsTheRemainderToTheLastBit) {
    for (double turns = -40.0; turns <= 40.0; turns += 0.25) {
        for (const double by : {0.0, 1e-15, -1e-15, 1e-9, 0.1}) {
            const double angle = turns * twoPi + by;
            const double rest = withoutWholeTurns(angle);
            EXPECT_EQ(rest, std::fmod(angle, twoPi)) << turns << " turns and " << by;
            EXPECT_EQ(std::signbit(rest), std::signbit(angle)) << turns << " turns and " << by;
        }
        const double far = turns * 123456.789;
        EXPECT_EQ(withoutWholeTurns(far), std::fmod(far, twoPi)) << far;
    }
    EXPECT_EQ(withoutWholeTurns(1e300), std::fmod(1e300, twoPi));
    EXPECT_TRUE(std::isnan(withoutWholeTurns(std::numeric_limits<double>::infinity())));
    EXPECT_TRUE(std::isnan(withoutWholeTurns(std::numeric_limits<double>::quiet_NaN())));
}

TEST(WithinHalfTurn, WholeTurnsAreTakenAway) {
    EXPECT_EQ(withinHalfTurn(190.0, 360.0), -170.0);
    EXPECT_EQ(withinHalfTurn(-190.0, 360.0), 170.0);
    EXPECT_EQ(withinHalfTurn(725.0, 360.0), 5.0);
    EXPECT_EQ(withinHalfTurn(-725.0, 360.0), -5.0);
}

TEST(WithinHalfTurn, BothEndsStay) {
    EXPECT_EQ(withinHalfTurn(180.0, 360.0), 180.0);
    EXPECT_EQ(withinHalfTurn(-180.0, 360.0), -180.0);
}

TEST(WithinHalfTurn, NonsenseEnds) {
    EXPECT_LE(std::abs(withinHalfTurn(1e300, 360.0)), 180.0);
    EXPECT_LE(std::abs(withinHalfTurn(-1e17, 360.0)), 180.0);
    EXPECT_TRUE(std::isnan(withinHalfTurn(std::numeric_limits<double>::quiet_NaN(), 360.0)));
    EXPECT_TRUE(std::isnan(withinHalfTurn(std::numeric_limits<double>::infinity(), 360.0)));
}

TEST(SineCosine, TurnedIsThatOfTheSum) {
    for (const double by : {0.0, 1e-9, -0.001, 0.0299, -0.03, 0.5, -3.0}) {
        for (double angle = -7.0; angle < 7.0; angle += 0.37) {
            const SineCosine turned = sineCosine(angle).turnedBy(by);
            EXPECT_NEAR(turned.sine, std::sin(angle + by), 1e-15) << angle << " by " << by;
            EXPECT_NEAR(turned.cosine, std::cos(angle + by), 1e-15) << angle << " by " << by;
        }
    }
}

TEST(SineCosine, WhatIsNotANumberStaysSo) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(std::isnan(sineCosine(1.0).turnedBy(nan).sine));
    EXPECT_TRUE(std::isnan(sineCosine(1.0).turnedBy(HUGE_VAL).cosine));
}

}  // namespace
}  // namespace veloran
