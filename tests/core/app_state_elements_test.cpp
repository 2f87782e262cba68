#include <gtest/gtest.h>

#include "base/unique_id.h"
#include "support/core_world.h"

namespace veloran::test {
namespace {

constexpr const char* kLine2 =
    "2 25544  51.6412 208.9163 0006703  69.9862 290.2073 15.50073832560129";

/// A set of lines whose epoch is a day before the simulated machine starts.
std::string lines(const std::string& name, const std::string& number,
                  const std::string& epoch = "26325.00000000") {
    return name + "\n1 " + number + "U 98067A   " + epoch +
           "  .00016717  00000-0  10270-3 0  9991\n" + kLine2 + "\n";
}

UserTLESource source(const std::string& name, const std::string& url) {
    return {UniqueId::make().text(), name, url};
}

class OwnElements : public ::testing::Test {
  protected:
    void SetUp() override {
        world.machine.settings.set("tleCategories", std::vector<std::string>{"amateur"});
        world.cacheGroup("amateur", ommGroup({{"RS-44", 44909}}));
        world.start();
    }
    void subscribe(const std::string& key) {
        auto keys = world.app->subscribedCategories.get();
        keys.insert(key);
        world.app->subscribedCategories = std::move(keys);
    }
    /// Adds a source, subscribes to it and answers its address.
    void addSource(const UserTLESource& added, std::optional<std::string> body) {
        EXPECT_TRUE(world.app->userSources().add(added));
        subscribe(added.categoryKey());
        if (body) world.machine.http.answers[added.url].body = std::move(body);
    }
    /// What the next import will report, filled in once the machine has run.
    std::shared_ptr<CustomTLEStore::ImportResult> import(const std::string& text) {
        auto result = std::make_shared<CustomTLEStore::ImportResult>();
        result->count = -1;
        world.app->importElements(text, [result](const auto& reported) { *result = reported; });
        return result;
    }
    std::string storedFile() const {
        const auto found = world.machine.files.files.find("/home/test/.veloran/custom.tle");
        return found == world.machine.files.files.end() ? "" : found->second;
    }
    std::set<std::string> sourcesOf(std::int64_t id) const {
        const auto body = world.body(id);
        return body ? body->sources : std::set<std::string>{"no such body"};
    }

