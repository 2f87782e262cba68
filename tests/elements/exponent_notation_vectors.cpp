#include <gtest/gtest.h>

#include "elements/element_records.h"
#include "elements/tle_parser.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

TEST(ExponentNotationVectors, EveryFieldGivesItsNumber) {
    constexpr const char* kFile = "data/exponent_notation.json";
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& testCase) {
        expectKnownMembers(testCase, {"id", "note", "text", "expected"}, "exponent_notation");
        EXPECT_TRUE(closeTo(TLEParser::parseExponentNotation(textOf(testCase.at("text"))),
                            number(testCase.at("expected")), 1e-13));
    });
}

}  // namespace
}  // namespace veloran::test
