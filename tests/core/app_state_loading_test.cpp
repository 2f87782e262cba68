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
    EXPECT_EQ(world.app->statusMessage.get(), "Download failed: no answer");
}

TEST_F(Loading, StatusLineTellsWhyThereAreNoElementsUntilThereAreSome) {
    subscribeTo({"amateur", "stations", "weather"});
    const auto url = [this](const char* group) {
        return world.app->elements().celestrakURL(group);
    };
    world.start();
    auto& answers = world.machine.http.answers;
    answers[url("amateur")] = {"<html>", 0, false, 503};
    answers[url("weather")] = {"<html>", 0, false, 503};
    StatusLog log(*world.app);
    world.load();
    EXPECT_EQ(log.texts(), (std::vector<std::string>{"", "Fetching TLEs...", "2 sats | TLE 11d ago",
                                                     "Computing passes for 0 satellites...",
                                                     "Downloads failed: HTTP 503, no answer"}));
    world.machine.loop.advance(301);
    EXPECT_EQ(world.app->statusMessage.get(), "Downloads failed: HTTP 503, no answer");

    answers[url("stations")] = {ommGroup({{"RS-44", 44909}})};
    world.app->refreshTLEs();
    world.machine.loop.runPosted();
    EXPECT_EQ(world.app->statusMessage.get(), statusPasses(world.body(44909)->passes->size()));
}

