#include <gtest/gtest.h>

#include "base/unique_id.h"
#include "elements/element_records.h"
#include "elements/user_tle_source.h"
#include "support/simulated_machine.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

TEST(UserSourceAddVectors, AnAddressIsStoredOnce) {
    constexpr const char* kFile = "data/user_source_add.json";
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& testCase) {
        expectKnownMembers(testCase, {"id", "note", "add", "expected", "stored", "keys"}, kFile);
        MemorySettings settings;
        UserTLESourceStore store(settings);
        const auto& pairs = testCase.at("add").as_array();
        const auto& expected = testCase.at("expected").as_array();
        ASSERT_EQ(pairs.size(), expected.size());
        for (std::size_t i = 0; i < pairs.size(); ++i) {
            const UserTLESource source{UniqueId::make().text(), textOf(pairs[i].at(0)),
                                       textOf(pairs[i].at(1))};
            EXPECT_EQ(store.add(source), expected[i].as_bool()) << "source " << i;
        }
        const auto sources = store.load();
        const auto& stored = testCase.at("stored").as_array();
        const auto& keys = testCase.at("keys").as_array();
        ASSERT_EQ(sources.size(), stored.size());
        ASSERT_EQ(sources.size(), keys.size());
        for (std::size_t i = 0; i < sources.size(); ++i) {
            EXPECT_EQ(sources[i].name, textOf(stored[i].at(0))) << "stored " << i;
            EXPECT_EQ(sources[i].url, textOf(stored[i].at(1))) << "stored " << i;
            EXPECT_EQ(sources[i].categoryKey(), textOf(keys[i])) << "key " << i;
        }
    });
}

}  // namespace
}  // namespace veloran::test
