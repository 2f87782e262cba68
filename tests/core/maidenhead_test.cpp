#include "core/maidenhead.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace veloran {
namespace {

TEST(Maidenhead, DefaultObserverIsInEm73) {
    EXPECT_EQ(toMaidenhead(33.87, -84.34).substr(0, 4), "EM73");
}

TEST(Maidenhead, OriginIsFirstCellOfJj) {
    EXPECT_EQ(toMaidenhead(0, 0), "JJ00aa");
}

TEST(Maidenhead, PoleOnTheDateLineCapsOnlyTheLetters) {
    EXPECT_EQ(toMaidenhead(90, 180), "RR00aa");
}

TEST(Maidenhead, SouthPoleOnTheDateLineIsFirstCellOfAll) {
    EXPECT_EQ(toMaidenhead(-90, -180), "AA00aa");
}

TEST(Maidenhead, PositionsBelowTheRangeCannotHaveOne) {
    EXPECT_TRUE(canHaveLocator(-90, -180));
    EXPECT_TRUE(canHaveLocator(95, 400));
    EXPECT_FALSE(canHaveLocator(-90.001, 0));
    EXPECT_FALSE(canHaveLocator(0, -180.001));
    EXPECT_FALSE(canHaveLocator(std::nan(""), 0));
    EXPECT_FALSE(canHaveLocator(0, std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(canHaveLocator(1e300, 0));
}

TEST(MaidenheadDeathTest, PositionsBelowTheRangeStopTheProgram) {
    EXPECT_DEATH(toMaidenhead(-91, 0), "veloran: ");
    EXPECT_DEATH(toMaidenhead(0, -181), "veloran: ");
    EXPECT_DEATH(toMaidenhead(std::nan(""), 0), "veloran: ");
}

}  // namespace
}  // namespace veloran
