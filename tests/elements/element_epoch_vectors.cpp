#include <gtest/gtest.h>

#include <limits>

#include "elements/element_records.h"
#include "elements/tle_data.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

void expectEpoch(const boost::json::object& testCase) {
    const std::string kind = textOf(testCase.at("kind"));
    TLEData set;
    if (kind == "ageAbsent") {
        set.epochDays = std::numeric_limits<double>::infinity();
        EXPECT_EQ(set.ageString(Instant{}), textOf(testCase.at("expectedAgeString")));
        return;
    }
    set.epochYear = testCase.at("year").to_number<std::int64_t>();
    set.epochDays = number(testCase.at("days"));
    if (kind == "epochDate") {
        const auto epoch = set.epochDate();
        ASSERT_TRUE(epoch);
        EXPECT_NEAR(epoch->unixSeconds(), number(testCase.at("expectedUnixSeconds")), 1e-5);
        return;
    }
    ASSERT_EQ(kind, "age");
    const Instant now = Instant::fromUnixSeconds(number(testCase.at("nowUnixSeconds")));
    const auto age = set.ageDays(now);
    ASSERT_TRUE(age);
    EXPECT_NEAR(*age, number(testCase.at("expectedAgeDays")), 1e-9);
    EXPECT_EQ(set.ageString(now), textOf(testCase.at("expectedAgeString")));
}

TEST(ElementEpochVectors, EveryEpochGivesItsMomentAndAge) {
    constexpr const char* kFile = "data/element_epoch.json";
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& testCase) {
        expectKnownMembers(testCase,
                           {"id", "note", "kind", "year", "days", "nowUnixSeconds",
                            "expectedUnixSeconds", "expectedAgeDays", "expectedAgeString"},
                           "element_epoch");
        expectEpoch(testCase);
    });
}

}  // namespace
}  // namespace veloran::test
