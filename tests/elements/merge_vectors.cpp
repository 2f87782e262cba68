#include <gtest/gtest.h>

#include <algorithm>

#include "elements/element_merge.h"
#include "elements/element_records.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

std::vector<TLEData> readList(const boost::json::value& list) {
    std::vector<TLEData> sets;
    for (const auto& element : list.as_array()) {
        const auto& record = element.as_object();
        expectKnownMembers(record, {"noradId", "name", "epochYear", "epochDays", "source"},
                           "record of merge");
        TLEData set;
        set.noradId = record.at("noradId").to_number<std::int64_t>();
        set.name = textOf(record.at("name"));
        set.epochYear = record.at("epochYear").to_number<std::int64_t>();
        set.epochDays = number(record.at("epochDays"));
        set.source = textOf(record.at("source"));
        sets.push_back(std::move(set));
    }
    return sets;
}

void expectMerged(const boost::json::object& testCase) {
    std::vector<std::vector<TLEData>> lists;
    for (const auto& group : testCase.at("groups").as_array()) lists.push_back(readList(group));
    lists.push_back(readList(testCase.at("custom")));
    auto merged = mergeElements(lists);
    std::sort(merged.begin(), merged.end(),
              [](const TLEData& a, const TLEData& b) { return a.noradId < b.noradId; });

    const auto& expected = testCase.at("expected").as_array();
    ASSERT_EQ(merged.size(), expected.size());
    for (std::size_t i = 0; i < merged.size(); ++i) {
        const auto& record = expected[i].as_object();
        expectKnownMembers(record, {"noradId", "name", "source"}, "expected of merge");
        EXPECT_EQ(merged[i].noradId, record.at("noradId").to_number<std::int64_t>());
        EXPECT_EQ(merged[i].name, textOf(record.at("name"))) << merged[i].noradId << ", field name";
        EXPECT_EQ(merged[i].source, textOf(record.at("source")))
            << merged[i].noradId << ", field source";
    }
}

TEST(MergeVectors, EveryCollectionGivesItsWinners) {
    constexpr const char* kFile = "data/merge.json";
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& testCase) {
        expectKnownMembers(testCase, {"id", "note", "groups", "custom", "expected"}, "merge");
        expectMerged(testCase);
    });
}

}  // namespace
}  // namespace veloran::test
