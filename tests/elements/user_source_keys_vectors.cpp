#include <gtest/gtest.h>

#include "elements/element_records.h"
#include "elements/tle_manager.h"
#include "elements/user_tle_source.h"
#include "support/simulated_machine.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

TEST(UserSourceKeysVectors, EveryNameGivesItsKeyAndItsFiles) {
    constexpr const char* kFile = "data/user_source_keys.json";
    SimulatedMachine simulated;
    const TLEManager manager(simulated.machine, "https://service");
    forEachCase(loadVectors(kFile), kFile, "cases", [&](const boost::json::object& testCase) {
        expectKnownMembers(
            testCase, {"id", "note", "name", "categoryKey", "cacheFile", "timestampFile"}, kFile);
        const auto key = UserTLESource{"", textOf(testCase.at("name")), ""}.categoryKey();
        EXPECT_EQ(key, textOf(testCase.at("categoryKey"))) << "field categoryKey";
        EXPECT_EQ(manager.cacheFile(key).filename().string(), textOf(testCase.at("cacheFile")))
            << "field cacheFile";
        EXPECT_EQ(manager.timestampFile(key).filename().string(),
                  textOf(testCase.at("timestampFile")))
            << "field timestampFile";
    });
}

}  // namespace
}  // namespace veloran::test
