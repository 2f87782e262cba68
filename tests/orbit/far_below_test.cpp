#include "orbit/far_below.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "any_orbit.h"
#include "orbit/satellite_sky.h"

namespace veloran {
namespace {

using test::Random;

TEST(FarBelow, WhatIsSureHolds) {
    Random random;
    std::size_t samplesSure = 0;
    for (int i = 0; i < 150; ++i) {
        const SatRec satrec = test::anyOrbit(random);
        const double lat = random.between(-90.0, 90.0);
        const double metres = random.between(-400.0, 1e6);
        const Instant start = test::sampleEpoch() + 86400.0 * random.between(-20.0, 20.0);
        const Instant end = start + 86400.0;
        const auto heights = satelliteSky(std::make_shared<const SatRec>(satrec), lat, 0, metres)
                                 .heightsBetween(start, end);
        for (Instant t = start; t < end; t = t + 3600.0) {
            const Instant until = std::min(heights->exactly(t).farBelowUntil, end);
            for (Instant sure = t; sure < until; sure = sure + 10.0) {
                ++samplesSure;
                const auto look = lookAngles(satrec, sure, lat, 0, metres / 1000);
                ASSERT_TRUE(!look || look->elevation < -10.0) << random.trace();
            }
        }
    }
    EXPECT_GT(samplesSure, 1000U);
}

TEST(FarBelow, WhatIsSureHoldsWhileAnOrbitGrows) {
    // A negative drag term raises the orbit within a week.
    TLEData tle = test::lowOrbit();
    tle.bstar = -0.03;
    const auto satrec = test::satrecOf(tle);
    const Instant start = test::sampleEpoch() + 6 * 86400.0;
    const Instant end = start + 86400.0;
    const auto axis = [&](Instant t) {
        const double shrinking = satrec->cc1 * minutesSinceEpoch(*satrec, t);
        return satrec->ao * (1 - shrinking) * (1 - shrinking);
    };
    ASSERT_GT(axis(start), 1.008 * satrec->ao);
    std::size_t samplesSure = 0;
    for (double lat = -60; lat <= 60; lat += 20) {
        const auto heights = satelliteSky(satrec, lat, 0, 0).heightsBetween(start, end);
        for (Instant t = start; t < end; t = t + 600.0) {
            const Instant until = std::min(heights->exactly(t).farBelowUntil, end);
            for (Instant sure = t; sure < until; sure = sure + 10.0) {
                ++samplesSure;
                ASSERT_LT(lookAngles(*satrec, sure, lat, 0, 0)->elevation, -10.0);
            }
        }
    }
    EXPECT_GT(samplesSure, 1000U);
}

TEST(FarBelow, NothingIsSureOfOrbitsItDoesNotKnow) {
    const GroundObserver observer(50, 10, 0);
    const Instant start = test::sampleEpoch();
    SatRec changed = *test::satrecOf(test::lowOrbit());
    const auto below = [&](const SatRec& satrec, Instant end) {
        const Instant at = start;
        return FarBelow(satrec, observer, start, end).sureUntil(at, -5000, 7000) - at;
    };
    EXPECT_GT(below(changed, start + 86400.0), 600);
    changed.didt = 1e-9;
    EXPECT_EQ(below(changed, start + 86400.0), 0);
    EXPECT_EQ(below(*test::satrecOf(test::orbitWithPerigee(400, 0.76)), start + 86400.0), 0);
    // A low orbit with drag, but asked for years after its epoch.
    EXPECT_EQ(below(*test::satrecOf(test::lowOrbit()), start + 86400.0 * 3650), 0);
}

TEST(FarBelow, NothingIsSureOfAnglesThatRoundingMoves) {
    const Instant start = test::sampleEpoch();
    const GroundObserver observer(50, 10, 0);
    const auto below = [&](const TLEData& tle) {
        const auto satrec = TLEParser::createSatRec(tle);
        return FarBelow(satrec, observer, start, start + 86400.0).sureUntil(start, -5000, 7000) -
               start;
    };
    TLEData tle = test::lowOrbit();
    tle.meanAnomaly += 360.0 * 100;
    EXPECT_GT(below(tle), 0);
    for (double* angle : {&tle.meanAnomaly, &tle.raan, &tle.argPerigee}) {
        tle = test::lowOrbit();
        *angle = 1e12;
        EXPECT_EQ(below(tle), 0);
    }
}

TEST(FarBelow, NothingIsSureForObserversBeyondTheEarthsCentre) {
    const Instant start = test::sampleEpoch();
    const auto satrec = test::satrecOf(test::lowOrbit());
    const auto below = [&](double km) {
        return FarBelow(*satrec, GroundObserver(50, 10, km), start, start + 86400.0)
                   .sureUntil(start, -5000, 7000) -
               start;
    };
    EXPECT_GT(below(-3000), 0);
    EXPECT_EQ(below(-11592), 0);
    EXPECT_EQ(below(-1e6), 0);
}

TEST(FarBelow, NothingIsSureThroughTheNadir) {
    TLEData tle = test::lowOrbit();
    tle.inclination = 0;  // in sight of the equator's nadir once a revolution
    const auto satrec = test::satrecOf(tle);
    const Instant start = test::sampleEpoch();
    const Instant end = start + 12000.0;
    const auto elevation = [&](Instant t) { return lookAngles(*satrec, t, 0, 0, 0)->elevation; };
    Instant nadir = start + 3000.0;
    for (double step = 10.0; step > 1e-3; step /= 10) {
        for (Instant t = nadir - 600 * step; t < nadir + 600 * step; t = t + step) {
            if (elevation(t) < elevation(nadir)) nadir = t;
        }
    }
    ASSERT_LT(elevation(nadir), -89.999);
    const auto heights = satelliteSky(satrec, 0, 0, 0).heightsBetween(start, end);
    std::size_t sure = 0;
    for (Instant t = nadir - 1000.0; t < nadir; t = t + 7.0) {
        const Instant until = heights->exactly(t).farBelowUntil;
        EXPECT_LT(until, nadir) << nadir - t;
        sure += until > t;
    }
    EXPECT_GT(sure, 100U);
}

}  // namespace
}  // namespace veloran
