#include "transmitters/satnogs_cache.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "support/simulated_machine.h"

namespace veloran::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const char* const kChannels = "/home/test/.veloran/satnogs/44909.json";
const char* const kStamp = "/home/test/.veloran/satnogs/44909.timestamp";
const char* const kUrl =
    "https://channels.test/api/transmitters/?format=json&satellite__norad_cat_id=44909";

/// A disk that takes time stamps and no channels.
class DiskWithoutChannels final : public FileStore {
  public:
    explicit DiskWithoutChannels(MemoryFiles& files) : files_(files) {}

    std::filesystem::path homeDirectory() const override { return files_.homeDirectory(); }
    std::optional<std::string> read(const std::filesystem::path& path) const override {
        return files_.read(path);
    }
    bool writeAtomically(const std::filesystem::path& path, std::string_view content) override {
        return path.extension() != ".json" && files_.writeAtomically(path, content);
    }
    bool remove(const std::filesystem::path& path) override { return files_.remove(path); }
    bool exists(const std::filesystem::path& path) const override { return files_.exists(path); }
    PutAside putAside(const std::filesystem::path& path) override { return files_.putAside(path); }
    void removeDirectory(const std::filesystem::path& path) override {
        files_.removeDirectory(path);
    }

  private:
    MemoryFiles& files_;
};

Transmitter spot(const std::string& description) {
    Transmitter channel;
    channel.freq = 435640000;
    channel.mode = "FM";
    channel.description = description;
    channel.direction = "down";
    return channel;
}

std::string answerWith(const std::string& description) {
    return fmt::format(R"([{{"description":"{}","alive":true,"downlink_low":435640000}}])",
                       description);
}

class SatNOGSCacheTest : public ::testing::Test {
  protected:
    void keep(const std::string& description, double ageSeconds) {
        files[kChannels] = encodeTransmitters({spot(description)});
        files[kStamp] = fmt::format("{}", now() - ageSeconds);
    }
    double now() const { return machine.loop.now().unixSeconds(); }
    /// Descriptions of what the fetch brings.
    std::vector<std::string> fetched() {
        std::vector<std::string> result{"never called back"};
        cache.fetchWithCache(44909, [&](std::vector<Transmitter> list) {
            result.clear();
            for (const auto& channel : list) result.push_back(channel.description);
        });
        machine.loop.runPosted();
        return result;
    }

    SimulatedMachine machine;
    std::map<std::filesystem::path, std::string>& files = machine.files.files;
    SatNOGSCache cache{machine.machine, SatNOGSFetch(machine.machine, "https://channels.test")};
    static constexpr double kWeek = 168 * 3600;
};

TEST_F(SatNOGSCacheTest, EachSatelliteHasAFileOfChannelsAndATimeStamp) {
    EXPECT_EQ(cache.cacheFile(44909), kChannels);
    EXPECT_EQ(cache.timestampFile(44909), kStamp);
    EXPECT_EQ(cache.cacheFile(-1).filename(), "-1.json");
}

TEST_F(SatNOGSCacheTest, TimeStampOfExactlyTheAgeIsFreshAndAMomentOlderIsStale) {
    files[kStamp] = fmt::format("{}", now() - kWeek);
    EXPECT_FALSE(cache.isCacheStale(44909));
    files[kStamp] = fmt::format("{}", now() - kWeek - 0.001);
    EXPECT_TRUE(cache.isCacheStale(44909));
    EXPECT_FALSE(cache.isCacheStale(44909, 169));
}

TEST_F(SatNOGSCacheTest, BlanksAndNewlinesAroundTheTimeStampCountForNothing) {
    files[kStamp] = fmt::format(" \t{}\r\n\n", now());
    EXPECT_FALSE(cache.isCacheStale(44909));
}

TEST_F(SatNOGSCacheTest, MissingOrUnreadableTimeStampIsStale) {
    EXPECT_TRUE(cache.isCacheStale(44909));
    for (const char* text : {"", "yesterday", "1.7e9s", "nan", "\xff"}) {
        files[kStamp] = text;
        EXPECT_TRUE(cache.isCacheStale(44909)) << text;
    }
}

TEST_F(SatNOGSCacheTest, SavedChannelsComeBackWithNewIdentities) {
    const auto saved = spot("RS-44");
    cache.save(44909, {saved});
    EXPECT_FALSE(cache.isCacheStale(44909));
    const auto loaded = cache.loadCached(44909);
    ASSERT_TRUE(loaded && loaded->size() == 1);
    EXPECT_NE(loaded->front().id, saved.id);
    EXPECT_EQ(loaded->front().label(), saved.label());
}

TEST_F(SatNOGSCacheTest, TimeStampHasTheShortestDigitsOfNow) {
    machine.loop.advance(0.25);
    cache.save(44909, {});
    const auto expected = fmt::format("{:.2f}", now());
    EXPECT_EQ(files[kStamp], expected);
    EXPECT_EQ(files[kChannels], "[]");
}

TEST_F(SatNOGSCacheTest, TimeStampIsRenewedWhenTheChannelsCannotBeWritten) {
    DiskWithoutChannels disk(machine.files);
    const Machine withDisk{machine.loop, machine.loop, machine.workers, machine.settings,
                           disk,         machine.http, machine.tcp,     machine.location};
    SatNOGSCache lame(withDisk, SatNOGSFetch(withDisk, "https://channels.test"));
    keep("old", 2 * kWeek);
    lame.save(44909, {spot("new")});
    EXPECT_FALSE(lame.isCacheStale(44909));
    EXPECT_EQ(lame.loadCached(44909)->front().description, "old");
}

