#include "golden_orbits.h"
#include "orbit/constants.h"
#include "orbit/sun_moon.h"

namespace veloran::test {
namespace {

constexpr const char* kFile = "orbit/sun_moon.json";

TEST(SunMoonVectors, Obliquity) {
    const auto file = loadVectors(kFile);
    expectKnownMembers(file, {"about", "observers", "obliquity", "tolerance", "cases"}, kFile);
    forEachCase(file, kFile, "obliquity", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"seconds", "radians"}, kFile);
        EXPECT_NEAR(obliquity(instant(c.at("seconds"))), number(c.at("radians")), 1e-14);
    });
}

TEST(SunMoonVectors, PlacesLookAnglesAndSubPoints) {
    const auto file = loadVectors(kFile);
    const auto& tolerance = file.at("tolerance").as_object();
    expectKnownMembers(tolerance,
                       {"ra_rad", "dec_rad", "distance_relative", "azimuth_deg_times_cos_elevation",
                        "elevation_deg", "sub_deg", "why"},
                       kFile);
    const auto within = [&](const char* name) { return number(tolerance.at(name)); };
    forEachCase(file, kFile, "cases", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"body", "seconds", "ra", "dec", "distanceKm", "look", "sub"}, kFile);
        SCOPED_TRACE(traceOf(c));
        ASSERT_TRUE(c.at("body").as_string() == "sun" || c.at("body").as_string() == "moon");
        const bool sun = c.at("body").as_string() == "sun";
        const Instant at = instant(c.at("seconds"));

        const EquatorialPlace place = sun ? sunEquatorial(at) : moonEquatorial(at);
        EXPECT_NEAR(angleBetween(place.ra, number(c.at("ra")), twoPi), 0.0, within("ra_rad"));
        EXPECT_NEAR(place.dec, number(c.at("dec")), within("dec_rad"));
        const double distance = number(c.at("distanceKm"));
        const double distanceTolerance = within("distance_relative") * distance;
        EXPECT_NEAR(place.distanceKm, distance, distanceTolerance);

        const auto& looks = c.at("look").as_array();
        ASSERT_EQ(looks.size(), file.at("observers").as_array().size());
        for (std::size_t i = 0; i < looks.size(); ++i) {
            SCOPED_TRACE("observer " + std::to_string(i));
            const GoldenObserver o = observerAt(file, "observers", boost::json::value(i));
            const auto topocentric = sun ? sunTopocentric : moonTopocentric;
            expectLook(topocentric(at, o.latitude, o.longitude), expectedLook(looks[i].as_array()),
                       {within("azimuth_deg_times_cos_elevation"), within("elevation_deg"),
                        distanceTolerance, 0.0});
        }

        const SubSatellitePoint sub = sun ? sunSubPoint(at) : moonSubPoint(at);
        const Vec3 expected = vec3(c.at("sub"));
        EXPECT_NEAR(sub.latitudeDeg, expected.x, within("sub_deg"));
        EXPECT_NEAR(angleBetween(sub.longitudeDeg, expected.y, 360.0), 0.0, within("sub_deg"));
        EXPECT_LE(std::abs(sub.longitudeDeg), 180.0);
        EXPECT_NEAR(sub.altitudeKm, expected.z, distanceTolerance);
    });
}

}  // namespace
}  // namespace veloran::test
