#include <gtest/gtest.h>

#include "elements/element_records.h"
#include "elements/tle_manager.h"
#include "support/simulated_machine.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

TEST(BuiltinGroupsVectors, EveryGroupStandsInItsPlace) {
    constexpr const char* kFile = "data/builtin_groups.json";
    const auto file = loadVectors(kFile);
    SimulatedMachine simulated;
    const TLEManager manager(simulated.machine, "https://service");
    const auto categories = manager.builtinCategories();
    ASSERT_EQ(categories.size(), file.at("cases").as_array().size());
    std::size_t position = 0;
    forEachCase(file, kFile, "cases", [&](const boost::json::object& testCase) {
        expectKnownMembers(testCase,
                           {"id", "note", "key", "description", "section", "path", "cacheFile"},
                           "builtin_groups");
        const auto& category = categories[position++];
        EXPECT_EQ(category.name, textOf(testCase.at("key"))) << "field key";
        EXPECT_EQ(category.description, textOf(testCase.at("description"))) << "field description";
        EXPECT_EQ(category.section, textOf(testCase.at("section"))) << "field section";
        EXPECT_EQ(category.url, "https://service" + textOf(testCase.at("path"))) << "field path";
        EXPECT_EQ(manager.cacheFile(category.name).filename(), textOf(testCase.at("cacheFile")))
            << "field cacheFile";
        EXPECT_FALSE(category.isUserSource);
    });
}

}  // namespace
}  // namespace veloran::test
