#include "qt/system_clock.h"

#include <gtest/gtest.h>

#include <QDateTime>

namespace veloran {

TEST(SystemClock, AgreesWithAnotherReadingOfTheSameClock) {
    const SystemClock clock;
    // Whole milliseconds: Qt 6.4 cuts them off, Qt 6.8 rounds them.
    const auto before = QDateTime::currentMSecsSinceEpoch();
    const double now = clock.now().unixSeconds();
    const auto after = QDateTime::currentMSecsSinceEpoch();
    EXPECT_LE(static_cast<double>(before - 1) / 1000, now);
    EXPECT_LE(now, static_cast<double>(after + 1) / 1000);
}

}  // namespace veloran
