#include <gtest/gtest.h>

#include "elements/element_merge.h"
#include "elements/element_records.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

TEST(SourceSplitVectors, EverySourceGivesItsKeys) {
    constexpr const char* kFile = "data/source_split.json";
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& testCase) {
        expectKnownMembers(testCase, {"id", "note", "source", "expected"}, "source_split");
        std::set<std::string> expected;
        for (const auto& key : testCase.at("expected").as_array()) expected.insert(textOf(key));
        EXPECT_EQ(splitSources(textOf(testCase.at("source"))), expected);
    });
}

}  // namespace
}  // namespace veloran::test
