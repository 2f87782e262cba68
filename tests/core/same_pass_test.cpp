#include "core/same_pass.h"

#include <gtest/gtest.h>

namespace veloran::test {
namespace {

constexpr Instant kRise{817000000.0};
const PassSpan kPass{7, kRise, kRise + 600};

TEST(SamePass, IsOneWhoseTimesOverlap) {
    EXPECT_TRUE(isSamePass(kPass, kPass));
    EXPECT_TRUE(isSamePass(kPass, {7, kRise + 3.7, kRise + 603}));  // newer elements
    EXPECT_TRUE(isSamePass(kPass, {7, kRise - 3.7, kRise + 597}));
    EXPECT_TRUE(isSamePass(kPass, {7, kRise + 290, kRise + 600}));  // searched half-way
    EXPECT_TRUE(isSamePass({7, kRise, kRise}, {7, kRise, kRise}));  // without a length
}

TEST(SamePass, IsNotOneThatOnlyTouches) {
    EXPECT_FALSE(isSamePass(kPass, {7, kRise + 600, kRise + 1200}));
    EXPECT_FALSE(isSamePass({7, kRise + 600, kRise + 1200}, kPass));
    EXPECT_FALSE(isSamePass(kPass, {7, kRise + 6000, kRise + 6600}));
}

TEST(SamePass, IsNotOneOfAnotherBodyAtTheSameTime) {
    EXPECT_FALSE(isSamePass(kPass, {8, kRise, kRise + 600}));
}

TEST(SamePass, SpanIsThatOfThePass) {
    PredictedPass pass;
    pass.riseTime = kRise;
    pass.setTime = kRise + 1;
    const auto span = spanOf(-2, pass);
    EXPECT_EQ(span.noradId, -2);
    EXPECT_EQ(span.riseTime, kRise);
    EXPECT_EQ(span.setTime, kRise + 1);
}

}  // namespace
}  // namespace veloran::test
