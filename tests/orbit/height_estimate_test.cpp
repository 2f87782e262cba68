#include "orbit/height_estimate.h"

#include <gtest/gtest.h>

#include <cmath>

#include "orbit/constants.h"
#include "sample_orbits.h"

namespace veloran {
namespace {

using test::Random;

struct Place {
    double lat, lon, km;
};

/// Compares estimates within five hours of one orbit; counts them.
struct Comparison {
    std::size_t estimates = 0;
    double largestShare = 0;  // of the margin
};

void compare(const SatRec& satrec, const Place& place, Instant from, Comparison& comparison) {
    const GroundObserver observer(place.lat, place.lon, place.km);
    const Instant to = from + 18000.0;
    HeightEstimate estimate(std::make_shared<const SatRec>(satrec), observer, from, to);
    for (Instant t = from; t < to; t = t + 7.3) {
        const auto estimated = estimate.at(t);
        if (!estimated) continue;
        const auto look = lookAngles(satrec, t, observer);
        ASSERT_TRUE(look) << t.secondsSinceReference;
        const double error = std::abs(look->elevation - estimated->value);
        ASSERT_LE(error, estimated->margin) << t.secondsSinceReference;
        ++comparison.estimates;
        comparison.largestShare = std::max(comparison.largestShare, error / estimated->margin);
    }
}

Place anyPlace(Random& random) {
    return {random.between(-90.0, 90.0), random.between(-180.0, 180.0), random.between(-0.4, 9.0)};
}

Instant anyTime(Random& random) {
    return test::sampleEpoch() + 86400.0 * random.between(-20.0, 20.0);
}

TEST(HeightEstimate, StaysWithinItsMargin) {
    Random random;
    Comparison comparison;
    for (int i = 0; i < 60; ++i) {
        SCOPED_TRACE(random.trace() + ", orbit " + std::to_string(i));
        TLEData tle = test::randomOrbit(random);
        if (i % 2 == 0) {
            tle.meanMotion = random.between(0.9, 16.0);
            tle.eccentricity = random.between(0.0, 0.03);
            tle.bstar = random.between(-1e-4, 2e-3);
        }
        ASSERT_NO_FATAL_FAILURE(
            compare(TLEParser::createSatRec(tle), anyPlace(random), anyTime(random), comparison));
    }
    EXPECT_GT(comparison.estimates, 60000U);
    RecordProperty("largest share of the margin", std::to_string(comparison.largestShare));
}

TEST(HeightEstimate, StaysWithinItsMarginWhereDragMakesTheOrbitRound) {
    // The eccentricity falls to its least value within the day and is kept there.
    Random random;
    Comparison comparison;
    for (int i = 0; i < 40; ++i) {
        SCOPED_TRACE(random.trace() + ", orbit " + std::to_string(i));
        TLEData tle = test::lowOrbit();
        tle.eccentricity = std::pow(10.0, random.between(-7.0, -4.0));
        tle.bstar = std::pow(10.0, random.between(-4.0, -2.0));
        tle.meanMotion = random.between(14.5, 16.0);
        const Instant from = test::sampleEpoch() + 3600.0 * random.between(-12.0, 12.0);
        ASSERT_NO_FATAL_FAILURE(
            compare(TLEParser::createSatRec(tle), anyPlace(random), from, comparison));
    }
    EXPECT_GT(comparison.estimates, 10000U);
}

TEST(HeightEstimate, MarginIsFarBelowWhatAPassTurnsOn) {
    const auto satrec = test::satrecOf(test::lowOrbit());
    const Instant start = test::sampleEpoch();
    HeightEstimate estimate(satrec, GroundObserver(50, 10, 0), start, start + 86400.0);
    for (Instant t = start; t < start + 86400.0; t = t + 100.0) {
        const auto height = estimate.at(t);
        ASSERT_TRUE(height);
        EXPECT_LT(height->margin, 5e-5);
    }
}

TEST(HeightEstimate, IsAbsentForOrbitsWithoutBounds) {
    const GroundObserver observer(50, 10, 0);
    const Instant start = test::sampleEpoch();
    const auto at = [&](const SatRec& satrec, Instant when) {
        return HeightEstimate(std::make_shared<const SatRec>(satrec), observer, when,
                              when + 86400.0)
            .at(when + 3600.0);
    };
    SatRec changed = *test::satrecOf(test::lowOrbit());
    EXPECT_TRUE(at(changed, start));
    EXPECT_FALSE(at(changed, start + 86400.0 * 3650));
    changed.dmdt = 1e-9;
    EXPECT_FALSE(at(changed, start));
    EXPECT_FALSE(at(*test::satrecOf(test::orbitWithPerigee(400, 0.7)), start));
    // So low that it may decay within the day.
    EXPECT_FALSE(at(*test::satrecOf(test::orbitWithPerigee(2, 0.001)), start));
}

TEST(HeightEstimate, IsAbsentAtTheZenith) {
    const auto satrec = test::satrecOf(test::lowOrbit());
    const Instant start = test::sampleEpoch();
    const auto julian = jdayFromDate(start);
    const Vec3 place = propagate(*satrec, minutesSinceEpoch(*satrec, julian)).state.position;
    const double theta = std::atan2(place.y, place.x) - gstime(julian.jd + julian.jdFrac);
    const double beneath = std::atan2(place.z, std::hypot(place.x, place.y)) * rad2deg;
    // Of the vertical, which points past the Earth's centre.
    double lat = beneath;
    for (double trial = beneath - 0.3; trial < beneath + 0.3; trial += 0.001) {
        const auto height = [&](double l) {
            return lookAngles(*satrec, start, l, theta * rad2deg, 0)->elevation;
        };
        if (height(trial) > height(lat)) lat = trial;
    }
    HeightEstimate estimate(satrec, GroundObserver(lat, theta * rad2deg, 0), start, start + 3600.0);
    EXPECT_FALSE(estimate.at(start));
    EXPECT_TRUE(estimate.at(start + 30.0));
}

TEST(HeightEstimate, AnyOrderOfMomentsGivesTheSame) {
    const auto satrec = test::satrecOf(test::lowOrbit());
    const GroundObserver observer(50, 10, 0);
    const Instant start = test::sampleEpoch();
    const Instant end = start + 86400.0;
    HeightEstimate forward(satrec, observer, start, end);
    HeightEstimate jumping(satrec, observer, start, end);
    for (int i = 0; i < 2000; ++i) {
        const Instant t = start + 43.0 * i;
        const double expected = forward.at(t)->value;
        EXPECT_EQ(jumping.at(t)->value, expected);
        EXPECT_TRUE(jumping.at(end - 43.0 * i));
        EXPECT_EQ(jumping.at(t)->value, expected);
    }
}

}  // namespace
}  // namespace veloran
