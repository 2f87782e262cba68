#include "elements/user_tle_source.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/unique_id.h"
#include "elements/tle_manager.h"
#include "support/simulated_machine.h"

namespace veloran {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kKey = "userTLESources";

UserTLESource source(const std::string& name, const std::string& url) {
    return {UniqueId::make().text(), name, url};
}

class UserTLESourceTest : public ::testing::Test {
  protected:
    test::MemorySettings settings;
    UserTLESourceStore store{settings};
};

TEST_F(UserTLESourceTest, StoredAddressUnderAnotherNameIsRefused) {
    const auto first = source("One", "http://a/x");
    EXPECT_TRUE(store.add(first));
    EXPECT_FALSE(store.add(source("Two", "http://a/x")));
    EXPECT_THAT(store.load(), ElementsAre(first));
}

TEST_F(UserTLESourceTest, KeyAndCacheFileComeFromTheName) {
    test::SimulatedMachine simulated;
    const TLEManager manager(simulated.machine, "https://service");
    const auto listed = source("My List/Test", "http://a/x");
    EXPECT_EQ(listed.categoryKey(), "user:My_List_Test");
    EXPECT_EQ(manager.cacheFile(listed.categoryKey()).filename(), "user-My_List_Test.tle");
}

TEST_F(UserTLESourceTest, AsAGroupItNamesKeyAddressAndSection) {
    const auto category = source("My List", "http://a/x").asCategory();
    EXPECT_EQ(category.name, "user:My_List");
    EXPECT_EQ(category.url, "http://a/x");
    EXPECT_EQ(category.description, "My List");
    EXPECT_EQ(category.section, "Custom URLs");
    EXPECT_TRUE(category.isUserSource);
}

TEST_F(UserTLESourceTest, AddedSourceStandsAtTheEndOfTheGroupsAtOnce) {
    test::SimulatedMachine simulated;
    UserTLESourceStore sources(simulated.settings);
    const TLEManager manager(simulated.machine, "https://service",
                             {[sources] { return asCategories(sources.load()); }, {}});
    const std::size_t builtin = manager.categories().size();
    sources.add(source("One", "http://a/x"));
    sources.add(source("Two", "http://a/y"));
    const auto categories = manager.categories();
    ASSERT_EQ(categories.size(), builtin + 2);
    EXPECT_EQ(categories[builtin].name, "user:One");
    EXPECT_EQ(categories.back().name, "user:Two");
}

TEST_F(UserTLESourceTest, CorruptedValueReadsAsEmptyAndTheNextSaveOverwritesIt) {
    const std::string id = UniqueId::make().text();
    const std::vector<SettingValue> corrupted{
        std::string(""),
        std::string("no JSON"),
        std::string("{}"),
        std::string("[7]"),
        std::string(R"([{"name": "N", "url": "http://a/x"}])"),
        std::string(R"([{"id": "7", "name": "N", "url": "http://a/x"}])"),
        R"([{"id": ")" + id + R"(", "name": 7, "url": "http://a/x"}])",
        R"([{"id": ")" + id + R"(", "name": "N", "url": null}])",
        R"([{"id": ")" + id + R"(", "name": "N", "url": "http://a/x"}, {}])",
        std::string("[\"\xFF\"]"),
        true,
        std::int64_t{7},
        7.5,
        std::vector<std::string>{"http://a/x"},
        std::vector<std::int64_t>{7}};
    const auto fresh = source("One", "http://a/x");
    for (std::size_t i = 0; i < corrupted.size(); ++i) {
        settings.set(kKey, corrupted[i]);
        EXPECT_THAT(store.load(), IsEmpty()) << "value " << i;
        store.save({fresh});
        EXPECT_THAT(store.load(), ElementsAre(fresh)) << "value " << i;
    }
}

TEST_F(UserTLESourceTest, IsStoredAsOneJsonListWithThreeMembersEach) {
    store.save({{"00000000-0000-4000-8000-00000000000a", "N \"1\"", "http://a/x?y=1&z=ü"}});
    EXPECT_EQ(settings.text(kKey), R"([{"id":"00000000-0000-4000-8000-00000000000a",)"
                                   R"("name":"N \"1\"","url":"http://a/x?y=1&z=ü"}])");
    EXPECT_EQ(store.load().at(0).url, "http://a/x?y=1&z=ü");
}

TEST_F(UserTLESourceTest, TextThatCannotBeStoredLeavesTheListAsItWas) {
    const auto good = source("One", "http://a/x");
    store.add(good);
    store.add(source("Two\xFF", "http://a/y"));
    EXPECT_THAT(store.load(), ElementsAre(good));
}

TEST_F(UserTLESourceTest, RemoveTakesTheOneWithTheIdentity) {
    const auto one = source("Same", "http://a/x");
    const auto two = source("Same", "http://a/y");
    store.add(one);
    store.add(two);
    store.remove("no identity of any");
    EXPECT_THAT(store.load(), ElementsAre(one, two));
    store.remove(one.id);
    EXPECT_THAT(store.load(), ElementsAre(two));
}

TEST_F(UserTLESourceTest, OfSourcesThatShareAKeyTheFirstIsFound) {
    const auto one = source("My List", "http://a/x");
    store.add(one);
    store.add(source("My/List", "http://a/y"));
    EXPECT_EQ(store.findByCategoryKey("user:My_List"), one);
    EXPECT_EQ(store.findByCategoryKey("user:My List"), std::nullopt);
}

TEST_F(UserTLESourceTest, NameAndAddressAreNotExamined) {
    EXPECT_TRUE(store.add(source("", "")));
    EXPECT_FALSE(store.add(source("other", "")));
    EXPECT_EQ(store.load().at(0).categoryKey(), "user:");
}

TEST_F(UserTLESourceTest, PresetsUseTheirHostsAndAreNotStored) {
    const auto presets = presetSources({"http://one.test", "https://two.test"});
    ASSERT_EQ(presets.size(), 2u);
    EXPECT_EQ(presets[0].name, "CSN Technologies");
    EXPECT_EQ(presets[0].url, "http://one.test/SAT/csnbare.txt");
    EXPECT_EQ(presets[1].name, "AMSAT NASA.all");
    EXPECT_EQ(presets[1].url, "https://two.test/tle/current/nasa.all");
    EXPECT_NE(presets[0].id, presets[1].id);
    EXPECT_THAT(store.load(), IsEmpty());
}

}  // namespace
}  // namespace veloran
