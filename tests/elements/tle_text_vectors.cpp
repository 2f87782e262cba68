#include <gtest/gtest.h>

#include "elements/element_records.h"
#include "elements/tle_parser.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

TEST(TleTextVectors, EveryTextGivesItsRecords) {
    constexpr const char* kFile = "data/tle_text.json";
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& testCase) {
        expectKnownMembers(testCase, {"id", "note", "text", "expected"}, "tle_text");
        expectRecords(TLEParser::parse(textOf(testCase.at("text"))), testCase.at("expected"),
                      {.bstar = 1e-13});
    });
}

}  // namespace
}  // namespace veloran::test
