#include "elements/tle_manager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <utility>

#include "elements/element_merge.h"
#include "elements/element_records.h"
#include "support/simulated_machine.h"

namespace veloran {
namespace {

using test::kLine1;
using test::kLine2;
using test::withColumns;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kBase = "https://service";

/// Element lines of one object; `day` is the whole day of the epoch, three digits.
std::string block(const std::string& name, const std::string& number = "25544",
                  const std::string& day = "095") {
    return name + "\n" + withColumns(withColumns(kLine1, 2, number), 20, day) + "\n" + kLine2 +
           "\n";
}

std::string groupUrl(const std::string& word) {
    return std::string(kBase) + "/NORAD/elements/gp.php?GROUP=" + word + "&FORMAT=json";
}

std::vector<std::string> names(const std::vector<TLEData>& sets) {
    std::vector<std::string> result;
    for (const auto& set : sets) result.push_back(set.name);
    return result;
}

class TLEManagerTest : public ::testing::Test {
  protected:
    std::filesystem::path fileOf(const std::string& name) const {
        return simulated.files.homeDirectory() / ".veloran" / "tle" / name;
    }
    std::string timestamp(double hoursAgo) const {
        return std::to_string(simulated.loop.now().unixSeconds() - hoursAgo * 3600);
    }
    void putCache(const std::string& key, const std::string& body, double hoursAgo) {
        simulated.files.files[fileOf(key + ".tle")] = body;
        simulated.files.files[fileOf(key + ".timestamp")] = timestamp(hoursAgo);
    }
    void answer(const std::string& url, std::optional<std::string> body, double delay = 0) {
        simulated.http.answers[url] = {std::move(body), delay, false};
    }
    /// Runs the machine until the one answer is there.
    std::optional<std::vector<TLEData>> fetch(const std::string& key) {
        int calls = 0;
        std::optional<std::vector<TLEData>> result;
        manager->fetchCategory(key, [&](std::optional<std::vector<TLEData>> list) {
            ++calls;
            result = std::move(list);
        });
        EXPECT_EQ(calls, 0) << "called back from inside the call";
        simulated.loop.advance(60);
        EXPECT_EQ(calls, 1);
        return result;
    }
    std::vector<TLEData> fetchAll(const std::vector<std::string>& keys) {
        int calls = 0;
        std::vector<TLEData> result;
        manager->fetchCategories(keys, [&](std::vector<TLEData> list) {
            ++calls;
            result = std::move(list);
        });
        EXPECT_EQ(calls, 0) << "called back from inside the call";
        simulated.loop.advance(60);
        EXPECT_EQ(calls, 1);
        return result;
    }

