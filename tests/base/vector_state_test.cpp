#include "base/vector_state.h"

#include <gtest/gtest.h>

#include "support/vector_halves.h"

namespace veloran::test {
namespace {

double slowSum(double first, int count) {
    double sum = 0;
    for (int i = 0; i < count; ++i) sum += first / (i + 1);
    return sum;
}

TEST(VectorState, TheUpperHalvesAreFreeAfterwardsAndNumbersStay) {
    volatile double first = 0.1;  // so that both sums are computed
    const double before = slowSum(first, 1000);
    dirtyUpperHalves();
    clearUpperVectorHalves();
    if (canSeeUpperHalves()) {
        dirtyUpperHalves();
        ASSERT_TRUE(areUpperHalvesInUse());
        clearUpperVectorHalves();
        EXPECT_FALSE(areUpperHalvesInUse());
    }
    EXPECT_EQ(slowSum(first, 1000), before);
}

}  // namespace
}  // namespace veloran::test
