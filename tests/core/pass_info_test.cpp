#include "core/pass_info.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace veloran {
namespace {

PassInfo somePass() {
    PassInfo info;
    info.satellite = std::make_shared<Satellite>("ISS (ZARYA)", 25544);
    info.pass.riseTime = Instant{750144961.0};  // 2024-10-09 05:36:01 UTC
    info.pass.peakTime = info.pass.riseTime + 300;
    info.pass.setTime = info.pass.riseTime + 605.9;
    info.pass.duration = 605.9;
    info.pass.maxElevation = 45.25;
    info.pass.riseAzimuth = 200;
    info.pass.setAzimuth = 45;
    return info;
}

TEST(CompassDirection, NorthSpansBothSidesOfZero) {
    EXPECT_EQ(compassDirection(348.75), "N");
    EXPECT_EQ(compassDirection(11.24), "N");
    EXPECT_EQ(compassDirection(11.25), "NNE");
    EXPECT_EQ(compassDirection(348.74), "NNW");
}

TEST(PassInfo, TwoOfTheSamePassDiffer) {
    const PassInfo a = somePass();
    PassInfo b;
    b.satellite = a.satellite;
    b.pass = a.pass;
    EXPECT_NE(a.id, b.id);
}

TEST(PassInfo, TellsThePassInWords) {
    const PassInfo info = somePass();
    EXPECT_EQ(info.satName(), "ISS (ZARYA)");
    EXPECT_EQ(info.noradId(), 25544);
    EXPECT_EQ(info.riseTimeUTC(), "05:36:01 UTC");
    EXPECT_EQ(info.peakTimeUTC(), "05:41:01 UTC");
    EXPECT_EQ(info.setTimeUTC(), "05:46:06 UTC");
    EXPECT_EQ(info.maxElString(), "45.2°");
    EXPECT_EQ(info.directionString(), "SSW → NE");
}

TEST(PassInfo, DurationDropsTheFractionOfTheSecond) {
    EXPECT_EQ(somePass().durationString(), "10m 05s");
}

/// Sets the zone of the process for one test.
class LocalTime : public ::testing::Test {
  protected:
    LocalTime() {
        if (const char* zone = std::getenv("TZ")) before_ = zone;
        setenv("TZ", "TEST-5:30", 1);  // 5:30 hours east
        tzset();
    }
    ~LocalTime() override {
        if (before_) {
            setenv("TZ", before_->c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }

  private:
    std::optional<std::string> before_;
};

TEST_F(LocalTime, ClockTextsFollowTheZoneOfTheSystem) {
    const PassInfo info = somePass();
    EXPECT_EQ(info.riseTimeLocal(), "11:06:01");
    EXPECT_EQ(info.peakTimeLocal(), "11:11:01");
    EXPECT_EQ(info.setTimeLocal(), "11:16:06");
    EXPECT_EQ(localTimeText(info.pass.riseTime, false), "11:06");
    EXPECT_EQ(info.riseTimeUTC(), "05:36:01 UTC");
    EXPECT_EQ(info.peakTimeUTC(), "05:41:01 UTC");
    EXPECT_EQ(info.setTimeUTC(), "05:46:06 UTC");
}

TEST_F(LocalTime, FractionsBefore1970RoundDown) {
    EXPECT_EQ(localTimeText(Instant::fromUnixSeconds(-0.5), true), "05:29:59");
}

}  // namespace
}  // namespace veloran