    test::SimulatedMachine simulated;
    std::unique_ptr<TLEManager> manager = std::make_unique<TLEManager>(simulated.machine, kBase);
};

// ---- Groups and files

TEST_F(TLEManagerTest, AUserKeyBecomesAFileName) {
    EXPECT_EQ(TLEManager::filenameForCategory("user:My_List_Test"), "user-My_List_Test");
    EXPECT_EQ(TLEManager::filenameForCategory("a/b:c"), "a_b-c");
    EXPECT_EQ(manager->cacheFile("user:X"), fileOf("user-X.tle"));
    EXPECT_EQ(manager->timestampFile("user:X"), fileOf("user-X.timestamp"));
}

TEST_F(TLEManagerTest, UserGroupsStandBehindTheBuiltInOnesAndAreReadAnew) {
    std::vector<TLECategory> own;
    manager = std::make_unique<TLEManager>(simulated.machine, kBase,
                                           UserElements{[&own] { return own; }, nullptr});
    const auto before = manager->categories().size();
    EXPECT_EQ(before, manager->builtinCategories().size());
    own.push_back({"user:X", "http://x", "X", "Custom URLs", true});
    ASSERT_EQ(manager->categories().size(), before + 1);
    EXPECT_EQ(manager->categories().back().name, "user:X");

    answer("http://x", block("MINE"));
    const auto list = fetch("user:X");
    ASSERT_TRUE(list);
    EXPECT_EQ(list->front().source, "user:X");
    EXPECT_TRUE(simulated.files.files.contains(fileOf("user-X.tle")));
}

TEST_F(TLEManagerTest, ParseAutoTriesLinesWhereJsonGivesNothing) {
    EXPECT_THAT(TLEManager::parseAuto("{}"), IsEmpty());
    EXPECT_THAT(names(TLEManager::parseAuto("[1]\n" + block("A"))), ElementsAre("A"));
}

// ---- Age

TEST_F(TLEManagerTest, TheLimitOfFreshnessIsADay) {
    putCache("amateur", "", 23.9);
    EXPECT_FALSE(manager->isCacheStale("amateur"));
    putCache("amateur", "", 24.1);
    EXPECT_TRUE(manager->isCacheStale("amateur"));
    EXPECT_FALSE(manager->isCacheStale("amateur", 48));
    EXPECT_TRUE(manager->isCacheStale("weather"));
}

TEST_F(TLEManagerTest, ATimestampThatIsNoFiniteNumberCountsAsMissing) {
    for (const char* text : {"inf", "nan", "1e400", "yesterday", "\xff"}) {
        simulated.files.files[fileOf("amateur.timestamp")] = text;
        EXPECT_TRUE(manager->isCacheStale("amateur")) << text;
        EXPECT_EQ(manager->oldestCacheAge({"amateur"}), TLEManager::kUnknownAge) << text;
    }
}

TEST_F(TLEManagerTest, OneMissingTimestampMakesTheOldestAgeUnknown) {
    EXPECT_EQ(manager->oldestCacheAge({}), 0);
    putCache("amateur", "", 1);
    putCache("weather", "", 2);
    EXPECT_NEAR(manager->oldestCacheAge({"amateur", "weather"}), 7200, 1e-3);
    EXPECT_EQ(manager->oldestCacheAge({"amateur", "noaa", "weather"}), 999999.0);
}

TEST_F(TLEManagerTest, AForgottenTimestampMakesTheGroupStaleAndKeepsItsSets) {
    putCache("amateur", block("OLD"), 1);
    manager->forgetTimestamp("amateur");
    EXPECT_TRUE(manager->isCacheStale("amateur"));
    EXPECT_TRUE(manager->loadCached("amateur"));
}

// ---- The cache

TEST_F(TLEManagerTest, LoadCachedTagsEverySetWithTheKey) {
    putCache("amateur", block("A") + block("B", "00007"), 1);
    const auto list = manager->loadCached("amateur");
    ASSERT_TRUE(list);
    EXPECT_THAT(names(*list), ElementsAre("A", "B"));
    EXPECT_EQ(list->back().source, "amateur");
}

TEST_F(TLEManagerTest, LoadCachedIsAbsentForNoFileNoTextAndNoSets) {
    EXPECT_FALSE(manager->loadCached("amateur"));
    putCache("amateur", "404", 1);
    EXPECT_FALSE(manager->loadCached("amateur"));
    putCache("amateur", block("A\xff"), 1);
    EXPECT_FALSE(manager->loadCached("amateur"));
}

// ---- One download

TEST_F(TLEManagerTest, ADownloadIsKeptAsItCameWithItsTime) {
    const std::string body = test::messages({test::stationMessage()});
    answer(groupUrl("last-30-days"), body, 5);
    const auto list = fetch("tle-new");
    ASSERT_TRUE(list);
    EXPECT_THAT(names(*list), ElementsAre("ISS (ZARYA)"));
    EXPECT_EQ(list->front().source, "tle-new");
    EXPECT_EQ(simulated.files.files.at(fileOf("tle-new.tle")), body);
    EXPECT_EQ(simulated.files.files.at(fileOf("tle-new.timestamp")), "1795307205.0");
    EXPECT_FALSE(manager->isCacheStale("tle-new"));
}

TEST_F(TLEManagerTest, WithoutNetworkTheOldCacheIsUsedAndStaysStale) {
    putCache("amateur", block("OLD"), 100);
    const auto before = simulated.files.files;
    const auto list = fetch("amateur");
    ASSERT_TRUE(list);
    EXPECT_THAT(names(*list), ElementsAre("OLD"));
    EXPECT_EQ(simulated.files.files, before);
    fetch("amateur");
    EXPECT_EQ(simulated.http.requests.size(), 2u);
}

TEST_F(TLEManagerTest, AnErrorPageReplacesTheCacheAndNothingIsFound) {
    putCache("amateur", block("OLD"), 100);
    answer(groupUrl("amateur"), "404 Not Found");
    EXPECT_FALSE(fetch("amateur"));
    EXPECT_EQ(simulated.files.files.at(fileOf("amateur.tle")), "404 Not Found");
    EXPECT_FALSE(manager->isCacheStale("amateur"));
}

TEST_F(TLEManagerTest, ABodyThatIsNoTextCountsAsAFailedDownload) {
    putCache("amateur", block("OLD"), 100);
    answer(groupUrl("amateur"), block("NEW\xff"));
    const auto list = fetch("amateur");
    ASSERT_TRUE(list);
    EXPECT_THAT(names(*list), ElementsAre("OLD"));
    EXPECT_TRUE(manager->isCacheStale("amateur"));
}

TEST_F(TLEManagerTest, ADiskThatCannotBeWrittenDoesNotSpoilTheDownload) {
    simulated.files.writable = false;
    answer(groupUrl("amateur"), block("NEW"));
    const auto list = fetch("amateur");
    ASSERT_TRUE(list);
    EXPECT_THAT(names(*list), ElementsAre("NEW"));
    EXPECT_THAT(simulated.files.files, IsEmpty());
}

TEST_F(TLEManagerTest, AnUnknownKeyIsAbsentWithoutARequest) {
    putCache("nonsense", block("OLD"), 100);
    EXPECT_FALSE(fetch("nonsense"));
    EXPECT_THAT(simulated.http.requests, IsEmpty());
}

TEST_F(TLEManagerTest, AnAddressThatIsNoneIsAbsentWithoutARequestOrTheCache) {
    std::string url;
    const auto own = [&url] { return std::vector<TLECategory>{{"user:A", url, "", "", true}}; };
    manager = std::make_unique<TLEManager>(simulated.machine, kBase, UserElements{own, nullptr});
    putCache("user-A", block("OLD"), 100);
    for (const char* none : {"", "http://", "no address", "ftp://x", "http://x\n"}) {
        url = none;
        EXPECT_FALSE(fetch("user:A")) << none;
        EXPECT_THAT(fetchAll({"user:A"}), IsEmpty()) << none;
    }
    EXPECT_THAT(simulated.http.requests, IsEmpty());
    url = "http://x";
    EXPECT_TRUE(fetch("user:A"));
}

TEST_F(TLEManagerTest, TheUsersGroupsAreAskedForOnceInACall) {
    int asked = 0;
    const auto own = [&asked] {
        ++asked;
        return std::vector<TLECategory>{{"user:A", "http://a", "", "", true},
                                        {"user:B", "http://b", "", "", true}};
    };
    manager = std::make_unique<TLEManager>(simulated.machine, kBase, UserElements{own, nullptr});
    fetchAll({"user:A", "user:B", "amateur"});
    EXPECT_EQ(simulated.http.requests.size(), 3u);
    EXPECT_EQ(asked, 1);
}

TEST_F(TLEManagerTest, OneSetByNumberIsNeitherCachedNorTagged) {
    answer(std::string(kBase) + "/NORAD/elements/gp.php?CATNR=25544&FORMAT=json",
           block("ISS") + block("SECOND"));
    std::vector<std::optional<TLEData>> results;
    const auto keep = [&](std::optional<TLEData> set) { results.push_back(std::move(set)); };
    manager->fetchByNoradId(25544, keep);
    manager->fetchByNoradId(7, keep);
    EXPECT_THAT(results, IsEmpty());
    simulated.loop.runPosted();
    ASSERT_EQ(results.size(), 2u);
    ASSERT_TRUE(results[0]);
    EXPECT_EQ(results[0]->name, "ISS");
    EXPECT_EQ(results[0]->source, "");
    EXPECT_FALSE(results[1]);
    EXPECT_THAT(simulated.files.files, IsEmpty());
}

// ---- Many groups

TEST_F(TLEManagerTest, FreshGroupsCauseNoRequest) {
    putCache("amateur", block("A"), 1);
    putCache("weather", block("W", "00007"), 23.9);
    EXPECT_THAT(names(fetchAll({"amateur", "weather"})), ElementsAre("A", "W"));
    EXPECT_THAT(simulated.http.requests, IsEmpty());
}

TEST_F(TLEManagerTest, AFreshGroupWithoutUsableCacheStaysAbsent) {
    putCache("amateur", "404 Not Found", 1);
    EXPECT_THAT(fetchAll({"amateur"}), IsEmpty());
    EXPECT_THAT(simulated.http.requests, IsEmpty());
}

TEST_F(TLEManagerTest, EveryStaleGroupIsAskedForAtOnce) {
    answer(groupUrl("amateur"), block("A"), 5);
    answer(groupUrl("weather"), block("W", "00007"), 5);
    const double start = simulated.loop.now().unixSeconds();
    double finished = 0;
    manager->fetchCategories({"amateur", "weather", "noaa"}, [&](std::vector<TLEData> list) {
        EXPECT_THAT(names(list), ElementsAre("A", "W"));
        finished = simulated.loop.now().unixSeconds();
    });
    simulated.loop.runPosted();
    EXPECT_EQ(simulated.http.requests.size(), 3u);
    simulated.loop.advance(60);
    EXPECT_EQ(finished - start, 5);
}

TEST_F(TLEManagerTest, FreshGroupsComeFirstThenDownloadsAsTheyArrive) {
    putCache("noaa", block("fresh noaa", "00001"), 1);
    putCache("goes", block("fresh goes", "00002"), 1);
    answer(groupUrl("amateur"), block("late amateur", "00003"), 9);
    answer(groupUrl("weather"), block("early weather", "00004"), 3);
    EXPECT_THAT(names(fetchAll({"amateur", "noaa", "weather", "goes"})),
                ElementsAre("fresh noaa", "fresh goes", "early weather", "late amateur"));
}

TEST_F(TLEManagerTest, TheFirstOfATieStaysAndEverySourceIsNamed) {
    putCache("weather", block("fresh"), 1);
    answer(groupUrl("amateur"), block("downloaded"));
    const auto list = fetchAll({"amateur", "weather"});
    EXPECT_THAT(names(list), ElementsAre("fresh"));
    EXPECT_EQ(list[0].source, "amateur,weather");
}

TEST_F(TLEManagerTest, ImportedSetsJoinEveryMerge) {
    auto imported = TLEManager::parseAuto(block("IMPORTED") + block("ALONE", "00009"));
    for (auto& set : imported) set.source = kCustomSource;
    manager = std::make_unique<TLEManager>(simulated.machine, kBase,
                                           UserElements{nullptr, [imported] { return imported; }});
    EXPECT_THAT(names(fetchAll({})), ElementsAre("IMPORTED", "ALONE"));
    putCache("amateur", block("GROUP"), 1);
    const auto list = fetchAll({"amateur"});
    EXPECT_THAT(names(list), ElementsAre("IMPORTED", "ALONE"));
    EXPECT_EQ(list[0].source, "amateur,custom");
    putCache("amateur", block("NEWER", "25544", "096"), 1);
    EXPECT_THAT(names(fetchAll({"amateur"})), ElementsAre("NEWER", "ALONE"));
}

// ---- What one hears before

class WatchedFetch : public TLEManagerTest {
  protected:
    /// Begins a fetch that writes down what it tells, in order.
    void begin(const std::vector<std::string>& keys) {
        FetchWatch watch;
        watch.cached = [this](const auto& list) { told.push_back("cached " + joined(list)); };
        watch.looked = [this](const std::string& key, bool isAwaited, const auto& remembered) {
            told.push_back(key + (isAwaited ? " awaited" : " fresh") +
                           (remembered ? ", " + words(*remembered) : ""));
        };
        watch.downloaded = [this](const std::string& key, const auto& outcome) {
            told.push_back(key + " gave " + words(outcome));
        };
        manager->fetchCategories(
            keys, [this](const auto& list) { told.push_back("all " + joined(list)); }, watch);
    }
    std::vector<std::string> allToldOf(const std::vector<std::string>& keys) {
        begin(keys);
        simulated.loop.advance(300);
        return told;
    }
    static std::string joined(const std::vector<TLEData>& sets) {
        std::string text;
        for (const auto& name : names(sets)) text += (text.empty() ? "" : "+") + name;
        return text;
    }
    std::string words(const DownloadOutcome& outcome) const {
        const double hours = (simulated.loop.now() - outcome.when) / 3600;
        return outcomeWords(outcome) + " " + std::to_string(std::lround(hours)) + "h ago";
    }

