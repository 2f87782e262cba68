#include "golden_passes.h"
#include "orbit/constants.h"

namespace veloran::test {
namespace {

constexpr const char* kFile = "orbit/pass_search.json";

PassTolerance toleranceOf(const boost::json::object& file) {
    const auto& t = file.at("tolerance").as_object();
    expectKnownMembers(t,
                       {"rise_s", "set_s", "duration_s", "peak_s", "maxEl_deg", "azimuth_deg",
                        "peakAz_deg", "count", "why"},
                       kFile);
    PassTolerance tolerance{};
    tolerance.rise = number(t.at("rise_s"));
    tolerance.set = number(t.at("set_s"));
    tolerance.duration = number(t.at("duration_s"));
    tolerance.maxElevation = number(t.at("maxEl_deg"));
    tolerance.riseAzimuth = tolerance.setAzimuth = number(t.at("azimuth_deg"));
    // A track point lies between rise and set, so it is as good as they are; the elevation of the
    // steepest body here changes by less than 2 degrees a second.
    tolerance.trackTime = tolerance.rise;
    tolerance.track = {tolerance.riseAzimuth, 2.0 * tolerance.rise, 10.0 * tolerance.rise,
                       0.001 * tolerance.rise + 1e-12};
    return tolerance;
}

/// A body whose elevation is a sum of waves, without data in its gaps.
struct WaveBody {
    struct Wave {
        double amplitude, period, phase;
    };
    double t0, mean, azRate;
    std::vector<Wave> waves;
    std::vector<std::pair<double, double>> gaps;  // from, up to but excluding

    explicit WaveBody(const boost::json::object& c)
        : t0(number(c.at("t0"))), mean(number(c.at("mean"))), azRate(number(c.at("azRate"))) {
        for (const auto& s : c.at("sines").as_array()) {
            waves.push_back({number(s.at(0)), number(s.at(1)), number(s.at(2))});
        }
        for (const auto& g : c.at("gaps").as_array()) {
            gaps.emplace_back(number(g.at(0)), number(g.at(1)));
        }
    }

    std::optional<TopocentricResult> operator()(Instant at) const {
        const double x = at.secondsSinceReference - t0;
        for (const auto& [from, to] : gaps) {
            if (from <= x && x < to) return std::nullopt;
        }
        double elevation = mean;
        for (const Wave& w : waves) {
            elevation += w.amplitude * std::sin(twoPi * x / w.period + w.phase);
        }
        return TopocentricResult{std::fmod(10.0 + azRate * x, 360.0), elevation,
                                 1000.0 - 5.0 * elevation, 0.001 * x};
    }
};

TEST(PassSearchVectors, AnalyticBodies) {
    const auto file = loadVectors(kFile);
    expectKnownMembers(file, {"about", "tolerance", "cases"}, kFile);
    const PassTolerance tolerance = toleranceOf(file);
    forEachCase(file, kFile, "cases", [&](const boost::json::object& c) {
        expectKnownMembers(c,
                           {"note", "t0", "mean", "sines", "gaps", "azRate", "start", "hours",
                            "minEl", "stepSeconds", "passes"},
                           kFile);
        SCOPED_TRACE(traceOf(c));
        const PassPredictor predictor(WaveBody(c), 0.0, 0.0, 0.0);
        expectPasses(predictor.findPasses(instant(c.at("start")), number(c.at("hours")),
                                          number(c.at("minEl")), number(c.at("stepSeconds"))),
                     c.at("passes").as_array(), tolerance, kFile);
    });
}

}  // namespace
}  // namespace veloran::test
