#include <gtest/gtest.h>

#include "elements/element_records.h"
#include "elements/omm_parser.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

TEST(OmmLinesVectors, EveryMessageGivesItsRecordAndLines) {
    constexpr const char* kFile = "data/omm_lines.json";
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& testCase) {
        expectKnownMembers(testCase, {"id", "note", "json", "expected"}, "omm_lines");
        expectRecords(OMMParser::parse(textOf(testCase.at("json"))), testCase.at("expected"),
                      {.epochDays = 1e-12});
    });
}

}  // namespace
}  // namespace veloran::test
