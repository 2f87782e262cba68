#include "ui/sky_plot/live_look.h"

#include <cmath>

#include "ui/sky_plot/sky_fixture.h"

namespace veloran::test {
namespace {

using LiveLook = SkyFixture;

TEST_F(LiveLook, AbsentWithoutPassAndTrackedSatellite) {
    EXPECT_EQ(plottedSatellite(*state), nullptr);
    EXPECT_FALSE(liveAzEl(*state, state->now()));
}

TEST_F(LiveLook, SatelliteOfTheSelectedPassComesBeforeTheTrackedOne) {
    const auto tracked = std::make_shared<Satellite>("AO-7", 7530);
    state->trackingSatellite = tracked;
    EXPECT_EQ(plottedSatellite(*state), tracked);
    selectPass();
    EXPECT_EQ(plottedSatellite(*state), satellite);
}

TEST_F(LiveLook, IsThePlaceAtTheStartOfTheQuarterSecond) {
    selectPass();
    const double quarter = std::floor(pass.peakTime.unixSeconds() * 4) / 4;
    const auto at = [&](double seconds) { return Instant::fromUnixSeconds(quarter + seconds); };
    const auto expected = satellite->observe(at(2), 33.87, -84.34, 300);
    ASSERT_TRUE(expected);
    EXPECT_EQ(liveAzEl(*state, at(0), 2)->azimuth, expected->azimuth);
    EXPECT_EQ(liveAzEl(*state, at(0.2), 2)->azimuth, expected->azimuth);
    EXPECT_NE(liveAzEl(*state, at(0.25), 2)->azimuth, expected->azimuth);
}

}  // namespace
}  // namespace veloran::test
