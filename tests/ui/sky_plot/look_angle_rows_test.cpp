#include "ui/sky_plot/look_angle_rows.h"

#include <algorithm>
#include <limits>

#include "ui/ui_fixture.h"

namespace veloran::test {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
const Instant kRise{800000000};  // 2026-05-09 06:13:20 UTC

PassInfo info() {
    return {.satellite = std::make_shared<Satellite>("RS-44", 44909),
            .pass = passAt(kRise, 605, 45.34),
            .transmitter = {}};
}

const TopocentricResult kLive{.azimuth = 5, .elevation = 45.6, .range = 1234.5, .rangeRate = -4};
const TopocentricResult kNext{.azimuth = 5, .elevation = 45.7, .range = 1230.5, .rangeRate = -3.9};

bool isEmpty(const RowValue& row) {
    return row == RowValue{"—", Ink::secondary};
}

TEST(LookAngleRows, WithoutAnythingEveryRowIsADash) {
    const RowValues rows = lookAngleRows({}, kRise, {}, {});
    EXPECT_TRUE(std::ranges::all_of(rows, isEmpty));
}

TEST(LookAngleRows, PassRowsInTheirColours) {
    const RowValues rows = lookAngleRows(info(), kRise + 100, {}, {});
    EXPECT_EQ(rows[0], (RowValue{"06:13:20 local", Ink::green}));
    EXPECT_EQ(rows[1], (RowValue{"06:18:22 local", Ink::yellow}));
    EXPECT_EQ(rows[2], (RowValue{"06:23:25 local", Ink::red}));
    EXPECT_EQ(rows[3], (RowValue{"10m 05s", Ink::primary}));
    EXPECT_EQ(rows[4], (RowValue{"45.3°", Ink::yellow}));
    EXPECT_EQ(rows[5], (RowValue{"+8m25s", Ink::orange}));
    EXPECT_EQ(rows[6], (RowValue{"↑ RISING", Ink::green}));
    EXPECT_TRUE(std::all_of(rows.begin() + kPassRows, rows.end(), isEmpty));
}

TEST(LookAngleRows, LookAnglesRunWithoutAPass) {
    const RowValues rows = lookAngleRows({}, kRise, kLive, kNext);
    EXPECT_TRUE(std::all_of(rows.begin(), rows.begin() + kPassRows, isEmpty));
    EXPECT_EQ(rows[7], (RowValue{"  5.000°", Ink::cyan}));
    EXPECT_EQ(rows[8], (RowValue{" 45.600°", Ink::cyan}));
    EXPECT_EQ(rows[9], (RowValue{"1234.500 km", Ink::mint}));
    EXPECT_EQ(rows[10], (RowValue{"↑ 4.000 km/s", Ink::green}));
    EXPECT_EQ(rows[11], (RowValue{" +100.0 m/s²", Ink::green}));
}

TEST(LookAngleRows, RecedingIsOrangeWithTheAccelerationOfTheSameColour) {
    TopocentricResult receding = kLive;
    receding.rangeRate = 4;
    const RowValues rows = lookAngleRows({}, kRise, receding, kNext);
    EXPECT_EQ(rows[10], (RowValue{"↓ 4.000 km/s", Ink::orange}));
    EXPECT_EQ(rows[11].ink, Ink::orange);
}

TEST(LookAngleRows, WithoutAPlaceOneSecondAheadThereIsNoAcceleration) {
    const RowValues rows = lookAngleRows({}, kRise, kLive, {});
    EXPECT_FALSE(isEmpty(rows[10]));
    EXPECT_TRUE(isEmpty(rows[11]));
    EXPECT_TRUE(isEmpty(lookAngleRows({}, kRise, {}, kNext)[11]));
}

TEST(LookAngleRows, NumberThatIsNotFiniteIsAPaleDash) {
    PassInfo pass = info();
    pass.pass.maxElevation = kNan;
    TopocentricResult zenith = kLive;
    zenith.elevation = kNan;
    const RowValues rows = lookAngleRows(pass, kRise, zenith, kNext);
    EXPECT_TRUE(isEmpty(rows[4]));
    EXPECT_TRUE(isEmpty(rows[8]));
}

TEST(LookAngleRows, AfterThePassItReadsEnded) {
    const RowValues rows = lookAngleRows(info(), kRise + 606, {}, {});
    EXPECT_EQ(rows[5], (RowValue{"ended", Ink::orange}));
    EXPECT_EQ(rows[6], (RowValue{"ended", Ink::secondary}));
}

}  // namespace
}  // namespace veloran::test
