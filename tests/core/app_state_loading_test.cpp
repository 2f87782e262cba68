#include <gtest/gtest.h>

#include "core/status_texts.h"
#include "support/core_world.h"

namespace veloran::test {
namespace {

/// Remembers every text the status line takes.
class StatusLog {
  public:
    explicit StatusLog(AppState& app)
        : app_(app), subscription_(app.objectWillChange.subscribe([this] { look(); })) {}
    std::vector<std::string> texts() {
        look();
        return texts_;
    }

  private:
    void look() {
        if (texts_.empty() || texts_.back() != app_.statusMessage.get()) {
            texts_.push_back(app_.statusMessage);
        }
    }
    AppState& app_;
    std::vector<std::string> texts_;
    ChangeNotifier::Subscription subscription_;
};

class Loading : public ::testing::Test {
  protected:
    void subscribeTo(std::vector<std::string> groups) {
        world.machine.settings.set("tleCategories", std::move(groups));
    }
    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const auto& satellite : world.app->satellites.get()) result.push_back(satellite->name);
        return result;
    }

    CoreWorld world;
};

TEST_F(Loading, BuildsOneSortedListWithSunAndMoon) {
    subscribeTo({"amateur"});
    world.cacheGroup("amateur", ommGroup({{"ZEBRA", 3}, {"apple", 1}, {"SO-50", 27607}}));
    world.start();
    world.load();
    EXPECT_EQ(names(), (std::vector<std::string>{"Moon", "SO-50", "Sun", "ZEBRA", "apple"}));
    EXPECT_EQ(world.body(27607)->transmitters.size(), 2u);
    EXPECT_TRUE(world.body(3)->transmitters.empty());
    EXPECT_EQ(world.body(3)->sources, std::set<std::string>{"amateur"});
    EXPECT_EQ(world.body(-1)->sources, std::set<std::string>{"celestial"});
    EXPECT_NE(world.body(3)->satrec, nullptr);
    EXPECT_EQ(world.body(-2)->satrec, nullptr);
    EXPECT_EQ(world.body(-2)->bodyKind, BodyKind::moon);
}

TEST_F(Loading, SourcesNameEveryGroupOfTheBody) {
    subscribeTo({"amateur", "stations"});
    world.cacheGroup("amateur", ommGroup({{"ISS (ZARYA)", 25544}}));
    world.cacheGroup("stations", ommGroup({{"ISS (ZARYA)", 25544}}));
    world.start();
    world.load();
    EXPECT_EQ(world.body(25544)->sources, (std::set<std::string>{"amateur", "stations"}));
}

TEST_F(Loading, StatusLineTellsTheStepsInOrder) {
    subscribeTo({"amateur"});
    world.cacheGroup("amateur", ommGroup({{"RS-44", 44909}}), 7200);
    world.start();
    StatusLog log(*world.app);
    world.load();
    const std::size_t passes = world.body(44909)->passes->size();
    EXPECT_GT(passes, 0u);
    EXPECT_EQ(log.texts(), (std::vector<std::string>{"", "Fetching TLEs...", "3 sats | TLE 2h ago",
                                                     "Computing passes for 1 satellites...",
                                                     statusPasses(passes)}));
}

TEST_F(Loading, LastsUntilTheElementsHaveArrived) {
    world.start();
    world.app->loadData();
    EXPECT_TRUE(world.app->isLoadingTLEs);
    world.machine.loop.runPosted();
    EXPECT_FALSE(world.app->isLoadingTLEs);
}

TEST_F(Loading, SavedSelectionOfVanishedBodiesIsKept) {
    world.machine.settings.set("selectedSatIds", std::vector<std::int64_t>{4242});
    subscribeTo({"amateur"});
    world.cacheGroup("amateur", ommGroup({{"ISS (ZARYA)", 25544}}));
    world.start();
    world.load();
    EXPECT_EQ(world.app->selectedSatelliteIds.get(), std::set<std::int64_t>{4242});
    EXPECT_TRUE(world.app->selectedSatellites().empty());
}

TEST_F(Loading, DefaultsAreTriedOnEveryLoadUntilSomethingMatches) {
    subscribeTo({"amateur"});
    world.cacheGroup("amateur", ommGroup({{"NOAA 19", 33591}}));
    world.start();
    world.load();
    EXPECT_TRUE(world.app->selectedSatelliteIds->empty());

    world.cacheGroup("amateur",
                     ommGroup({{"Mission X", 7}, {"tevel-3", 8}, {"RS-44 & BREEZE", 44909}}));
    world.load();
    EXPECT_EQ(world.app->selectedSatelliteIds.get(), (std::set<std::int64_t>{7, 8, 44909}));
    EXPECT_TRUE(world.body(8)->isSelected);
    EXPECT_EQ(world.machine.settings.integers("selectedSatIds"),
              (std::vector<std::int64_t>{7, 8, 44909}));
}

TEST_F(Loading, NewBodiesHaveNoPassesUntilTheComputationEnds) {
    subscribeTo({"amateur"});
    world.cacheGroup("amateur", ommGroup({{"RS-44", 44909}}));
    world.start();
    std::vector<std::size_t> seen;
    const auto subscription = world.app->objectWillChange.subscribe([&] {
        if (world.app->statusMessage->ends_with("TLE 1m ago")) {
            seen.push_back(world.app->allPassesSorted().size());
        }
    });
    world.load();
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.front(), 0u);
    EXPECT_GT(world.app->allPassesSorted().size(), 0u);
}

