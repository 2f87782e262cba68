// The element and the transmitter service in every state that a web server can be in: what is left
// on the disk, while the program goes on.

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <ostream>
#include <set>

#include "sample_catalogue/sample_catalogue.h"
#include "scenarios/real_station.h"

namespace veloran {
namespace {

using test::LoopWatch;
using test::SampleServices;
using test::spinUntil;
using test::Station;
using test::TickHistory;

constexpr std::int64_t kRs44 = 44909;
/// Long for a busy machine, short for a test.
constexpr double kIdleSeconds = 1.5;
constexpr double kLongestGapSeconds = 0.4;
constexpr const char* kErrorPage = "<html><body><h1>Sorry</h1></body></html>\n";

/// A state of a web server, and what becomes of the answer.
struct Situation {
    const char* name;
    /// How the server answers where it would send `good`.
    HttpAnswer (*answer)(const std::string& good);
    bool hasBody;  ///< whether a body reaches the program, be it a bad one
    bool isGood;   ///< whether it is the good one

    friend std::ostream& operator<<(std::ostream& out, const Situation& s) { return out << s.name; }
};

constexpr const char* kMovedTo = "/moved";

template <int status>
HttpAnswer errorPage(const std::string&) {
    return {.status = status, .headers = {{"Content-Type", "text/html"}}, .body = kErrorPage};
}

template <HttpFault fault>
HttpAnswer faulty(const std::string& good) {
    return {.body = good, .fault = fault};
}

const Situation kSituations[] = {
    {"Good", [](const std::string& good) { return HttpAnswer{.body = good}; }, true, true},
    {"Empty", [](const std::string&) { return HttpAnswer{}; }, true, false},
    {"Wrong", [](const std::string&) { return HttpAnswer{.body = R"({"detail":"no"})"}; }, true,
     false},
    {"HtmlOfStatus200", errorPage<200>, true, false},
    {"HtmlOfStatus403", errorPage<403>, true, false},
    {"HtmlOfStatus404", errorPage<404>, true, false},
    {"HtmlOfStatus500", errorPage<500>, true, false},
    {"Moved",
     [](const std::string&) {
         return HttpAnswer{.status = 302, .headers = {{"Location", kMovedTo}}};
     },
     true, true},
    {"MovedInCircles",
     [](const std::string&) {
         return HttpAnswer{.status = 302, .headers = {{"Location", "/circle"}}};
     },
     false, false},
    {"Cut", faulty<HttpFault::cutBody>, false, false},
    {"SlowBytes", faulty<HttpFault::slowBytes>, true, true},
    {"ClosedAtOnce", faulty<HttpFault::closeAtOnce>, false, false},
    {"NeverAnswered", faulty<HttpFault::neverAnswer>, false, false},
};

/// A station that tracks while a service misbehaves.
class ServiceStory : public testing::TestWithParam<Situation> {
  protected:
    void SetUp() override {
        station.services().serve(SampleServices::transmitterTarget(kRs44),
                                 {.body = channelAnswer("old")});
        station.services().serve("/circle", {.status = 302, .headers = {{"Location", "/circle"}}});
        ASSERT_NO_FATAL_FAILURE(station.load());
        // The answer is shown before it is in the cache.
        ASSERT_TRUE(spinUntil([&] {
            return channelNames() == "old" && file("satnogs/44909.json") &&
                   file("satnogs/44909.timestamp");
        }));
        // The one channel of the service has no uplink; tracking wants the built-in transponder.
        rs44()->transmitters = builtinTransmitters().at(kRs44);
        ASSERT_NO_FATAL_FAILURE(station.track(test::freePort(), 50));
        history.emplace(station.state());
    }

    void answerAt(const std::string& target, const std::string& good) {
        station.services().serve(kMovedTo, {.body = good});
        station.services().serve(target, GetParam().answer(good));
    }
    /// Runs until the condition holds, and for ten ticks at least.
    void expectThatAllGoesOnUntil(const std::function<bool()>& condition) {
        const LoopWatch watch;
        const std::size_t before = history->ticks();
        EXPECT_TRUE(spinUntil([&] { return condition() && history->ticks() > before + 10; }));
        EXPECT_LT(watch.longestGapSeconds(), kLongestGapSeconds);
        EXPECT_TRUE(state().isTracking.get());
    }
    void expectOnlyWholeFiles() const {
        const std::set<std::string> kinds{".tle", ".timestamp", ".json"};
        for (const auto& entry : std::filesystem::recursive_directory_iterator(home())) {
            if (!entry.is_regular_file() || entry.path().extension() == ".lock") continue;
            EXPECT_TRUE(kinds.contains(entry.path().extension())) << entry.path();
        }
    }

