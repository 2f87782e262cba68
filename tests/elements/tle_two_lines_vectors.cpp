#include <gtest/gtest.h>

#include "elements/element_records.h"
#include "elements/tle_parser.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

TEST(TleTwoLinesVectors, EveryPairOfLinesGivesItsRecordOrNone) {
    constexpr const char* kFile = "data/tle_two_lines.json";
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& testCase) {
        expectKnownMembers(testCase, {"id", "note", "name", "line1", "line2", "expected"},
                           "tle_two_lines");
        const auto record =
            TLEParser::parseTwoLines(textOf(testCase.at("name")), textOf(testCase.at("line1")),
                                     textOf(testCase.at("line2")));
        const auto& expected = testCase.at("expected");
        ASSERT_EQ(record.has_value(), !expected.is_null());
        if (record) expectRecord(*record, expected.as_object(), {.bstar = 1e-13});
    });
}

}  // namespace
}  // namespace veloran::test