TEST_F(SatNOGSCacheTest, FreshCacheCausesNoRequest) {
    keep("kept", kWeek);
    EXPECT_THAT(fetched(), ElementsAre("kept"));
    EXPECT_THAT(machine.http.requests, IsEmpty());
}

TEST_F(SatNOGSCacheTest, FreshCacheOfNoChannelsCausesNoRequestEither) {
    cache.save(44909, {});
    EXPECT_THAT(fetched(), IsEmpty());
    EXPECT_THAT(machine.http.requests, IsEmpty());
}

TEST_F(SatNOGSCacheTest, StaleCacheIsReplacedByTheAnswer) {
    keep("old", 2 * kWeek);
    machine.http.answers[kUrl].body = answerWith("new");
    EXPECT_THAT(fetched(), ElementsAre("new"));
    EXPECT_FALSE(cache.isCacheStale(44909));
    EXPECT_EQ(cache.loadCached(44909)->front().description, "new");
    EXPECT_THAT(fetched(), ElementsAre("new"));
    EXPECT_THAT(machine.http.requests, ElementsAre(kUrl));
}

TEST_F(SatNOGSCacheTest, TimeStampIsTheTimeOfTheAnswer) {
    machine.http.answers[kUrl] = {answerWith("slow"), 30};
    cache.fetchWithCache(44909, [](const auto&) {});
    machine.loop.advance(60);
    EXPECT_EQ(files[kStamp], fmt::format("{:.1f}", now() - 30));
}

TEST_F(SatNOGSCacheTest, StaleCacheServesWhenTheServiceGivesNothingAndStaysStale) {
    for (const auto& body : {std::optional<std::string>(), std::optional<std::string>("[]"),
                             std::optional<std::string>("<html>404</html>")}) {
        keep("old", 2 * kWeek);
        const auto before = files;
        machine.http.answers[kUrl].body = body;
        EXPECT_THAT(fetched(), ElementsAre("old"));
        EXPECT_EQ(files, before) << body.value_or("no answer");
    }
    EXPECT_EQ(machine.http.requests.size(), 3u) << "asked for each time";
}

TEST_F(SatNOGSCacheTest, EmptyAnswerIsNeverSavedAndAskedForAgain) {
    machine.http.answers[kUrl].body = "[]";
    EXPECT_THAT(fetched(), IsEmpty());
    EXPECT_THAT(fetched(), IsEmpty());
    EXPECT_THAT(files, IsEmpty());
    EXPECT_EQ(machine.http.requests.size(), 2u);
}

TEST_F(SatNOGSCacheTest, AnswerOfDeadRecordsOnlyIsEmpty) {
    machine.http.answers[kUrl].body = R"([{"description":"x","alive":false,"downlink_low":1}])";
    EXPECT_THAT(fetched(), IsEmpty());
    EXPECT_THAT(files, IsEmpty());
}

TEST_F(SatNOGSCacheTest, CorruptFileOfChannelsLeadsToTheService) {
    keep("kept", 60);
    files[kChannels] = R"([{"freq":1}])";
    EXPECT_FALSE(cache.loadCached(44909));
    machine.http.answers[kUrl].body = answerWith("new");
    EXPECT_THAT(fetched(), ElementsAre("new"));
}

TEST_F(SatNOGSCacheTest, CorruptFileOfChannelsAndNoServiceGiveNothing) {
    keep("kept", 60);
    files[kChannels] = "half a fi";
    EXPECT_THAT(fetched(), IsEmpty());
}

TEST_F(SatNOGSCacheTest, DiskThatCannotBeWrittenKeepsNothingBack) {
    machine.files.writable = false;
    machine.http.answers[kUrl].body = answerWith("new");
    EXPECT_THAT(fetched(), ElementsAre("new"));
    EXPECT_THAT(files, IsEmpty());
}

TEST_F(SatNOGSCacheTest, ClearAllRemovesEverythingAndNothingIsSavedUntilTheNextStart) {
    keep("old", 60);
    files["/home/test/.veloran/custom.tle"] = "mine";
    cache.clearAll();
    EXPECT_EQ(files.size(), 1u) << "only the channels go";
    cache.save(44909, {spot("new")});
    machine.http.answers[kUrl].body = answerWith("new");
    EXPECT_THAT(fetched(), ElementsAre("new"));
    EXPECT_EQ(files.size(), 1u);

    SatNOGSCache next(machine.machine, SatNOGSFetch(machine.machine, "https://channels.test"));
    next.save(44909, {spot("new")});
    EXPECT_TRUE(next.loadCached(44909));
}

TEST_F(SatNOGSCacheTest, AnswerThatComesAfterClearAllIsNotSaved) {
    machine.http.answers[kUrl] = {answerWith("late"), 30};
    std::size_t brought = 0;
    cache.fetchWithCache(44909, [&](const auto& list) { brought = list.size(); });
    machine.loop.advance(10);
    cache.clearAll();
    machine.loop.advance(30);
    EXPECT_EQ(brought, 1u);
    EXPECT_THAT(files, IsEmpty());
}

}  // namespace
}  // namespace veloran::test
