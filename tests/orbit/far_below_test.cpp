#include "orbit/far_below.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "orbit/pass_predictor.h"
#include "sample_orbits.h"

namespace veloran {
namespace {

using test::Random;

/// The search over every sample, with look angles alone.
PassPredictor plainPredictor(const std::shared_ptr<const SatRec>& satrec, double lat, double lon,
                             double metres) {
    return PassPredictor(
        [=](Instant at) { return lookAngles(*satrec, at, lat, lon, metres / 1000.0); }, lat, lon,
        metres);
}

bool same(double a, double b) {
    return a == b || (a != a && b != b);
}

bool same(const PassPoint& a, const PassPoint& b) {
    return a.date == b.date && same(a.azimuth, b.azimuth) && same(a.elevation, b.elevation) &&
           same(a.range, b.range) && same(a.rangeRate, b.rangeRate);
}

bool same(const PredictedPass& a, const PredictedPass& b) {
    return a.riseTime == b.riseTime && a.peakTime == b.peakTime && a.setTime == b.setTime &&
           same(a.maxElevation, b.maxElevation) && same(a.riseAzimuth, b.riseAzimuth) &&
           same(a.setAzimuth, b.setAzimuth) && same(a.peakAzimuth, b.peakAzimuth) &&
           same(a.duration, b.duration) &&
           std::equal(a.trackPoints.begin(), a.trackPoints.end(), b.trackPoints.begin(),
                      b.trackPoints.end(), [](const auto& p, const auto& q) { return same(p, q); });
}

/// Orbits of every kind that catalogues hold, and one of eight with elements that they should not.
SatRec anyOrbit(Random& random) {
    TLEData tle = test::randomOrbit(random);
    const double kind = random.between(0.0, 8.0);
    if (kind < 1.0) {  // nonsense, decaying or blowing up
        tle.eccentricity = random.between(0.0, 0.999);
        tle.meanMotion = random.between(0.1, 18.0);
        tle.bstar = random.between(-0.5, 0.5);
    } else if (kind < 2.0) {  // as high as a geostationary one and higher
        tle.eccentricity = random.between(0.0, 0.1);
        tle.meanMotion = random.between(0.3, 2.5);
    } else if (kind < 3.0) {  // long ellipses
        tle = test::orbitWithPerigee(random.between(150.0, 2000.0), random.between(0.6, 0.8));
        tle.inclination = random.between(0.0, 180.0);
        tle.argPerigee = random.between(0.0, 360.0);
    } else if (kind < 6.0) {  // low and round, with much drag
        tle.eccentricity = random.between(0.0, 0.02);
        tle.meanMotion = random.between(12.0, 16.3);
        tle.bstar = random.between(-1e-4, 3e-3);
    }
    return TLEParser::createSatRec(tle);
}

/// $VELORAN_SEARCHES, 10000 for the whole proof.
int numberOfSearches() {
    const char* given = std::getenv("VELORAN_SEARCHES");
    return given ? std::atoi(given) : 150;
}

TEST(FarBelow, SearchThatSkipsFindsExactlyThePassesOfThePlainOne) {
    Random random;
    std::size_t passes = 0;
    const int searches = numberOfSearches();
    for (int i = 0; i < searches; ++i) {
        const auto satrec = std::make_shared<const SatRec>(anyOrbit(random));
        const double lat = random.between(-90.0, 90.0);
        const double lon = random.between(-180.0, 180.0);
        const double metres = random.between(-400.0, 9000.0);
        const Instant start = test::sampleEpoch() + 86400.0 * random.between(-20.0, 20.0);
        const auto plain = plainPredictor(satrec, lat, lon, metres).findPasses(start, 24, 0);
        const auto skipping = PassPredictor(satrec, lat, lon, metres).findPasses(start, 24, 0);
        ASSERT_EQ(skipping.size(), plain.size()) << random.trace() << ", search " << i;
        for (std::size_t k = 0; k < plain.size(); ++k) {
            ASSERT_TRUE(same(skipping[k], plain[k])) << random.trace() << ", search " << i;
        }
        passes += plain.size();
    }
    RecordProperty("passes", std::to_string(passes));
    EXPECT_GT(passes, static_cast<std::size_t>(searches));
}

TEST(FarBelow, WhatIsSureHolds) {
    Random random;
    std::size_t samplesSure = 0;
    for (int i = 0; i < numberOfSearches(); ++i) {
        const SatRec satrec = anyOrbit(random);
        const Instant start = test::sampleEpoch() + 86400.0 * random.between(-20.0, 20.0);
        const Instant end = start + 86400.0;
        const auto heights = satelliteSky(std::make_shared<const SatRec>(satrec), 0, 0, 0)
                                 .heightsBetween(start, end);
        for (Instant t = start; t < end; t = t + 3600.0) {
            const Instant until = std::min(heights->exactly(t).farBelowUntil, end);
            for (Instant sure = t; sure < until; sure = sure + 10.0) {
                ++samplesSure;
                const auto look = lookAngles(satrec, sure, 0, 0, 0);
                ASSERT_TRUE(!look || look->elevation < -10.0) << random.trace();
            }
        }
    }
    EXPECT_GT(samplesSure, 1000U);
}

/// Counts what is asked for on the way to the heights of a satellite.
class CountedHeights final : public Heights {
  public:
    CountedHeights(std::unique_ptr<Heights> heights, std::size_t& exact, std::size_t& rough)
        : heights_(std::move(heights)), exact_(exact), rough_(rough) {}

    Height exactly(Instant at) override {
        ++exact_;
        return heights_->exactly(at);
    }
    Height about(Instant at) override {
        ++rough_;
        return heights_->about(at);
    }

  private:
    std::unique_ptr<Heights> heights_;
    std::size_t& exact_;
    std::size_t& rough_;
};

TEST(FarBelow, SkipsMostSamplesOfALowOrbit) {
    const auto satrec = test::satrecOf(test::lowOrbit());
    const auto sky = satelliteSky(satrec, 50, 10, 0);
    std::size_t exact = 0;
    std::size_t rough = 0;
    const PassPredictor counting(SkyFunctions{sky.observe,
                                              [&](Instant from, Instant to) {
                                                  return std::make_unique<CountedHeights>(
                                                      sky.heightsBetween(from, to), exact, rough);
                                              }},
                                 50, 10, 0);
    // No pass is as high as 91 degrees, so nothing is refined but the rises.
    counting.findPasses(test::sampleEpoch(), 24, 91);
    EXPECT_LT(exact, 300U);
    EXPECT_LT(exact + rough, 1000U);
}

TEST(FarBelow, NothingIsSureOfOrbitsItDoesNotKnow) {
    const GroundObserver observer(50, 10, 0);
    const Instant start = test::sampleEpoch();
    SatRec changed = *test::satrecOf(test::lowOrbit());
    const auto below = [&](const SatRec& satrec, Instant end) {
        const Instant at = start;
        return FarBelow(satrec, observer, start, end).sureUntil(at, -7000, 7000) - at;
    };
    EXPECT_GT(below(changed, start + 86400.0), 600);
    changed.didt = 1e-9;
    EXPECT_EQ(below(changed, start + 86400.0), 0);
    EXPECT_EQ(below(*test::satrecOf(test::orbitWithPerigee(400, 0.76)), start + 86400.0), 0);
    // A low orbit with drag, but asked for years after its epoch.
    EXPECT_EQ(below(*test::satrecOf(test::lowOrbit()), start + 86400.0 * 3650), 0);
}

}  // namespace
}  // namespace veloran