    AppState& state() { return *station.state(); }
    std::filesystem::path home() const { return station.machine().files.homeDirectory(); }
    std::optional<std::string> file(const char* name) const {
        return station.machine().files.read(home() / ".veloran" / name);
    }
    SatellitePtr rs44() {
        for (const auto& satellite : state().satellites.get()) {
            if (satellite->id == kRs44) return satellite;
        }
        return nullptr;
    }
    std::string channelNames() {
        std::string names;
        for (const auto& channel : rs44()->transmitters) names += channel.description;
        return names;
    }
    static std::string channelAnswer(const std::string& description) {
        return R"([{"description":")" + description +
               R"(","alive":true,"downlink_low":435605000,"mode":"CW"}])";
    }

    Station station{kIdleSeconds};
    std::optional<TickHistory> history;
};

INSTANTIATE_TEST_SUITE_P(Web, ServiceStory, testing::ValuesIn(kSituations),
                         [](const auto& situation) { return situation.param.name; });

TEST_P(ServiceStory, ElementAnswerIsKeptWhateverItSaysAndNoAnswerLeavesTheCache) {
    const auto before = file("tle/amateur.tle");
    ASSERT_TRUE(before && file("tle/amateur.timestamp"));
    const std::size_t bodies = state().satellites->size();
    const std::string good = "[" + before->substr(1, before->find('}')) + "]";  // the first record
    answerAt(SampleServices::elementTarget("amateur"), good);

    state().refreshTLEs();
    expectThatAllGoesOnUntil([&] {
        return !state().isLoadingTLEs.get() &&
               (!GetParam().isGood || file("tle/amateur.tle") == good);
    });

    if (GetParam().isGood) {
        EXPECT_EQ(file("tle/amateur.tle"), good);
        EXPECT_EQ(state().satellites->size(), 3u) << "one, the Sun and the Moon";
    } else if (GetParam().hasBody) {
        EXPECT_EQ(file("tle/amateur.tle"), GetParam().answer(good).body);
        EXPECT_EQ(state().satellites->size(), 2u) << "the Sun and the Moon";
    } else {
        EXPECT_EQ(file("tle/amateur.tle"), before);
        EXPECT_EQ(state().satellites->size(), bodies) << "from the old cache";
    }
    EXPECT_EQ(file("tle/amateur.timestamp").has_value(), GetParam().hasBody)
        << "kept answers count as fresh";
    expectOnlyWholeFiles();
}

TEST_P(ServiceStory, TransmitterAnswerIsKeptWhenItIsAListAndElseTheOldCacheServes) {
    const auto before = file("satnogs/44909.json");
    const std::string longAgo = "1000000.0";
    ASSERT_TRUE(before);
    ASSERT_TRUE(station.machine().files.writeAtomically(
        home() / ".veloran" / "satnogs" / "44909.timestamp", longAgo));
    answerAt(SampleServices::transmitterTarget(kRs44), channelAnswer("new"));

    state().refreshTransmittersFromSatNOGS();
    const std::string expected = GetParam().isGood ? "new" : "old";
    expectThatAllGoesOnUntil([&] { return channelNames() == expected; });

    if (GetParam().isGood) {
        EXPECT_NE(file("satnogs/44909.timestamp"), longAgo);
        EXPECT_THAT(file("satnogs/44909.json"), testing::Optional(testing::HasSubstr("new")));
    } else {
        EXPECT_EQ(file("satnogs/44909.timestamp"), longAgo) << "asked for again at the next start";
        EXPECT_EQ(file("satnogs/44909.json"), before);
    }
    expectOnlyWholeFiles();
}

TEST(ServiceWithoutManners, BytesThatAreNoTextLeaveTheCacheOfTheGroup) {
    Station station;
    ASSERT_NO_FATAL_FAILURE(station.load());
    const auto cache = station.machine().files.homeDirectory() / ".veloran/tle/amateur.tle";
    const auto before = station.machine().files.read(cache);
    station.services().serve(SampleServices::elementTarget("amateur"), {.body = "\xff\xfe\x00"});
    station.state()->refreshTLEs();
    ASSERT_TRUE(spinUntil([&] { return !station.state()->isLoadingTLEs.get(); }));
    EXPECT_EQ(station.machine().files.read(cache), before);
    EXPECT_GT(station.state()->satellites->size(), 10u);
}

}  // namespace
}  // namespace veloran
