#include "golden_passes.h"
#include "orbit/sun_moon.h"

namespace veloran::test {
namespace {

constexpr const char* kFile = "orbit/passes.json";

PassTolerance toleranceOf(const boost::json::object& file) {
    const auto& t = file.at("tolerance").as_object();
    expectKnownMembers(t,
                       {"rise_s", "set_s", "duration_s", "peak_s", "peakAz_deg", "maxEl_deg",
                        "riseAz_deg", "setAz_deg", "track", "count", "why"},
                       kFile);
    const auto& track = t.at("track").as_object();
    PassTolerance tolerance{};
    tolerance.rise = number(t.at("rise_s"));
    tolerance.set = number(t.at("set_s"));
    tolerance.duration = number(t.at("duration_s"));
    tolerance.maxElevation = number(t.at("maxEl_deg"));
    tolerance.riseAzimuth = number(t.at("riseAz_deg"));
    tolerance.setAzimuth = number(t.at("setAz_deg"));
    tolerance.trackTime = number(track.at("time_s"));
    tolerance.track = {number(track.at("azimuth_deg_times_cos_elevation")),
                       number(track.at("elevation_deg")), number(track.at("range_km")),
                       number(track.at("rangeRate_kmS"))};
    return tolerance;
}

PassPredictor predictorFor(const boost::json::value& body, const GoldenObserver& o) {
    if (!body.is_string()) {
        return PassPredictor(goldenSatRec(body), o.latitude, o.longitude, o.heightMeters);
    }
    const auto topocentric = body.as_string() == "sun" ? sunTopocentric : moonTopocentric;
    return PassPredictor(
        [=](Instant at) -> std::optional<TopocentricResult> {
            return topocentric(at, o.latitude, o.longitude);
        },
        o.latitude, o.longitude, o.heightMeters);
}

TEST(PassesVectors, SatellitesSunAndMoon) {
    const auto file = loadVectors(kFile);
    expectKnownMembers(file, {"about", "observers", "tolerance", "extra_sets", "cases"}, kFile);
    const PassTolerance tolerance = toleranceOf(file);
    forEachCase(file, kFile, "cases", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"body", "observer", "start", "hours", "minEl", "note", "passes"},
                           kFile);
        SCOPED_TRACE(traceOf(c));
        const auto& body = c.at("body");
        ASSERT_TRUE(body.is_number() || body.as_string() == "sun" || body.as_string() == "moon");
        const auto predictor = predictorFor(body, observerAt(file, "observers", c.at("observer")));
        expectPasses(predictor.findPasses(instant(c.at("start")), number(c.at("hours")),
                                          number(c.at("minEl"))),
                     c.at("passes").as_array(), tolerance, kFile);
    });
}

}  // namespace
}  // namespace veloran::test
