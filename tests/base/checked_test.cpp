#include "base/checked.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace veloran {
namespace {

TEST(CheckedInt64, TruncatesTowardZero) {
    EXPECT_EQ(checkedInt64(1.9), 1);
    EXPECT_EQ(checkedInt64(-1.9), -1);
    EXPECT_EQ(checkedInt64(-0x1p63), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(checkedInt64(std::nextafter(0x1p63, 0)), 9223372036854774784);
}

TEST(CheckedInt64DeathTest, StopsTheProgramOutsideSixtyFourBits) {
    EXPECT_DEATH(checkedInt64(0x1p63), "veloran: ");
    EXPECT_DEATH(checkedInt64(std::nextafter(-0x1p63, -INFINITY)), "veloran: ");
    EXPECT_DEATH(checkedInt64(INFINITY), "veloran: ");
    EXPECT_DEATH(checkedInt64(NAN), "veloran: ");
}

TEST(CheckedUInt16, KeepsPortsInRange) {
    EXPECT_EQ(checkedUInt16(0), 0);
    EXPECT_EQ(checkedUInt16(65535), 65535);
}

TEST(CheckedUInt16DeathTest, StopsTheProgramOutsideSixteenBits) {
    EXPECT_DEATH(checkedUInt16(-1), "veloran: ");
    EXPECT_DEATH(checkedUInt16(65536), "veloran: ");
}

}  // namespace
}  // namespace veloran
