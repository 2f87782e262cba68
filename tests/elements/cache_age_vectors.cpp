#include "elements/cache_age.h"

#include <gtest/gtest.h>

#include "elements/element_records.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

std::optional<std::string> content(const boost::json::value& value) {
    return value.is_null() ? std::nullopt : std::optional(textOf(value));
}

TEST(CacheAgeVectors, EveryTimestampGivesItsAge) {
    constexpr const char* kFile = "data/cache_age.json";
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& testCase) {
        expectKnownMembers(
            testCase,
            {"id", "note", "function", "timestamp", "timestamps", "now", "maxAgeHours", "expected"},
            "cache_age");
        const std::string function = textOf(testCase.at("function"));
        const double now = number(testCase.at("now"));
        if (function == "isCacheStale") {
            EXPECT_EQ(cache_age::isStale(content(testCase.at("timestamp")), now,
                                         number(testCase.at("maxAgeHours"))),
                      testCase.at("expected").as_bool());
            return;
        }
        ASSERT_EQ(function, "oldestCacheAge");
        std::vector<std::optional<std::string>> contents;
        for (const auto& text : testCase.at("timestamps").as_array()) {
            contents.push_back(content(text));
        }
        EXPECT_TRUE(closeTo(cache_age::oldest(contents, now), number(testCase.at("expected"))));
    });
}

}  // namespace
}  // namespace veloran::test
