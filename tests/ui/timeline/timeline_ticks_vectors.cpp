#include "support/vectors.h"
#include "ui/timeline/timeline_ticks.h"

namespace veloran::test {
namespace {

TickKind kindNamed(std::string_view name) {
    if (name == "major") return TickKind::major;
    if (name == "middle") return TickKind::middle;
    EXPECT_EQ(name, "minor");
    return TickKind::minor;
}

TEST(TimelineTicksVectors, EveryTickHasItsPlaceAndKind) {
    constexpr double kTolerance = 1e-9;
    const auto file = loadVectors("data/timeline_ticks.json");
    forEachCase(file, "timeline_ticks.json", "cases", [](const boost::json::object& c) {
        expectKnownMembers(c, {"id", "hours", "width", "majorStep", "minorStep", "ticks"}, "case");
        const double hours = number(c.at("hours"));
        EXPECT_TRUE(closeTo(bestHourStep(hours), number(c.at("majorStep")))) << "majorStep";
        EXPECT_TRUE(closeTo(minorHourStep(hours), number(c.at("minorStep")))) << "minorStep";
        const auto actual = timelineTicks(hours, number(c.at("width")));
        const auto& expected = c.at("ticks").as_array();
        ASSERT_EQ(actual.size(), expected.size()) << "ticks";
        for (std::size_t i = 0; i < actual.size(); ++i) {
            const auto& tick = expected[i].as_object();
            expectKnownMembers(tick, {"h", "kind", "x"}, "tick");
            EXPECT_NEAR(actual[i].hours, number(tick.at("h")), kTolerance) << "tick " << i;
            EXPECT_NEAR(actual[i].x, number(tick.at("x")), kTolerance) << "tick " << i;
            EXPECT_EQ(actual[i].kind, kindNamed(tick.at("kind").as_string())) << "tick " << i;
        }
    });
}

}  // namespace
}  // namespace veloran::test
