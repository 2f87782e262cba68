#include "golden_orbits.h"
#include "orbit/sgp4.h"

namespace veloran::test {
namespace {

constexpr const char* kFile = "orbit/propagation.json";

double ownOr(const boost::json::object& sample, const char* own, const boost::json::value& common) {
    const auto* value = sample.if_contains(own);
    return number(value ? *value : common);
}

TEST(PropagationVectors, StatesAndErrors) {
    const auto file = loadVectors(kFile);
    expectKnownMembers(file, {"about", "tolerance", "cases"}, kFile);
    const auto& tolerance = file.at("tolerance").as_object();
    expectKnownMembers(tolerance, {"km", "kmS", "why"}, kFile);
    forEachCase(file, kFile, "cases", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"id", "category", "samples"}, kFile);
        const SatRec& satrec = *goldenSatRec(c.at("id"));
        for (const auto& value : c.at("samples").as_array()) {
            const auto& sample = value.as_object();
            expectKnownMembers(sample, {"t", "r", "v", "error", "tolKm", "tolKmS"}, kFile);
            SCOPED_TRACE("id " + boost::json::serialize(c.at("id")) + " at minute " +
                         boost::json::serialize(sample.at("t")));
            const Propagation result = propagate(satrec, number(sample.at("t")));
            if (const auto* error = sample.if_contains("error")) {
                EXPECT_EQ(static_cast<std::int64_t>(result.error),
                          error->to_number<std::int64_t>());
                continue;
            }
            ASSERT_EQ(result.error, Sgp4Error::none);
            expectNear(result.state.position, vec3(sample.at("r")),
                       ownOr(sample, "tolKm", tolerance.at("km")), "r");
            expectNear(result.state.velocity, vec3(sample.at("v")),
                       ownOr(sample, "tolKmS", tolerance.at("kmS")), "v");
        }
    });
}

}  // namespace
}  // namespace veloran::test