TEST_F(Loading, WithoutGroupsNothingHasFailed) {
    subscribeTo({});
    world.start();
    world.load();
    EXPECT_EQ(world.app->statusMessage.get(), "0 passes in next 24h");
    EXPECT_TRUE(world.app->failedDownloads().empty());
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

TEST_F(Loading, OlderLoadThatEndsLaterChangesNothing) {
    subscribeTo({"amateur"});
    world.start();
    const std::string url = world.app->elements().celestrakURL("amateur");
    world.machine.http.answers[url] = {ommGroup({{"SLOW", 1}}), 30};
    world.app->loadData();
    world.machine.loop.runPosted();
    world.machine.http.answers[url] = {ommGroup({{"FAST", 2}}), 5};
    world.app->loadData();
    world.machine.loop.advance(10);
    ASSERT_NE(world.body(2), nullptr);
    EXPECT_FALSE(world.app->isLoadingTLEs);
    const auto before = world.app->satellites.get();
    const auto status = world.app->statusMessage.get();
    const auto downloads = world.app->downloads.get();
    world.machine.loop.advance(30);
    EXPECT_EQ(world.app->satellites.get(), before);
    EXPECT_EQ(world.app->statusMessage.get(), status);
    EXPECT_EQ(world.app->downloads.get(), downloads);
}

TEST_F(Loading, OlderLoadThatEndsFirstLeavesTheNewerOneUnderWay) {
    subscribeTo({"amateur"});
    world.start();
    const std::string url = world.app->elements().celestrakURL("amateur");
    world.machine.http.answers[url] = {ommGroup({{"FIRST", 1}}), 5};
    world.app->loadData();
    world.machine.loop.runPosted();
    world.machine.http.answers[url] = {ommGroup({{"SECOND", 2}}), 30};
    world.app->loadData();
    world.machine.loop.advance(10);
    EXPECT_TRUE(world.app->isLoadingTLEs);
    EXPECT_TRUE(world.app->satellites->empty());
    world.machine.loop.advance(30);
    EXPECT_FALSE(world.app->isLoadingTLEs);
    EXPECT_NE(world.body(2), nullptr);
    EXPECT_EQ(world.body(1), nullptr);
}

TEST_F(Loading, RefreshIsNewerThanALoadBegunBeforeItsStampsWereGone) {
    subscribeTo({"amateur"});
    world.cacheGroup("amateur", ommGroup({{"OLD", 1}}));
    world.start();
    world.machine.http.answers[world.app->elements().celestrakURL("amateur")].body =
        ommGroup({{"NEW", 2}});
    world.app->refreshTLEs();
    world.load();
    EXPECT_NE(world.body(2), nullptr);
    EXPECT_FALSE(world.app->isLoadingTLEs);
}

TEST_F(Loading, LoadThatEndsWhileARefreshClearsItsStampsDoesNotEndTheRefresh) {
    subscribeTo({"amateur"});
    world.cacheGroup("amateur", ommGroup({{"OLD", 1}}));
    world.start();
    world.machine.http.answers[world.app->elements().celestrakURL("amateur")] = {
        ommGroup({{"NEW", 2}}), 5};
    world.app->loadData();
    world.machine.workers.held = true;
    world.app->refreshTLEs();
    world.machine.workers.held = false;  // but for the task that clears the stamps
    world.machine.loop.runPosted();
    EXPECT_NE(world.body(1), nullptr);
    world.machine.workers.release();
    world.machine.loop.runPosted();
    EXPECT_TRUE(world.app->isLoadingTLEs);
    EXPECT_EQ(world.app->statusMessage.get(), "Fetching TLEs...");
    world.machine.loop.advance(10);
    EXPECT_FALSE(world.app->isLoadingTLEs);
    EXPECT_NE(world.body(2), nullptr);
}

// ---- Old caches, before the downloads are done

class OldCaches : public Loading {
  protected:
    OldCaches() {
        subscribeTo({"amateur", "stations", "weather"});
        world.machine.settings.set("selectedSatIds", std::vector<std::int64_t>{44909});
        world.cacheGroup("amateur", ommGroup({{"RS-44", 44909}, {"GONE", 3}}), 4 * 86400);
        world.cacheGroup("stations", ommGroup({{"ISS (ZARYA)", 25544}}), 60);
        world.start();
        answer("amateur", {ommGroup({{"RS-44 NEW", 44909}}), 2});
        answer("weather", {std::nullopt, HttpClient::kWholeSeconds});
    }
    void answer(const char* group, ScriptedHttp::Answer answer) {
        world.machine.http.answers[world.app->elements().celestrakURL(group)] = std::move(answer);
    }
    bool hasTimer() const { return world.machine.loop.timerCount() > 2; }  // beside the downloads
};

TEST_F(OldCaches, AreShownAtOnceAndReplacedWhenTheDownloadsAreDone) {
    world.load();
    EXPECT_EQ(names(), (std::vector<std::string>{"GONE", "ISS (ZARYA)", "Moon", "RS-44", "Sun"}));
    EXPECT_TRUE(world.body(44909)->isSelected);
    EXPECT_FALSE(world.body(44909)->passes->empty());
    EXPECT_TRUE(world.app->isLoadingTLEs);
    EXPECT_EQ(world.app->tleAge, 999999) << "one group was never downloaded";
    world.machine.loop.advance(60);
    EXPECT_NE(world.body(3), nullptr) << "one source still drips";
    world.machine.loop.advance(HttpClient::kWholeSeconds);
    EXPECT_EQ(names(), (std::vector<std::string>{"ISS (ZARYA)", "Moon", "RS-44 NEW", "Sun"}));
    EXPECT_FALSE(world.app->isLoadingTLEs);
    EXPECT_FALSE(world.body(44909)->passes->empty());
}

TEST_F(OldCaches, LeaveTheStepsOfTheLoadToItsEnd) {
    StatusLog log(*world.app);
    world.load();
    EXPECT_FALSE(hasTimer());
    const std::string early = statusPasses(world.body(44909)->passes->size());
    world.machine.loop.advance(200);
    const std::string late = statusPasses(world.body(44909)->passes->size());
    EXPECT_EQ(log.texts(),
              (std::vector<std::string>{
                  "", "Fetching TLEs...", "Computing passes for 1 satellites...", early,
                  "4 sats | TLE 11d ago", "Computing passes for 1 satellites...", late}));
    EXPECT_EQ(world.machine.loop.timerCount(), 1u) << "the timer of the passes";
}

TEST_F(OldCaches, ChooseNoDefaults) {
    world.app->selectedSatelliteIds = std::set<std::int64_t>{};
    StatusLog log(*world.app);
    world.load();
    EXPECT_NE(world.body(25544), nullptr);
    EXPECT_TRUE(world.app->selectedSatelliteIds->empty());
    EXPECT_EQ(log.texts().back(), "Fetching TLEs...") << "there is nothing to compute";
    world.machine.loop.advance(200);
    EXPECT_EQ(world.app->selectedSatelliteIds.get(), (std::set<std::int64_t>{25544, 44909}));
}

TEST_F(OldCaches, AreNotShownOverACatalogueOnTheScreen) {
    world.load();
    world.machine.loop.advance(200);
    ASSERT_EQ(world.body(3), nullptr);
    world.cacheGroup("amateur", ommGroup({{"STALE", 3}}), 4 * 86400);
    const auto before = world.app->satellites.get();
    world.load();
    EXPECT_EQ(world.app->satellites.get(), before);
    world.machine.loop.advance(10);
    EXPECT_EQ(world.app->satellites.get(), before);
}

TEST_F(OldCaches, AreNotShownWhenTheWholeWasQuicker) {
    auto whileCachesAreRead = world.app->objectWillChange.subscribe([this] {
        if (world.app->downloads->awaited.size() == 1) world.machine.workers.held = true;
    });
    world.load();
    whileCachesAreRead = {};
    const auto merging = world.machine.workers.takeHeld();
    ASSERT_EQ(merging.size(), 1u);
    merging.front()();
    world.machine.loop.runPosted();
    const auto late = world.machine.workers.takeHeld();
    ASSERT_EQ(late.size(), 1u) << "the bodies of the caches are being made";
    ASSERT_TRUE(world.app->satellites->empty());
    world.machine.workers.held = false;
    world.machine.loop.advance(200);
    const std::vector<std::string> whole{"ISS (ZARYA)", "Moon", "RS-44 NEW", "Sun"};
    ASSERT_EQ(names(), whole);
    late.front()();
    world.machine.loop.runPosted();
    EXPECT_EQ(names(), whole);
}

TEST_F(OldCaches, ShowTheChannelsThatAreKeptWithoutARequest) {
    world.machine.files.files["/home/test/.veloran/satnogs/44909.json"] =
        encodeTransmitters({channel(435.64e6)});
    world.load();
    ASSERT_EQ(world.body(44909)->transmitters.size(), 1u);
    EXPECT_EQ(world.body(44909)->transmitters[0].freq, 435.64e6);
    EXPECT_EQ(world.machine.http.requests.size(), 2u) << "of elements";
    world.machine.loop.advance(200);
    EXPECT_EQ(world.body(44909)->transmitters[0].freq, 435.64e6);
    EXPECT_EQ(world.machine.http.requests.size(), 3u);
}

TEST_F(OldCaches, ImportedSetsAloneAreShownToo) {
    world.machine.files.files.clear();
    world.machine.files.files["/home/test/.veloran/custom.tle"] =
        "MINE\n1 70001U 98067A   26325.00000000  .00016717  00000-0  10270-3 0  9991\n"
        "2 70001  51.6412 208.9163 0006703  69.9862 290.2073 15.50073832560129\n";
    world.load();
    EXPECT_EQ(names(), (std::vector<std::string>{"MINE", "Moon", "Sun"}));
}

TEST_F(OldCaches, WithoutAnyNothingIsShownBeforeTheEnd) {
    world.machine.files.files.clear();
    world.load();
    EXPECT_TRUE(world.app->satellites->empty());
}

TEST_F(OldCaches, TellWhatIsWaitedForAndWhatCame) {
    world.load();
    EXPECT_EQ(world.app->downloads->awaited, (std::set<std::string>{"amateur", "weather"}));
    const auto told = [this](const char* key) {
        return outcomeText(world.app->downloads->outcomes.at(key), world.app->now());
    };
    EXPECT_EQ(told("amateur"), "2 records, 4d ago") << "as the cache remembers";
    EXPECT_EQ(told("stations"), "1 record, 1m ago");
    EXPECT_FALSE(world.app->downloads->outcomes.contains("weather"));
    world.machine.loop.advance(1 + HttpClient::kWholeSeconds);
    EXPECT_TRUE(world.app->downloads->awaited.empty());
    EXPECT_EQ(told("amateur"), "1 record, 2m ago");
    EXPECT_EQ(told("weather"), "no answer, < 1m ago");

    // An error page is kept and counts as fresh: what it was is remembered all the same.
    answer("weather", {"<html>", 0, false, 503});
    world.app->refreshTLEs();
    world.machine.loop.runPosted();
    world.load();
    EXPECT_EQ(told("weather"), "HTTP 503, < 1m ago");
}

TEST_F(Loading, FreshCachesAreShownOnceAndAsBefore) {
    subscribeTo({"amateur"});
    world.cacheGroup("amateur", ommGroup({{"RS-44", 44909}}));
    world.start();
    std::size_t changes = 0;
    std::vector<SatellitePtr> before;
    const auto watching = world.app->objectWillChange.subscribe([&] {
        if (before == world.app->satellites.get()) return;
        before = world.app->satellites;
        ++changes;
    });
    world.load();
    EXPECT_EQ(changes, 1u);
    EXPECT_TRUE(world.machine.http.requests.size() == 1u) << "of channels";
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

TEST(Downloads, CacheCountsUntilTheProgramKnowsBetter) {
    using Kind = DownloadOutcome::Kind;
    const DownloadOutcome cached{Kind::records, 5, Instant{100}};
    const DownloadOutcome failed{Kind::noAnswer, 0, Instant{50}};  // the clock was set back
    Downloads downloads;
    downloads.noteCache("a", true, cached);
    EXPECT_EQ(downloads.outcomes.at("a"), cached);
    EXPECT_TRUE(downloads.awaited.contains("a"));
    downloads.noteDownload("a", failed);
    EXPECT_FALSE(downloads.awaited.contains("a"));
    downloads.noteCache("a", false, cached);
    EXPECT_EQ(downloads.outcomes.at("a"), failed);
    EXPECT_FALSE(downloads.awaited.contains("a"));
    downloads.noteCache("b", false, std::nullopt);
    EXPECT_FALSE(downloads.outcomes.contains("b"));
}

TEST(StatusFailed, TellsEachReasonOnce) {
    using Kind = DownloadOutcome::Kind;
    const DownloadOutcome silent{Kind::noAnswer, 0, {}};
    const DownloadOutcome page{Kind::httpStatus, 404, {}};
    EXPECT_EQ(statusFailed({page}), "Download failed: HTTP 404");
    EXPECT_EQ(statusFailed({silent, silent}), "Downloads failed: no answer");
    EXPECT_EQ(statusFailed({silent, page, silent}), "Downloads failed: no answer, HTTP 404");
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
