#pragma once

#include <string>

#include "golden_orbits.h"
#include "orbit/pass_predictor.h"

namespace veloran::test {

/// Tolerances of a pass; those of the peak's time and azimuth stand with each pass.
struct PassTolerance {
    double rise, set, duration;      // s
    double maxElevation;             // deg
    double riseAzimuth, setAzimuth;  // deg
    double trackTime;                // s
    LookTolerance track;
};

inline void expectTrackPoint(const PassPoint& actual, const boost::json::array& expected,
                             std::size_t first, const PassTolerance& tolerance) {
    EXPECT_NEAR(actual.date.secondsSinceReference, number(expected.at(first)), tolerance.trackTime);
    expectLook({actual.azimuth, actual.elevation, actual.range, actual.rangeRate},
               expectedLook(expected, first + 1), tolerance.track);
}

inline void expectPass(const PredictedPass& actual, const boost::json::object& expected,
                       const PassTolerance& tolerance, const char* file) {
    expectKnownMembers(expected,
                       {"rise", "peak", "set", "maxEl", "riseAz", "setAz", "peakAz", "duration",
                        "points", "tolPeak", "tolPeakAz", "track", "track_at"},
                       file);
    const auto expected_ = [&](const char* name) { return number(expected.at(name)); };
    const auto expectAzimuth = [&](double value, const char* name, double within) {
        EXPECT_NEAR(angleBetween(value, expected_(name), 360.0), 0.0, within)
            << name << " " << value << ", expected " << expected_(name);
    };
    EXPECT_NEAR(actual.riseTime.secondsSinceReference, expected_("rise"), tolerance.rise);
    EXPECT_NEAR(actual.setTime.secondsSinceReference, expected_("set"), tolerance.set);
    EXPECT_NEAR(actual.peakTime.secondsSinceReference, expected_("peak"), expected_("tolPeak"));
    EXPECT_NEAR(actual.duration, expected_("duration"), tolerance.duration);
    EXPECT_NEAR(actual.maxElevation, expected_("maxEl"), tolerance.maxElevation);
    expectAzimuth(actual.riseAzimuth, "riseAz", tolerance.riseAzimuth);
    expectAzimuth(actual.setAzimuth, "setAz", tolerance.setAzimuth);
    expectAzimuth(actual.peakAzimuth, "peakAz", expected_("tolPeakAz"));
    ASSERT_EQ(actual.trackPoints.size(), expected.at("points").to_number<std::size_t>());
    if (const auto* track = expected.if_contains("track")) {
        const auto& samples = track->as_array();
        ASSERT_EQ(samples.size(), actual.trackPoints.size());
        for (std::size_t i = 0; i < samples.size(); ++i) {
            SCOPED_TRACE("track point " + std::to_string(i));
            expectTrackPoint(actual.trackPoints[i], samples[i].as_array(), 0, tolerance);
        }
    }
    if (const auto* samples = expected.if_contains("track_at")) {
        for (const auto& sample : samples->as_array()) {
            const auto i = sample.as_array().at(0).to_number<std::size_t>();
            SCOPED_TRACE("track point " + std::to_string(i));
            expectTrackPoint(actual.trackPoints.at(i), sample.as_array(), 1, tolerance);
        }
    }
}

inline void expectPasses(const PassList& actual, const boost::json::array& expected,
                         const PassTolerance& tolerance, const char* file) {
    ASSERT_EQ(actual.size(), expected.size()) << "count of passes";
    for (std::size_t i = 0; i < actual.size(); ++i) {
        SCOPED_TRACE("pass " + std::to_string(i));
        expectPass(actual[i], expected[i].as_object(), tolerance, file);
    }
}

}  // namespace veloran::test