    CoreWorld world;
};

// ---- User sources

TEST_F(OwnElements, SubscribedSourceBringsItsSatellitesUnderItsKey) {
    addSource(source("My List", "http://lists.test/all.txt"), lines("OWN", "70001"));
    world.load();
    ASSERT_NE(world.body(70001), nullptr);
    EXPECT_EQ(world.body(70001)->name, "OWN");
    EXPECT_EQ(sourcesOf(70001), std::set<std::string>{"user:My_List"});
    EXPECT_EQ(sourcesOf(44909), std::set<std::string>{"amateur"});
    EXPECT_EQ(world.machine.files.files.at("/home/test/.veloran/tle/user-My_List.tle"),
              lines("OWN", "70001"));
}

TEST_F(OwnElements, SourceOfOrbitMessagesIsReadLikeOneOfLines) {
    addSource(source("Json", "http://lists.test/all.json"), ommGroup({{"OWN", 70001}}));
    world.load();
    EXPECT_EQ(sourcesOf(70001), std::set<std::string>{"user:Json"});
}

TEST_F(OwnElements, SourceWithoutSubscriptionIsNotAsked) {
    world.app->userSources().add(source("My List", "http://lists.test/all.txt"));
    world.load();
    for (const auto& request : world.machine.http.requests) {
        EXPECT_FALSE(request.starts_with("http://lists.test")) << request;
    }
    EXPECT_FALSE(world.machine.http.requests.empty()) << "channels are asked for";
}

TEST_F(OwnElements, AddressThatIsNoneLeavesTheOtherGroupsAlone) {
    const std::vector<std::string> addresses{"",   "no address",         "http://",
                                             "\n", "file:///etc/passwd", std::string(20000, 'x')};
    for (std::size_t i = 0; i < addresses.size(); ++i) {
        addSource(source("list " + std::to_string(i), addresses[i]), std::nullopt);
    }
    world.load();
    EXPECT_FALSE(world.app->isLoadingTLEs);
    EXPECT_EQ(world.app->satellites->size(), 3u);
    EXPECT_NE(world.body(44909), nullptr);
}

TEST_F(OwnElements, StoredSourcesOfAWrongFormCountAsNone) {
    const std::size_t builtin = world.app->elements().builtinCategories().size();
    for (const SettingValue& wrong :
         {SettingValue(std::string("[{\"id\":7}]")), SettingValue(std::string("\xFF{")),
          SettingValue(std::vector<std::string>{"http://a/x"}), SettingValue(true)}) {
        world.machine.settings.set("userTLESources", wrong);
        EXPECT_TRUE(world.app->userSources().load().empty());
        EXPECT_EQ(world.app->elements().categories().size(), builtin);
    }
    addSource(source("My List", "http://lists.test/all.txt"), lines("OWN", "70001"));
    world.load();
    EXPECT_NE(world.body(70001), nullptr);
}

TEST_F(OwnElements, PresetsKeepTheirIdentityForTheRun) {
    ASSERT_EQ(world.app->presetSources().size(), 2u);
    EXPECT_EQ(world.app->presetSources(), world.app->presetSources());
    EXPECT_NE(world.app->presetSources()[0].id,
              AppState::create(world.machine.machine)->presetSources()[0].id);
}

TEST_F(OwnElements, PresetHostsAreConfigured) {
    AppConfig config;
    config.presetHosts = {"http://one.test", "http://two.test"};
    world.start(config);
    EXPECT_EQ(world.app->presetSources()[0].url, "http://one.test/SAT/csnbare.txt");
}

// ---- Imported sets

TEST_F(OwnElements, ImportedSetJoinsTheNextMergeAsCustom) {
    const auto result = import(lines("MINE", "70002"));
    world.machine.loop.runPosted();
    EXPECT_EQ(result->count, 1);
    EXPECT_EQ(result->error, std::nullopt);
    EXPECT_EQ(world.body(70002), nullptr) << "only a load brings it in";
    world.load();
    ASSERT_NE(world.body(70002), nullptr);
    EXPECT_EQ(sourcesOf(70002), std::set<std::string>{"custom"});
}

TEST_F(OwnElements, ImportedSetOfAListedSatelliteWinsTheTieAndNamesBothSources) {
    import(lines("MINE", "44909"));
    world.machine.loop.runPosted();
    world.load();
    EXPECT_EQ(world.body(44909)->name, "MINE");
    EXPECT_EQ(sourcesOf(44909), (std::set<std::string>{"amateur", "custom"}));
}

TEST_F(OwnElements, ImportsInQuickSuccessionAllLand) {
    world.machine.workers.held = true;
    const auto first = import(lines("A", "70001"));
    const auto second = import(lines("B", "70002"));
    const auto third = import("[nonsense");
    const auto fourth = import(lines("A2", "70001") + lines("C", "70003"));
    EXPECT_EQ(storedFile(), "");
    world.machine.workers.release();
    world.machine.loop.runPosted();
    EXPECT_EQ(first->count, 1);
    EXPECT_EQ(second->count, 1);
    EXPECT_EQ(third->error, "JSON could not be parsed");
    EXPECT_EQ(fourth->count, 1);
    EXPECT_EQ(storedFile(), lines("A2", "70001") + lines("B", "70002") + lines("C", "70003"));
}

TEST_F(OwnElements, RemoveAndClearTakeTheirTurn) {
    int reports = 0;
    import(lines("A", "70001") + lines("B", "70002"));
    world.app->removeImported(70001, [&] {
        ++reports;
        EXPECT_EQ(storedFile(), lines("B", "70002"));
    });
    world.machine.loop.runPosted();
    world.app->clearImported([&] { ++reports; });
    world.app->importElements(lines("C", "70003"), {});
    world.machine.loop.runPosted();
    EXPECT_EQ(reports, 2);
    EXPECT_EQ(storedFile(), lines("C", "70003"));
    world.app->removeImported(70003, {});
    world.app->clearImported({});
    world.machine.loop.runPosted();
    EXPECT_EQ(world.machine.files.files.count("/home/test/.veloran/custom.tle"), 0u);
}

TEST_F(OwnElements, ImportIsStoredAndNotReportedWhenTheStateHasGone) {
    const auto result = import(lines("A", "70001"));
    bool removed = false;
    world.app->removeImported(1, [&removed] { removed = true; });
    world.app.reset();
    world.machine.loop.runPosted();
    EXPECT_EQ(storedFile(), lines("A", "70001"));
    EXPECT_EQ(result->count, -1);
    EXPECT_FALSE(removed);
}

TEST_F(OwnElements, ImportOnADiskThatRefusesLeavesEverythingAsItWas) {
    import(lines("A", "70001"));
    world.machine.loop.runPosted();
    world.machine.files.writable = false;
    const auto result = import(lines("B", "70002"));
    world.machine.loop.runPosted();
    EXPECT_EQ(result->error, std::nullopt);
    world.load();
    EXPECT_NE(world.body(70001), nullptr);
    EXPECT_EQ(world.body(70002), nullptr);
}

}  // namespace
}  // namespace veloran::test
