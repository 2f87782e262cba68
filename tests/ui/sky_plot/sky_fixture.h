#pragma once

#include <algorithm>

#include "elements/tle_parser.h"
#include "ui/ui_fixture.h"

namespace veloran::test {

/// A satellite in a low orbit and its best pass of a day.
class SkyFixture : public UiFixture {
  protected:
    void SetUp() override {
        satellite->tle = TLEParser::parseTwoLines(
            "LOW-1", "1 25544U 98067A   24001.50000000  .00016717  00000-0  10270-3 0  9005",
            "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.49815308432107");
        satellite->initOrbit();
        ASSERT_NE(satellite->satrec, nullptr);
        state->obsLatitude = 33.87;
        state->obsLongitude = -84.34;
        state->obsAltitude = 300;
        const PassList passes = makePassPredictor(*satellite, 33.87, -84.34, 300)
                                    .findPasses(Instant::fromUnixSeconds(1704110400));
        ASSERT_FALSE(passes.empty());
        pass = *std::ranges::max_element(passes, {}, &PredictedPass::maxElevation);
        goTo(pass.peakTime);
    }

    void goTo(Instant t) { machine.loop.jumpClock(t - state->now()); }
    void selectPass() {
        state->selectedPass = PassInfo{.satellite = satellite, .pass = pass, .transmitter = {}};
    }

    SatellitePtr satellite = std::make_shared<Satellite>("LOW-1", 25544);
    PredictedPass pass;
};

}  // namespace veloran::test
