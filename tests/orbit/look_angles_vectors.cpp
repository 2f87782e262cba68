#include "golden_orbits.h"

namespace veloran::test {
namespace {

constexpr const char* kFile = "orbit/look_angles.json";

LookTolerance toleranceOf(const boost::json::value& t) {
    return {number(t.at("azimuth_deg_times_cos_elevation")), number(t.at("elevation_deg")),
            number(t.at("range_km")), number(t.at("rangeRate_kmS"))};
}

LookTolerance preciseTolerance(const boost::json::object& file) {
    LookTolerance tolerance = toleranceOf(file.at("tolerance"));
    tolerance.zenithElevationDeg = number(file.at("tolerance").at("zenith_elevation_deg"));
    return tolerance;
}

TEST(LookAnglesVectors, ObserverEcef) {
    const auto file = loadVectors(kFile);
    expectKnownMembers(
        file, {"about", "observers", "tolerance", "ecef", "pure", "chain", "chain_fractional"},
        kFile);
    expectKnownMembers(file.at("tolerance").as_object(),
                       {"ecef_km", "azimuth_deg_times_cos_elevation", "elevation_deg",
                        "zenith_elevation_deg", "range_km", "rangeRate_kmS", "fractional", "why"},
                       kFile);
    forEachCase(file, kFile, "ecef", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"lat", "lon", "altKm", "xyz"}, kFile);
        SCOPED_TRACE(traceOf(c));
        expectNear(observerECEF(number(c.at("lat")), number(c.at("lon")), number(c.at("altKm"))),
                   vec3(c.at("xyz")), number(file.at("tolerance").at("ecef_km")), "xyz");
    });
}

TEST(LookAnglesVectors, FromState) {
    const auto file = loadVectors(kFile);
    const LookTolerance tolerance = preciseTolerance(file);
    forEachCase(file, kFile, "pure", [&](const boost::json::object& c) {
        expectKnownMembers(
            c, {"pos", "vel", "lat", "lon", "altKm", "gmst", "az", "el", "range", "rangeRate"},
            kFile);
        SCOPED_TRACE(traceOf(c));
        const TopocentricResult look =
            temeToTopocentric(vec3(c.at("pos")), vec3(c.at("vel")), number(c.at("lat")),
                              number(c.at("lon")), number(c.at("altKm")), number(c.at("gmst")));
        expectLook(look,
                   {number(c.at("az")), number(c.at("el")), number(c.at("range")),
                    number(c.at("rangeRate"))},
                   tolerance);
    });
}

void expectChain(const boost::json::object& file, const char* array,
                 const LookTolerance& tolerance) {
    forEachCase(file, kFile, array, [&](const boost::json::object& c) {
        expectKnownMembers(c, {"id", "observer", "seconds", "look"}, kFile);
        SCOPED_TRACE(traceOf(c));
        const GoldenObserver observer = observerAt(file, "observers", c.at("observer"));
        const auto look =
            lookAngles(*goldenSatRec(c.at("id")), instant(c.at("seconds")), observer.latitude,
                       observer.longitude, observer.heightMeters / 1000.0);
        if (c.at("look").is_null()) {
            EXPECT_FALSE(look);
            return;
        }
        ASSERT_TRUE(look);
        expectLook(*look, expectedLook(c.at("look").as_array()), tolerance);
    });
}

TEST(LookAnglesVectors, Chain) {
    const auto file = loadVectors(kFile);
    expectChain(file, "chain", preciseTolerance(file));
}

TEST(LookAnglesVectors, ChainAtFractionsOfASecond) {
    const auto file = loadVectors(kFile);
    expectChain(file, "chain_fractional", toleranceOf(file.at("tolerance").at("fractional")));
}

}  // namespace
}  // namespace veloran::test
