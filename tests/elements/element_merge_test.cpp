#include "elements/element_merge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace veloran {
namespace {

constexpr double kSecond = 1.0 / 86400;

TLEData set(std::int64_t noradId, const char* name, double epochSeconds, const char* source) {
    TLEData result;
    result.noradId = noradId;
    result.name = name;
    result.epochYear = 2026;
    result.epochDays = 95 + epochSeconds * kSecond;
    result.source = source;
    return result;
}

TEST(MergeElements, ThirtySecondsApartTheFirstStaysAndBothSourcesAreListed) {
    const auto merged = mergeElements({{set(7, "A", 0, "stations")}, {set(7, "B", 30, "amateur")}});
    ASSERT_EQ(merged.size(), 1u);
    EXPECT_EQ(merged[0].name, "A");
    EXPECT_EQ(merged[0].source, "amateur,stations");
}

TEST(MergeElements, SixtyOneSecondsApartTheLaterWinsWhateverTheOrder) {
    const auto early = set(7, "early", 0, "a"), late = set(7, "late", 61, "b");
    EXPECT_EQ(mergeElements({{early}, {late}})[0].name, "late");
    EXPECT_EQ(mergeElements({{late}, {early}})[0].name, "late");
    EXPECT_EQ(mergeElements({{early}, {late}})[0].source, "a,b");
}

TEST(MergeElements, AnImportedSetWinsATieAndIsNamedInTheSource) {
    const auto merged = mergeElements({{set(7, "G", 30, "amateur")}, {set(7, "C", 0, "custom")}});
    EXPECT_EQ(merged[0].name, "C");
    EXPECT_EQ(merged[0].source, "amateur,custom");
    EXPECT_EQ(mergeElements({{set(7, "C", 0, "custom")}, {set(7, "G", 30, "a")}})[0].name, "C");
}

TEST(MergeElements, ANewerGroupBeatsAnImportedSet) {
    EXPECT_EQ(mergeElements({{set(7, "G", 61, "a")}, {set(7, "C", 0, "custom")}})[0].name, "G");
}

TEST(MergeElements, AMinuteApartIsStillATie) {
    EXPECT_EQ(mergeElements({{set(7, "G", 60, "a")}, {set(7, "C", 0, "custom")}})[0].name, "C");
    EXPECT_EQ(mergeElements({{set(7, "A", 0, "a")}, {set(7, "B", 60, "b")}})[0].name, "A");
}

TEST(MergeElements, OfTwoImportedSetsInATieTheFirstStays) {
    const auto merged = mergeElements({{set(7, "A", 0, "custom"), set(7, "B", 30, "custom")}});
    EXPECT_EQ(merged[0].name, "A");
}

TEST(MergeElements, ASetWithoutEpochNeverReplacesNorIsReplaced) {
    auto timeless = set(7, "T", 0, "custom");
    timeless.epochDays = HUGE_VAL;
    EXPECT_EQ(mergeElements({{set(7, "A", 0, "a")}, {timeless}})[0].name, "A");
    EXPECT_EQ(mergeElements({{timeless}, {set(7, "A", 0, "a")}})[0].name, "T");
}

TEST(MergeElements, NumbersKeepTheOrderOfTheirFirstAppearance) {
    const auto merged =
        mergeElements({{set(9, "A", 0, "a"), set(3, "B", 0, "a")}, {set(5, "C", 0, "b")}, {}});
    ASSERT_EQ(merged.size(), 3u);
    EXPECT_EQ(merged[0].noradId, 9);
    EXPECT_EQ(merged[1].noradId, 3);
    EXPECT_EQ(merged[2].noradId, 5);
}

TEST(MergeElements, WithoutAnySourceTheSourceStaysEmpty) {
    EXPECT_EQ(mergeElements({{set(7, "A", 0, "")}})[0].source, "");
    EXPECT_TRUE(mergeElements({}).empty());
}

TEST(SplitSources, LeavesEmptyPiecesOut) {
    EXPECT_THAT(splitSources(",a,,b,a"), ::testing::ElementsAre("a", "b"));
    EXPECT_THAT(splitSources(""), ::testing::IsEmpty());
}

}  // namespace
}  // namespace veloran
