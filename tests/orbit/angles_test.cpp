#include "orbit/angles.h"

#include <gtest/gtest.h>

#include <limits>

namespace veloran {
namespace {

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

}  // namespace
}  // namespace veloran
