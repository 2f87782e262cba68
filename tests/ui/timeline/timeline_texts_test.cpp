#include "ui/timeline/timeline_texts.h"

#include <gtest/gtest.h>

#include <limits>

#include "ui/timeline/timeline_ticks.h"

namespace veloran {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

TEST(TimelineTexts, NumbersThatAreNoneReadAsADash) {
    EXPECT_EQ(hoursText(kNone), "—");
    EXPECT_EQ(timelineLabel(Instant{kNone}, 0, 12), "—");
    EXPECT_EQ(timelineLabel(Instant{0}, kInfinity, 12), "—");
    EXPECT_EQ(timelineLabel(Instant{1e17}, 0, 12), "—") << "beyond the years of the calendar";
    EXPECT_EQ(autoThresholdText(kNone), std::nullopt);
}

TEST(TimelineTexts, DateShowsOnlyBeyondADay) {
    const Instant start{789304410};
    EXPECT_EQ(timelineLabel(start, 0, 24), "11:13");
    EXPECT_EQ(timelineLabel(start, 0, 24.01), "Jan 5 11:13");
}

TEST(TimelineTexts, PassKeyIsNumberAndRise) {
    EXPECT_EQ(passKey(25544, Instant{800000000.5}), "25544_800000000.5");
    EXPECT_NE(passKey(25544, Instant{800000000.5}), passKey(25544, Instant{800000000.25}));
}

TEST(TimelineTexts, SummaryTellsWhatThereIsToTell) {
    EXPECT_EQ(timelineSummary(0, std::nullopt, std::nullopt), "0 passes shown.");
    EXPECT_EQ(timelineSummary(1, "A rises", std::nullopt), "1 pass shown. Next: A rises.");
    EXPECT_EQ(timelineSummary(2, "A rises", "B rises"),
              "2 passes shown. Next: A rises. Marked: B rises.");
}

TEST(TimelineTexts, SpokenPassSurvivesAnyNumbers) {
    PredictedPass pass;
    pass.riseTime = Instant{789304410};
    pass.maxElevation = 45.2;
    EXPECT_EQ(spokenPass("RS-44", pass, Instant{789304100}),
              "RS-44 rises 11:13, in 5m, highest 45°");
    pass.riseTime = Instant{kNone};
    pass.maxElevation = kNone;
    EXPECT_EQ(spokenPass("RS-44", pass, Instant{0}), "RS-44 rises —, —, highest —");
}

TEST(TimelineTicks, SpanOfNoOrEndlessTimeHasNone) {
    for (const double hours : {0.0, -3.0, kNone, kInfinity, 1e12}) {
        EXPECT_TRUE(timelineTicks(hours, 500).empty()) << hours;
    }
}

}  // namespace
}  // namespace veloran