    std::vector<std::string> told;
};

TEST_F(WatchedFetch, OldCachesAreToldAtOnceAndTheDownloadsWhenAllAreDone) {
    putCache("noaa", block("fresh", "00001"), 1);
    putCache("amateur", block("old", "00002") + block("gone", "00003"), 100);
    putCache("weather", block("older", "00004"), 500);
    answer(groupUrl("amateur"), block("new", "00002"), 3);
    begin({"amateur", "noaa", "weather"});
    simulated.http.answers[groupUrl("weather")] = {std::nullopt, HttpClient::kWholeSeconds, false};
    simulated.loop.runPosted();
    const std::vector<std::string> atOnce{
        "amateur awaited, 2 records 100h ago", "noaa fresh, 1 record 1h ago",
        "weather awaited, 1 record 500h ago", "cached old+gone+fresh+older"};
    EXPECT_EQ(told, atOnce);
    simulated.loop.advance(10);
    EXPECT_EQ(told.back(), "amateur gave 1 record 0h ago");
    simulated.loop.advance(HttpClient::kWholeSeconds);
    EXPECT_THAT(told, ::testing::Contains("weather gave no answer 0h ago"));
    EXPECT_EQ(told.back(), "all fresh+new+older");
}

TEST_F(WatchedFetch, FreshCachesAreNotToldAhead) {
    putCache("noaa", block("fresh", "00001"), 1);
    putCache("goes", "404", 2);
    EXPECT_THAT(allToldOf({"noaa", "goes"}),
                ElementsAre("noaa fresh, 1 record 1h ago", "goes fresh, no elements in it 2h ago",
                            "all fresh"));
}

TEST_F(WatchedFetch, ImportedSetsAreToldWithTheCaches) {
    manager = std::make_unique<TLEManager>(
        simulated.machine, kBase,
        UserElements{nullptr, [] { return TLEManager::parseAuto(block("IMPORTED")); }});
    EXPECT_THAT(allToldOf({"amateur"}),
                ElementsAre("amateur awaited", "cached IMPORTED", "amateur gave no answer 0h ago",
                            "all IMPORTED"));
}

TEST_F(WatchedFetch, EachDownloadTellsWhatItGave) {
    answer(groupUrl("amateur"), "<html>", 1);
    simulated.http.answers[groupUrl("amateur")].status = 503;
    answer(groupUrl("weather"), "<html>", 2);
    putCache("noaa", block("OLD"), 100);
    answer(groupUrl("noaa"), std::nullopt, 3);
    simulated.http.answers[groupUrl("noaa")].status = 304;
    told = allToldOf({"amateur", "weather", "noaa", "nonsense"});
    for (const char* line :
         {"amateur gave HTTP 503 0h ago", "weather gave no elements in it 0h ago",
          "noaa gave not modified 0h ago", "nonsense gave no web address 0h ago", "all OLD"}) {
        EXPECT_THAT(told, ::testing::Contains(line));
    }
    EXPECT_EQ(simulated.files.files.at(fileOf("noaa.tle")), block("OLD"));
}

TEST_F(WatchedFetch, ATimeThatNobodyCanHaveMeantIsNotRemembered) {
    putCache("noaa", block("A"), 1);
    for (const char* stamp : {"1e300", "-1e300"}) {
        simulated.files.files[fileOf("noaa.timestamp")] = stamp;
        told.clear();
        allToldOf({"noaa"});
        EXPECT_TRUE(told.front() == "noaa fresh" || told.front() == "noaa awaited") << told.front();
    }
}

/// A pool with one slow worker: the second task waits until it is let go.
class SlowSecondTask final : public WorkerPool {
  public:
    explicit SlowSecondTask(MainLoop& loop) : loop_(loop) {}
    using WorkerPool::run;
    void run(MainLoop::Task task, Priority /*priority*/) override {
        if (++count_ == 2) {
            second = std::move(task);
        } else {
            loop_.post(std::move(task));
        }
    }
    MainLoop::Task second;