TEST_F(Loading, SavedMinusOneSelectsTheSun) {
    world.machine.settings.set("selectedSatIds", std::vector<std::int64_t>{-1});
    world.start();
    world.load();
    EXPECT_TRUE(world.body(-1)->isSelected);
    EXPECT_FALSE(world.body(-2)->isSelected);
    EXPECT_FALSE(world.body(-1)->passes->empty());
}

TEST_F(Loading, WithoutGroupsThereAreSunAndMoonOfAgeZero) {
    subscribeTo({});
    world.start();
    world.load();
    EXPECT_EQ(names(), (std::vector<std::string>{"Moon", "Sun"}));
    EXPECT_EQ(world.app->tleAge, 0);
    EXPECT_TRUE(world.machine.http.requests.empty());
}

TEST_F(Loading, WithoutNetworkAndCacheThereAreSunAndMoonOfUnknownAge) {
    subscribeTo({"amateur"});
    world.start();
    world.load();
    EXPECT_EQ(names(), (std::vector<std::string>{"Moon", "Sun"}));
    EXPECT_EQ(world.app->tleAge, 999999);
    EXPECT_EQ(world.app->tleAgeString(), "11d ago");
    EXPECT_TRUE(world.app->selectedSatelliteIds->empty());
    EXPECT_EQ(world.app->statusMessage.get(), "0 passes in next 24h");
}

TEST_F(Loading, AbsurdTimeStampCountsAsUnknownAge) {
    subscribeTo({"amateur"});
    world.cacheGroup("amateur", "[]");
    world.machine.files.files["/home/test/.veloran/tle/amateur.timestamp"] = "-1e300";
    world.start();
    world.load();
    EXPECT_EQ(world.app->tleAge, 999999);
}

TEST_F(Loading, RefreshMakesEveryGroupStale) {
    subscribeTo({"amateur"});
    world.cacheGroup("amateur", ommGroup({{"OLD", 1}}));
    world.start();
    world.load();
    EXPECT_TRUE(world.machine.http.requests.empty());
    const std::string url = world.app->elements().celestrakURL("amateur");
    world.machine.http.answers[url].body = ommGroup({{"NEW", 2}});
    world.app->refreshTLEs();
    world.machine.loop.runPosted();
    EXPECT_EQ(world.machine.http.requests, std::vector<std::string>{url});
    EXPECT_NE(world.body(2), nullptr);
    EXPECT_EQ(world.body(1), nullptr);
}

TEST_F(Loading, OfTwoOverlappingLoadsTheLaterCompletionStands) {
    subscribeTo({"amateur"});
    world.start();
    const std::string url = world.app->elements().celestrakURL("amateur");
    world.machine.http.answers[url] = {ommGroup({{"SLOW", 1}}), 30};
    world.app->loadData();
    world.machine.loop.runPosted();
    world.machine.http.answers[url] = {ommGroup({{"FAST", 2}}), 5};
    world.app->loadData();
    world.machine.loop.advance(10);
    EXPECT_NE(world.body(2), nullptr);
    world.machine.loop.advance(30);
    EXPECT_EQ(world.body(2), nullptr);
    EXPECT_NE(world.body(1), nullptr);
}

TEST_F(Loading, PassesAreComputedAnewEveryFiveMinutesAfterTheLatestLoad) {
    subscribeTo({});
    world.start();
    world.load();
    world.machine.loop.advance(200);
    world.load();
    EXPECT_EQ(world.machine.loop.timerCount(), 1u);
    StatusLog log(*world.app);
    world.machine.loop.advance(299);
    EXPECT_EQ(log.texts().size(), 1u);
    world.machine.loop.advance(2);
    EXPECT_EQ(log.texts().size(), 3u);
}

TEST_F(Loading, NothingHappensOnceTheStateHasGone) {
    subscribeTo({"amateur"});
    world.cacheGroup("amateur", ommGroup({{"RS-44", 44909}}));
    world.start();
    world.app->loadData();
    world.app.reset();
    world.machine.loop.runPosted();
    EXPECT_EQ(world.machine.loop.timerCount(), 0u);
}

TEST_F(Loading, ReplacingTheListLeavesTheTrackedAndThePickedBodyAlone) {
    subscribeTo({"amateur"});
    world.cacheGroup("amateur", ommGroup({{"RS-44", 44909}}));
    world.start();
    world.load();
    const auto before = world.body(44909);
    world.app->startTracking(before, std::nullopt);
    world.load();
    EXPECT_NE(world.body(44909), before);
    EXPECT_EQ(world.app->trackingSatellite.get(), before);
}

TEST(TleAgeText, GoesByTheLargestWholeUnit) {
    EXPECT_EQ(tleAgeText(59.9), "< 1m ago");
    EXPECT_EQ(tleAgeText(60), "1m ago");
    EXPECT_EQ(tleAgeText(3599), "59m ago");
    EXPECT_EQ(tleAgeText(3600), "1h ago");
    EXPECT_EQ(tleAgeText(86400), "1d ago");
}

}  // namespace
}  // namespace veloran::test
