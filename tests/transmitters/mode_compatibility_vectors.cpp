#include <gtest/gtest.h>

#include "support/vectors.h"
#include "transmitters/transponder_pair.h"

namespace veloran::test {
namespace {

TEST(ModeCompatibilityVectors, AllCases) {
    forEachCase(loadVectors("data/mode_compatibility.json"), "data/mode_compatibility.json",
                "cases", [](const boost::json::object& testCase) {
                    expectKnownMembers(testCase, {"id", "note", "a", "b", "expected"}, "case");
                    EXPECT_EQ(modesAreCompatible(testCase.at("a").as_string(),
                                                 testCase.at("b").as_string()),
                              testCase.at("expected").as_bool())
                        << "expected, of " << testCase.at("a") << " and " << testCase.at("b");
                });
}

}  // namespace
}  // namespace veloran::test
