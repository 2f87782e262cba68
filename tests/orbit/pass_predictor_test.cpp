#include "orbit/pass_predictor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "orbit/sun_moon.h"
#include "sample_orbits.h"

namespace veloran::test {
namespace {

using ElevationFn = std::function<double(double)>;  // seconds from the start to degrees

const Instant kStart{736344000.0};

PassPredictor::ObserveFn body(ElevationFn elevation) {
    return [elevation = std::move(elevation)](Instant at) -> std::optional<TopocentricResult> {
        return TopocentricResult{90.0, elevation(at - kStart), 1000.0, 0.0};
    };
}

PassList passesOf(PassPredictor::ObserveFn observe, double hours = 24.0, double minElevation = 2.0,
                  double stepSeconds = 30.0) {
    return PassPredictor(std::move(observe), 0.0, 0.0, 0.0)
        .findPasses(kStart, hours, minElevation, stepSeconds);
}

/// A hill of 10 degrees over a plain at -5 degrees, from one second to another.
ElevationFn window(double from, double to) {
    return [=](double s) { return s >= from && s <= to ? 10.0 : -5.0; };
}

TEST(PassPredictor, BodyFarBelowIsSampledOnceAMinute) {
    int samples = 0;
    const auto passes = passesOf(body([&](double) {
        ++samples;
        return -30.0;
    }));
    EXPECT_TRUE(passes.empty());
    EXPECT_EQ(samples, 24 * 60);
}

TEST(PassPredictor, StepTightensNearTheHorizon) {
    const auto samplesIn = [](double elevation) {
        int samples = 0;
        passesOf(body([&](double) {
                     ++samples;
                     return elevation;
                 }),
                 1.0);
        return samples;
    };
    EXPECT_EQ(samplesIn(-10.1), 60);
    EXPECT_EQ(samplesIn(-10.0), 180);
    EXPECT_EQ(samplesIn(-2.1), 180);
    EXPECT_EQ(samplesIn(-2.0), 360);
    EXPECT_EQ(samplesIn(0.0), 360);
}

TEST(PassPredictor, BodyThatIsAlwaysUpGivesOnePassOverTheWholeSpan) {
    const auto passes = passesOf(body([](double) { return 40.0; }));
    ASSERT_EQ(passes.size(), 1U);
    EXPECT_NEAR(passes[0].riseTime - kStart, -10.0, 1e-5);
    EXPECT_EQ(passes[0].setTime, kStart + 86400.0);
    EXPECT_NEAR(passes[0].duration, 86410.0, 1e-5);
    EXPECT_EQ(passes[0].trackPoints.size(), 201U);
}

TEST(PassPredictor, GeostationarySatelliteInViewIsUpAllDay) {
    // Somewhere the satellite hangs overhead.
    const auto satrec = satrecOf(geostationaryOrbit());
    int inView = 0;
    for (double longitude = -180.0; longitude < 180.0; longitude += 30.0) {
        const auto passes =
            PassPredictor(satrec, 10.0, longitude, 0.0).findPasses(sampleEpoch(), 6.0);
        if (passes.empty()) continue;
        ++inView;
        ASSERT_EQ(passes.size(), 1U);
        EXPECT_NEAR(passes[0].duration, 6.0 * 3600.0 + 10.0, 1e-3);
    }
    EXPECT_GE(inView, 4);
}

TEST(PassPredictor, PassUnderWayRisesOneStepBeforeTheStart) {
    const auto passes = passesOf(body([](double s) { return 50.0 - s / 10.0; }));
    ASSERT_EQ(passes.size(), 1U);
    EXPECT_NEAR(passes[0].riseTime - kStart, -10.0, 1e-5);
    EXPECT_NEAR(passes[0].setTime - kStart, 500.0, 1e-5);
    EXPECT_NEAR(passes[0].peakTime - passes[0].riseTime, 0.0, 0.1);
}

TEST(PassPredictor, DipOfHalfADegreeIsStillOnePass) {
    const auto passes = passesOf(body([](double s) {
        if (s < 600.0 || s > 1200.0) return -20.0;
        return std::abs(s - 900.0) < 60.0 ? -0.5 : 10.0;
    }));
    ASSERT_EQ(passes.size(), 1U);
    EXPECT_NEAR(passes[0].riseTime - kStart, 600.0, 1e-5);
    EXPECT_NEAR(passes[0].setTime - kStart, 1200.0, 1e-5);
}

TEST(PassPredictor, DipOfExactlyOneDegreeIsStillOnePass) {
    const auto passes = passesOf(body([](double s) {
        if (s < 600.0 || s > 1200.0) return -20.0;
        return std::abs(s - 900.0) < 60.0 ? -1.0 : 10.0;
    }));
    ASSERT_EQ(passes.size(), 1U);
    EXPECT_NEAR(passes[0].setTime - kStart, 1200.0, 1e-5);
}

TEST(PassPredictor, DipBelowOneDegreeMakesTwoPasses) {
    const auto passes = passesOf(body([](double s) {
        if (s < 600.0 || s > 1200.0) return -20.0;
        return std::abs(s - 900.0) < 60.0 ? -1.5 : 10.0;
    }));
    ASSERT_EQ(passes.size(), 2U);
    EXPECT_NEAR(passes[0].setTime - kStart, 840.0, 1e-5);
    EXPECT_NEAR(passes[1].riseTime - kStart, 960.0, 1e-5);
}

TEST(PassPredictor, LastOfSeveralCrossingsIsTheSet) {
    // The highest sample is at 600 s, the first well below at 1000 s. Of the twenty parts between
    // them only the end of the last but one, at 980 s, sees the short stay above 0.
    const auto passes = passesOf(body([](double s) {
        if (s < 600.0) return -20.0;
        if (s < 650.0) return 10.0;
        if (s >= 975.0 && s < 985.0) return 5.0;
        return s < 995.0 ? -0.5 : -5.0;
    }));
    ASSERT_EQ(passes.size(), 1U);
    EXPECT_NEAR(passes[0].setTime - kStart, 985.0, 1e-5);
}

TEST(PassPredictor, RiseTakesTwentyFiveBisections) {
    int samples = 0;
    const auto passes = passesOf(body([&](double) {
                                     ++samples;
                                     return 40.0;
                                 }),
                                 5.0 / 3600.0);
    EXPECT_TRUE(passes.empty());     // too short to count
    EXPECT_EQ(samples, 1 + 25 + 1);  // the search, the bisections, the azimuth
}

TEST(PassPredictor, PassUnderThirtySecondsIsDropped) {
    EXPECT_TRUE(passesOf(body(window(600.0, 629.0))).empty());
    EXPECT_TRUE(passesOf(body(window(600.0, 629.9999))).empty());
    const auto passes = passesOf(body(window(600.0, 630.0001)));
    ASSERT_EQ(passes.size(), 1U);
    EXPECT_NEAR(passes[0].duration, 30.0, 1e-3);
    EXPECT_EQ(passes[0].trackPoints.size(), 21U);
}

TEST(PassPredictor, PassOfExactlyThirtySecondsCounts) {
    const auto passes = passesOf(body(window(600.0, 630.0)));
    ASSERT_EQ(passes.size(), 1U);
    EXPECT_EQ(passes[0].duration, 30.0);
}

TEST(PassPredictor, AzimuthsAreThoseOfRisePeakAndSet) {
    const auto passes = passesOf([](Instant at) -> std::optional<TopocentricResult> {
        const double s = at - kStart;
        return TopocentricResult{s / 10.0, 40.0 - std::pow((s - 1503.0) / 100.0, 2), 1000.0, 0.0};
    });
    ASSERT_EQ(passes.size(), 1U);
    const double half = 100.0 * std::sqrt(40.0);  // from the peak to the horizon, s
    EXPECT_NEAR(passes[0].riseAzimuth, (1503.0 - half) / 10.0, 1e-5);
    EXPECT_NEAR(passes[0].peakAzimuth, 150.3, 0.02);
    EXPECT_NEAR(passes[0].setAzimuth, (1503.0 + half) / 10.0, 1e-5);
}

TEST(PassPredictor, MinimumElevationIsOfTheHighestSample) {
    const auto graze = body([](double s) { return 1.9 - std::pow((s - 3600.0) / 100.0, 2); });
    EXPECT_TRUE(passesOf(graze, 24.0, 2.0).empty());
    EXPECT_TRUE(passesOf(graze, 24.0, 1.95).empty());
    EXPECT_EQ(passesOf(graze, 24.0, 0.0).size(), 1U);
}

TEST(PassPredictor, PassThatIsTooLowIsNotRefinedFurther) {
    int samples = 0;
    const auto passes = passesOf(body([&](double s) {
                                     ++samples;
                                     return s >= 600.0 && s < 700.0 ? 1.5 : -5.0;
                                 }),
                                 1.0);
    EXPECT_TRUE(passes.empty());
    const int before = 30, within = 10, exit = 1, after = 145;    // steps of 20, 10, 10 and 20 s
    EXPECT_EQ(samples, before + within + exit + after + 25 + 1);  // and its rise with the azimuth
}

TEST(PassPredictor, PassOfExactlyTheMinimumElevationCounts) {
    const auto level = body([](double) { return 2.0; });
    EXPECT_EQ(passesOf(level, 1.0, 2.0).size(), 1U);
    EXPECT_TRUE(passesOf(level, 1.0, std::nextafter(2.0, 3.0)).empty());
}

TEST(PassPredictor, RefinedPeakBetweenSamplesDoesNotCount) {
    // Above 2 degrees for 4 seconds only, between two samples ten seconds apart.
    const auto graze = body([](double s) {
        const double x = std::abs(s - 605.0);
        return x < 2.0 ? 2.5 : 1.5 - std::pow(x / 100.0, 2);
    });
    EXPECT_TRUE(passesOf(graze, 1.0, 2.0).empty());
}

TEST(PassPredictor, ShortSpanGivesNothing) {
    const auto always = body([](double) { return 40.0; });
    EXPECT_TRUE(passesOf(always, 0.0).empty());
    EXPECT_TRUE(passesOf(always, -5.0).empty());
}

TEST(PassPredictor, StepArgumentHasNoInfluence) {
    const PassPredictor predictor(satrecOf(lowOrbit()), 48.0, 11.0, 500.0);
    const auto fine = predictor.findPasses(sampleEpoch(), 24.0, 2.0, 5.0);
    const auto coarse = predictor.findPasses(sampleEpoch(), 24.0, 2.0, 500.0);
    ASSERT_FALSE(fine.empty());
    ASSERT_EQ(fine.size(), coarse.size());
    for (std::size_t i = 0; i < fine.size(); ++i) {
        EXPECT_EQ(fine[i].riseTime, coarse[i].riseTime);
        EXPECT_EQ(fine[i].peakTime, coarse[i].peakTime);
        EXPECT_EQ(fine[i].setTime, coarse[i].setTime);
        EXPECT_EQ(fine[i].trackPoints.size(), coarse[i].trackPoints.size());
    }
}

TEST(PassPredictor, SunGivesOnePassADay) {
    const auto sun = [](Instant at) -> std::optional<TopocentricResult> {
        return sunTopocentric(at, 33.87, -84.34);
    };
    const Instant localMidnight = kStart + 17.6 * 3600.0;
    const PassList passes =
        PassPredictor(sun, 33.87, -84.34, 300.0).findPasses(localMidnight, 72.0);
    EXPECT_EQ(passes.size(), 3U);
}

TEST(PassPredictor, SummerSunAtThePoleStaysUp) {
    const auto sun = [](Instant at) -> std::optional<TopocentricResult> {
        return sunTopocentric(at, 85.0, 20.0);
    };
    const Instant june21{740620800.0};  // 2024
    const PassList passes = PassPredictor(sun, 85.0, 20.0, 0.0).findPasses(june21, 48.0);
    ASSERT_EQ(passes.size(), 1U);
    EXPECT_NEAR(passes[0].duration, 48.0 * 3600.0 + 10.0, 1e-3);
}

TEST(PassPredictor, BodyWithoutDataGivesNothing) {
    int samples = 0;
    const auto passes = passesOf([&](Instant) -> std::optional<TopocentricResult> {
        ++samples;
        return std::nullopt;
    });
    EXPECT_TRUE(passes.empty());
    EXPECT_EQ(samples, 24 * 60);
}

TEST(PassPredictor, DecayDuringAPassEndsIt) {
    const auto passes = passesOf([](Instant at) -> std::optional<TopocentricResult> {
        const double s = at - kStart;
        if (s > 900.0) return std::nullopt;
        return TopocentricResult{s / 10.0, s < 600.0 ? -20.0 : 10.0, 1000.0, 0.0};
    });
    ASSERT_EQ(passes.size(), 1U);
    EXPECT_NEAR(passes[0].riseTime - kStart, 600.0, 1e-5);
    EXPECT_NEAR(passes[0].setTime - kStart, 900.0, 1e-5);
}

TEST(PassPredictor, AbsentSamplesAreLeftOutOfTheTrack) {
    // The gap falls between the samples of the search but not of the track.
    const auto passes = passesOf([](Instant at) -> std::optional<TopocentricResult> {
        const double s = at - kStart;
        if (s > 701.0 && s < 709.0) return std::nullopt;
        return TopocentricResult{0.0, s >= 605.0 && s < 800.0 ? 10.0 : -5.0, 1000.0, 0.0};
    });
    ASSERT_EQ(passes.size(), 1U);
    EXPECT_EQ(passes[0].trackPoints.size(), 20U);
}

TEST(PassPredictor, NullRecordIsAbsent) {
    const PassPredictor predictor(std::shared_ptr<const SatRec>(), 48.0, 11.0, 500.0);
    EXPECT_FALSE(predictor.observe(kStart));
    EXPECT_TRUE(predictor.findPasses(kStart).empty());
}

TEST(PassPredictor, HeightIsGivenInMetres) {
    const auto satrec = satrecOf(lowOrbit());
    const PassPredictor predictor(satrec, 48.0, 11.0, 2500.0);
    EXPECT_EQ(predictor.obsAltKm(), 2.5);
    EXPECT_EQ(predictor.obsLat(), 48.0);
    EXPECT_EQ(predictor.obsLon(), 11.0);
    const auto look = predictor.observe(sampleEpoch());
    const auto expected = lookAngles(*satrec, sampleEpoch(), 48.0, 11.0, 2.5);
    ASSERT_TRUE(look && expected);
    EXPECT_EQ(look->range, expected->range);
}

TEST(PassPredictor, PassesOfSatellitesAreWellFormed) {
    Random random;
    SCOPED_TRACE(random.trace());
    std::size_t found = 0;
    for (int i = 0; i < 60; ++i) {
        SCOPED_TRACE(i);
        const PassPredictor predictor(satrecOf(randomOrbit(random)), random.between(-89.0, 89.0),
                                      random.between(-180.0, 180.0), random.between(0.0, 3000.0));
        const Instant start = sampleEpoch();
        const Instant end = start + 86400.0;
        Instant earlier = start - 61.0;
        const auto elevation = [&](Instant at) { return predictor.observe(at)->elevation; };
        for (const PredictedPass& pass : predictor.findPasses(start)) {
            ++found;
            EXPECT_GE(pass.riseTime, earlier);
            EXPECT_GE(pass.duration, 30.0);
            EXPECT_EQ(pass.duration, pass.setTime - pass.riseTime);
            EXPECT_LE(pass.riseTime, pass.peakTime);
            EXPECT_LE(pass.peakTime, pass.setTime);
            if (pass.riseTime > start) {
                EXPECT_LT(elevation(pass.riseTime - 0.05), 0.0);
                EXPECT_GT(elevation(pass.riseTime + 0.05), 0.0);
            }
            if (pass.setTime < end) {
                EXPECT_GT(elevation(pass.setTime - 0.05), 0.0);
                EXPECT_LT(elevation(pass.setTime + 0.05), 0.0);
            }
            if (pass.peakTime - pass.riseTime > 5.0 && pass.setTime - pass.peakTime > 5.0) {
                EXPECT_GT(pass.maxElevation, elevation(pass.peakTime - 5.0) - 1e-6);
                EXPECT_GT(pass.maxElevation, elevation(pass.peakTime + 5.0) - 1e-6);
            }
            ASSERT_GE(pass.trackPoints.size(), 21U);
            ASSERT_LE(pass.trackPoints.size(), 201U);
            EXPECT_EQ(pass.trackPoints.front().date, pass.riseTime);
            EXPECT_NEAR(pass.trackPoints.back().date - pass.setTime, 0.0, 1e-6);
            earlier = pass.setTime;
        }
    }
    EXPECT_GT(found, 100U);
}

TEST(PassPredictor, SearchOverNonsenseEnds) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(passesOf(body([](double) { return nan; })).empty());
    EXPECT_EQ(passesOf(body([](double s) { return s < 600.0 ? 10.0 : nan; })).size(), 1U);
    const auto flicker = body([](double s) { return std::fmod(s, 20.0) < 10.0 ? 90.0 : -90.0; });
    EXPECT_TRUE(passesOf(flicker).empty());
    const PassPredictor predictor(body([](double) { return infinity; }), nan, nan, nan);
    for (const double start : {nan, infinity, -infinity, 1e17, -1e17, 1e308, -1e308}) {
        for (const double hours : {24.0, nan, -infinity}) {
            EXPECT_LE(predictor.findPasses(Instant{start}, hours).size(), 1U);
        }
    }
}

TEST(PassPredictor, HugeSpanIsCutToTenYears) {
    std::size_t samples = 0;
    Instant latest = kStart;
    const PassPredictor predictor(
        [&](Instant at) -> std::optional<TopocentricResult> {
            ++samples;
            latest = at;
            return std::nullopt;
        },
        0.0, 0.0, 0.0);
    for (const double hours : {1e308, std::numeric_limits<double>::infinity()}) {
        samples = 0;
        EXPECT_TRUE(predictor.findPasses(kStart, hours).empty());
        EXPECT_EQ(samples, 3653U * 1440U);
        EXPECT_LT(latest - kStart, 3653.0 * 86400.0);
    }
}

}  // namespace
}  // namespace veloran::test
