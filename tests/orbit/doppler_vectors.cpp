#include <limits>

#include "golden_orbits.h"
#include "orbit/doppler_calc.h"

namespace veloran::test {
namespace {

constexpr const char* kFile = "orbit/doppler.json";
constexpr double kGHz = 1e9;

TEST(DopplerVectors, Shift) {
    const auto file = loadVectors(kFile);
    expectKnownMembers(
        file, {"about", "observers", "survey_observers", "tolerance", "shift", "full", "survey"},
        kFile);
    forEachCase(file, kFile, "shift", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"freqHz", "rangeRate", "shift"}, kFile);
        EXPECT_TRUE(closeTo(DopplerCalc::compute(number(c.at("freqHz")), number(c.at("rangeRate"))),
                            number(c.at("shift")),
                            number(file.at("tolerance").at("shift_relative"))));
    });
}

TEST(DopplerVectors, Full) {
    const auto file = loadVectors(kFile);
    const auto& tolerance = file.at("tolerance").at("full").as_object();
    expectKnownMembers(
        tolerance,
        {"shift_Hz_per_GHz", "rate_HzS_per_GHz", "corrected_Hz", "rangeKm", "rangeRate_kmS"},
        kFile);
    forEachCase(file, kFile, "full", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"id", "observer", "seconds", "freqHz", "result"}, kFile);
        SCOPED_TRACE(traceOf(c));
        const GoldenObserver o = observerAt(file, "observers", c.at("observer"));
        const double freqHz = number(c.at("freqHz"));
        const auto result =
            DopplerCalc::computeFull(*goldenSatRec(c.at("id")), instant(c.at("seconds")), freqHz,
                                     o.latitude, o.longitude, o.heightMeters);
        if (c.at("result").is_null()) {
            EXPECT_FALSE(result);
            return;
        }
        ASSERT_TRUE(result);
        const auto& expected = c.at("result").as_object();
        expectKnownMembers(
            expected,
            {"correctedFreqHz", "dopplerShiftHz", "dopplerRateHzPerSec", "rangeKm", "rangeRateKmS"},
            kFile);
        const auto within = [&](const char* name) { return number(tolerance.at(name)); };
        const double gigahertz = freqHz / kGHz;
        const double shiftTolerance = within("shift_Hz_per_GHz") * gigahertz;
        EXPECT_NEAR(result->dopplerShiftHz, number(expected.at("dopplerShiftHz")), shiftTolerance);
        // The corrected frequency is the shift on a large number.
        EXPECT_NEAR(result->correctedFreqHz, number(expected.at("correctedFreqHz")),
                    std::max(within("corrected_Hz"), shiftTolerance));
        EXPECT_NEAR(result->dopplerRateHzPerSec, number(expected.at("dopplerRateHzPerSec")),
                    within("rate_HzS_per_GHz") * gigahertz);
        EXPECT_NEAR(result->rangeKm, number(expected.at("rangeKm")), within("rangeKm"));
        EXPECT_NEAR(result->rangeRateKmS, number(expected.at("rangeRateKmS")),
                    within("rangeRate_kmS"));
    });
}

void expectExtreme(double actual, const boost::json::value& expected, double tolerance,
                   const char* field) {
    if (expected.is_string()) {
        const double infinity = std::numeric_limits<double>::infinity();
        EXPECT_EQ(actual, expected.as_string() == "inf" ? infinity : -infinity) << field;
    } else {
        EXPECT_NEAR(actual, number(expected), tolerance) << field;
    }
}

TEST(DopplerVectors, SurveyOfAPass) {
    const auto file = loadVectors(kFile);
    const auto& tolerance = file.at("tolerance").at("survey").as_object();
    expectKnownMembers(tolerance, {"shift_Hz_per_GHz", "rate_HzS_per_GHz"}, kFile);
    forEachCase(file, kFile, "survey", [&](const boost::json::object& c) {
        expectKnownMembers(c,
                           {"id", "observer", "rise", "duration", "peak", "freqHz", "minShift",
                            "maxShift", "peakRate"},
                           kFile);
        SCOPED_TRACE(traceOf(c));
        const GoldenObserver o = observerAt(file, "survey_observers", c.at("observer"));
        const double freqHz = number(c.at("freqHz"));
        PredictedPass pass;
        pass.riseTime = instant(c.at("rise"));
        pass.duration = number(c.at("duration"));
        pass.peakTime = instant(c.at("peak"));
        const DopplerRange range = DopplerCalc::dopplerRange(
            *goldenSatRec(c.at("id")), pass, freqHz, o.latitude, o.longitude, o.heightMeters);
        const double shiftTolerance = number(tolerance.at("shift_Hz_per_GHz")) * freqHz / kGHz;
        expectExtreme(range.minShift, c.at("minShift"), shiftTolerance, "minShift");
        expectExtreme(range.maxShift, c.at("maxShift"), shiftTolerance, "maxShift");
        EXPECT_NEAR(range.peakRate, number(c.at("peakRate")),
                    number(tolerance.at("rate_HzS_per_GHz")) * freqHz / kGHz);
    });
}

}  // namespace
}  // namespace veloran::test