  private:
    MainLoop& loop_;
    int count_ = 0;
};

TEST_F(WatchedFetch, WhatCachesHoldIsNotToldBehindTheWhole) {
    SlowSecondTask workers(simulated.loop);
    const Machine& all = simulated.machine;
    const Machine machine{all.clock, all.loop, workers, all.settings,
                          all.files, all.http, all.tcp, all.location};
    manager = std::make_unique<TLEManager>(machine, kBase);
    putCache("amateur", block("OLD"), 100);
    const std::vector<std::string> expected{"amateur awaited, 1 record 100h ago",
                                            "amateur gave no answer 0h ago", "all OLD"};
    EXPECT_EQ(allToldOf({"amateur"}), expected);
    ASSERT_TRUE(workers.second) << "the caches are merged behind the look into them";
    workers.second();
    simulated.loop.runPosted();
    EXPECT_EQ(told, expected);
}

TEST_F(TLEManagerTest, NoKeysStillCallBackOnceAndLater) {
    EXPECT_THAT(fetchAll({}), IsEmpty());
}

TEST_F(TLEManagerTest, UnknownKeysAndFailuresDoNotHoldTheOthersUp) {
    answer(groupUrl("amateur"), block("A"), 2);
    EXPECT_THAT(names(fetchAll({"nonsense", "weather", "amateur", "nonsense"})), ElementsAre("A"));
}

TEST_F(TLEManagerTest, AManagerThatHasGoneStillFinishesItsFetches) {
    putCache("noaa", block("CACHED", "00001"), 1);
    answer(groupUrl("amateur"), block("DOWNLOADED", "00002"), 5);
    answer(std::string(kBase) + "/NORAD/elements/gp.php?CATNR=7&FORMAT=json", block("ONE"), 5);
    std::vector<std::string> arrived;
    int single = 0, category = 0;
    manager->fetchCategories({"noaa", "amateur", "nonsense"},
                             [&](std::vector<TLEData> list) { arrived = names(list); });
    manager->fetchCategory("amateur", [&](std::optional<std::vector<TLEData>>) { ++category; });
    manager->fetchByNoradId(7, [&](std::optional<TLEData>) { ++single; });
    manager.reset();
    simulated.loop.advance(60);
    EXPECT_THAT(arrived, ElementsAre("CACHED", "DOWNLOADED"));
    EXPECT_EQ(category, 1);
    EXPECT_EQ(single, 1);
}

TEST_F(TLEManagerTest, DecodingAndFilesWaitForAWorker) {
    putCache("noaa", block("CACHED", "00001"), 1);
    answer(groupUrl("amateur"), block("DOWNLOADED", "00002"));
    simulated.workers.held = true;
    bool finished = false;
    manager->fetchCategories({"noaa", "amateur"}, [&](std::vector<TLEData>) { finished = true; });
    simulated.loop.advance(60);
    EXPECT_FALSE(finished);
    EXPECT_FALSE(simulated.files.files.contains(fileOf("amateur.tle")));
    simulated.workers.release();
    simulated.loop.runPosted();
    EXPECT_TRUE(finished);
    EXPECT_TRUE(simulated.files.files.contains(fileOf("amateur.tle")));
}

}  // namespace
}  // namespace veloran
