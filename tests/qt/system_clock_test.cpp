#include "qt/system_clock.h"

#include <gtest/gtest.h>

#include <QDateTime>

namespace veloran {

TEST(SystemClock, AgreesWithAnotherReadingOfTheSameClock) {
    const SystemClock clock;
    const double before = static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1000;
    const double now = clock.now().unixSeconds();
    const double after = static_cast<double>(QDateTime::currentMSecsSinceEpoch() + 1) / 1000;
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
}

}  // namespace veloran
