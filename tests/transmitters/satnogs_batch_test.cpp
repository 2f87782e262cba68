#include "transmitters/satnogs_batch.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <memory>
#include <numeric>

#include "support/simulated_machine.h"

namespace veloran::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SatNOGSBatchTest : public ::testing::Test {
  protected:
    SatNOGSBatchTest() {
        machine.http.special = [this](const std::string& url, const auto&) {
            const auto id = std::stoll(url.substr(url.rfind('=') + 1));
            asked.push_back(id);
            mostOpen = std::max(mostOpen, asked.size() - answered());
            return answerTo(id);
        };
    }
    virtual ~SatNOGSBatchTest() = default;

    static std::vector<std::int64_t> upTo(std::int64_t count) {
        std::vector<std::int64_t> ids(static_cast<std::size_t>(count));
        std::iota(ids.begin(), ids.end(), 1);
        return ids;
    }
    /// Each answer takes its second.
    std::optional<ScriptedHttp::Answer> answerTo(std::int64_t id) const {
        ScriptedHttp::Answer answer;
        answer.delaySeconds = 1;
        if (failing.contains(id)) {
            answer.status = failing.at(id);
            if (answer.status > 0) answer.body = "<html>";
        } else {
            answer.body = fmt::format(
                R"([{{"description":"{}","alive":true,"downlink_low":435640000}}])", id);
        }
        return answer;
    }
    std::size_t answered() const { return got.size(); }
    /// In the cache since so many hours.
    void keep(std::int64_t id, double hours) {
        Transmitter channel;
        channel.freq = 145e6;
        channel.mode = "FM";
        channel.description = "cached";
        channel.direction = "down";
        cache.save(id, {channel});
        machine.files.files[cache.timestampFile(id)] =
            fmt::format("{}", machine.loop.now().unixSeconds() - hours * 3600);
    }

    SimulatedMachine machine;
    SatNOGSCache cache{machine.machine, SatNOGSFetch(machine.machine, "https://channels.test")};
    /// HTTP status by satellite, 0 for no answer at all.
    std::map<std::int64_t, int> failing;
    std::vector<std::int64_t> asked;
    std::size_t mostOpen = 0;
    /// What came for each, in order.
    std::vector<std::pair<std::int64_t, std::string>> got;
    std::unique_ptr<SatNOGSBatch> batch = std::make_unique<SatNOGSBatch>(
        cache, [this](std::int64_t id, const std::vector<Transmitter>& list) {
            got.emplace_back(id, list.empty() ? "" : list.front().description);
        });
};

TEST_F(SatNOGSBatchTest, FourAreAskedForAtATimeUntilAllHaveTheirs) {
    batch->add(upTo(10));
    EXPECT_THAT(asked, IsEmpty()) << "the caches are looked into first";
    machine.loop.advance(0.5);
    EXPECT_EQ(asked, upTo(4));
    machine.loop.advance(60);
    EXPECT_EQ(asked, upTo(10));
    EXPECT_EQ(mostOpen, SatNOGSBatch::kMostAtOnce);
    ASSERT_EQ(got.size(), 10u);
    for (const auto& [id, description] : got) EXPECT_EQ(description, std::to_string(id));
}

TEST_F(SatNOGSBatchTest, WhatIsAddedLaterSharesTheFour) {
    for (const auto id : upTo(10)) {
        batch->add({id});
        machine.loop.advance(0.01);
    }
    machine.loop.advance(60);
    EXPECT_EQ(mostOpen, SatNOGSBatch::kMostAtOnce);
    EXPECT_EQ(got.size(), 10u);
}

TEST_F(SatNOGSBatchTest, SatelliteThatWaitsOrIsAskedForIsNotAskedForAgain) {
    batch->add({1, 2, 3, 4, 5, 5});
    machine.loop.advance(0.5);
    batch->add({1, 5, 6});
    machine.loop.advance(60);
    EXPECT_EQ(asked, upTo(6));
    EXPECT_EQ(got.size(), 6u);
}

TEST_F(SatNOGSBatchTest, FreshCacheAsksNobody) {
    keep(1, 1);
    keep(2, 1000);
    batch->add({1, 2});
    machine.loop.advance(60);
    EXPECT_THAT(asked, ElementsAre(2));
    EXPECT_THAT(got, ElementsAre(std::pair(1, "cached"), std::pair(2, "2")));
}

TEST_F(SatNOGSBatchTest, ServiceThatFailsIsNotAskedForTheRest) {
    for (const int status : {0, 429, 500, 503}) {
        asked.clear();
        got.clear();
        failing = {{2, status}};
        for (const std::int64_t id : {1, 2, 3, 4, 5, 6, 7, 8, 9}) {
            machine.files.remove(cache.cacheFile(id));
            machine.files.remove(cache.timestampFile(id));
        }
        keep(9, 1000);
        batch->add(upTo(9));
        machine.loop.advance(60);
        // The four that were under way, and what the first answer has let in.
        EXPECT_LE(asked.size(), 5u) << status;
        ASSERT_EQ(got.size(), 9u) << status;
        EXPECT_THAT(got, ::testing::Contains(std::pair(std::int64_t{9}, std::string("cached"))));
        EXPECT_THAT(got, ::testing::Contains(std::pair(std::int64_t{8}, std::string())));

        failing.clear();
        batch->add({8});
        machine.loop.advance(60);
        EXPECT_EQ(got.back(), std::pair(std::int64_t{8}, std::string("8"))) << "the next batch";
    }
}

TEST_F(SatNOGSBatchTest, SatelliteThatTheServiceDoesNotKnowIsNoFailure) {
    const auto usual = machine.http.special;
    machine.http.special = [&](const std::string& url, const auto& answer) {
        auto given = usual(url, answer);
        given->body = "[]";
        return given;
    };
    batch->add(upTo(9));
    machine.loop.advance(60);
    EXPECT_EQ(asked, upTo(9));
}

TEST_F(SatNOGSBatchTest, NothingCompletesOnceItHasGone) {
    batch->add(upTo(9));
    machine.loop.advance(0.5);
    batch.reset();
    machine.loop.advance(60);
    EXPECT_THAT(got, IsEmpty());
    EXPECT_EQ(asked, upTo(4));
    EXPECT_FALSE(cache.isCacheStale(1)) << "what was under way is kept";
}

}  // namespace
}  // namespace veloran::test
