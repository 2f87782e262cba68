#include <gtest/gtest.h>

#include "elements/element_records.h"
#include "elements/tle_manager.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

TEST(ParseAutoVectors, EveryTextOfEitherFormGivesItsRecords) {
    constexpr const char* kFile = "data/parse_auto.json";
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& testCase) {
        expectKnownMembers(testCase, {"id", "note", "text", "expected"}, "parse_auto");
        expectRecords(TLEManager::parseAuto(textOf(testCase.at("text"))), testCase.at("expected"),
                      {.epochDays = 1e-12, .bstar = 1e-13});
    });
}

}  // namespace
}  // namespace veloran::test
