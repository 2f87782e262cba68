#include "orbit/doppler_calc.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "sample_orbits.h"

namespace veloran::test {
namespace {

constexpr double kFreqHz = 435e6;

TEST(DopplerCalc, ApproachRaisesTheFrequency) {
    EXPECT_NEAR(DopplerCalc::compute(kFreqHz, -7.5), 10882.5, 0.1);
    EXPECT_EQ(DopplerCalc::compute(kFreqHz, 7.5), -DopplerCalc::compute(kFreqHz, -7.5));
}

TEST(DopplerCalc, NoRangeRateOrNoFrequencyGivesNoShift) {
    EXPECT_EQ(DopplerCalc::compute(kFreqHz, 0.0), 0.0);
    EXPECT_EQ(kFreqHz + DopplerCalc::compute(kFreqHz, 0.0), kFreqHz);
    EXPECT_EQ(DopplerCalc::compute(0.0, -7.5), 0.0);
}

TEST(DopplerCalc, FullResultAgreesWithTheLookAngles) {
    const SatRec satrec = TLEParser::createSatRec(lowOrbit());
    const Instant t = sampleEpoch() + 600.0;
    const auto result = DopplerCalc::computeFull(satrec, t, kFreqHz, 48.0, 11.0, 500.0);
    const auto look = lookAngles(satrec, t, 48.0, 11.0, 0.5);
    const auto ahead = lookAngles(satrec, t + 0.5, 48.0, 11.0, 0.5);
    ASSERT_TRUE(result && look && ahead);
    EXPECT_EQ(result->rangeKm, look->range);
    EXPECT_EQ(result->rangeRateKmS, look->rangeRate);
    EXPECT_EQ(result->dopplerShiftHz, DopplerCalc::compute(kFreqHz, look->rangeRate));
    EXPECT_EQ(result->correctedFreqHz, kFreqHz + result->dopplerShiftHz);
    EXPECT_EQ(result->dopplerRateHzPerSec,
              (DopplerCalc::compute(kFreqHz, ahead->rangeRate) - result->dopplerShiftHz) / 0.5);
}

TEST(DopplerCalc, HalfASecondBeforeDecayThereIsNoResult) {
    TLEData tle = orbitWithPerigee(200.0, 0.001);
    tle.bstar = 0.01;
    const SatRec satrec = TLEParser::createSatRec(tle);
    const auto alive = [&](Instant at) {
        return lookAngles(satrec, at, 48.0, 11.0, 0.5).has_value();
    };
    // The last moment with a state, by bisection.
    Instant last = sampleEpoch();
    Instant gone = last + 100.0 * 86400.0;
    ASSERT_TRUE(alive(last));
    ASSERT_FALSE(alive(gone));
    for (int i = 0; i < 60; ++i) {
        const Instant mid = last + (gone - last) / 2.0;
        (alive(mid) ? last : gone) = mid;
    }
    const Instant justBefore = last - 0.25;
    ASSERT_TRUE(alive(justBefore));
    EXPECT_FALSE(DopplerCalc::computeFull(satrec, justBefore, kFreqHz, 48.0, 11.0, 500.0));
    EXPECT_TRUE(DopplerCalc::computeFull(satrec, last - 2.0, kFreqHz, 48.0, 11.0, 500.0));
}

TEST(DopplerCalc, PassGoesFromHighToLowWithTheSteepestRateAtThePeak) {
    const auto satrec = satrecOf(lowOrbit());
    const PassPredictor predictor(satrec, 48.0, 11.0, 500.0);
    const PassList passes = predictor.findPasses(sampleEpoch(), 24.0, 10.0);
    ASSERT_FALSE(passes.empty());
    for (const PredictedPass& pass : passes) {
        const DopplerRange range =
            DopplerCalc::dopplerRange(*satrec, pass, kFreqHz, 48.0, 11.0, 500.0);
        EXPECT_LT(range.minShift, 0.0);
        EXPECT_GT(range.maxShift, 0.0);
        EXPECT_LT(range.peakRate, 0.0);
        const auto shiftAt = [&](Instant at) {
            return DopplerCalc::computeFull(*satrec, at, kFreqHz, 48.0, 11.0, 500.0)
                ->dopplerShiftHz;
        };
        EXPECT_NEAR(range.maxShift, shiftAt(pass.riseTime), 0.01);
        EXPECT_NEAR(range.minShift, shiftAt(pass.setTime), 0.01);
        for (const Instant at : {pass.riseTime, pass.setTime}) {
            const auto end = DopplerCalc::computeFull(*satrec, at, kFreqHz, 48.0, 11.0, 500.0);
            ASSERT_TRUE(end);
            EXPECT_GT(std::abs(range.peakRate), std::abs(end->dopplerRateHzPerSec));
        }
    }
}

TEST(DopplerCalc, PassOfNoLengthHasOneShift) {
    const SatRec satrec = TLEParser::createSatRec(lowOrbit());
    PredictedPass pass;
    pass.riseTime = pass.peakTime = sampleEpoch();
    const DopplerRange range = DopplerCalc::dopplerRange(satrec, pass, kFreqHz, 48.0, 11.0, 0.0);
    EXPECT_EQ(range.minShift, range.maxShift);
    EXPECT_TRUE(std::isfinite(range.minShift));
}

TEST(DopplerCalc, PassWithoutAnyStateHasInfiniteExtremes) {
    const DopplerRange range =
        DopplerCalc::dopplerRange(SatRec{}, PredictedPass{}, kFreqHz, 48.0, 11.0, 0.0);
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(range.minShift, infinity);
    EXPECT_EQ(range.maxShift, -infinity);
    EXPECT_EQ(range.peakRate, 0.0);
}

}  // namespace
}  // namespace veloran::test
