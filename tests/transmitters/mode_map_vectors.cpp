#include <gtest/gtest.h>

#include "support/vectors.h"
#include "transmitters/transmitter.h"

namespace veloran::test {
namespace {

TEST(ModeMapVectors, AllCases) {
    forEachCase(
        loadVectors("data/mode_map.json"), "data/mode_map.json", "cases",
        [](const boost::json::object& testCase) {
            expectKnownMembers(testCase, {"id", "note", "mode", "hamlib", "passband"}, "case");
            const auto& mode = testCase.at("mode").as_string();
            EXPECT_EQ(modeToHamlib(mode), testCase.at("hamlib").as_string())
                << "hamlib of " << mode;
            EXPECT_EQ(passbandForMode(mode), testCase.at("passband").as_int64())
                << "passband of " << mode;
        });
}

}  // namespace
}  // namespace veloran::test
