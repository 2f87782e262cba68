// Three days of unattended passes, real orbits among them. What was tracked when is compared with
// the rules of the queue told a second time, as plainly as can be.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "support/queue_world.h"
#include "support/radio_server.h"

namespace veloran::test {
namespace {

using Log = std::vector<std::string>;
constexpr double kHour = 3600;
constexpr double kDay = 24 * kHour;

/// The rules over the bodies' present passes and selection, with a queue and a session of its own.
class Rules {
  public:
    Rules(AppState& app, Instant start) : app_(app), start_(start) {}

    Log log;

    void toggle(const SatellitePtr& body, const PredictedPass& pass) {
        if (queue_.erase(keyOf(*body, pass)) > 0) return;
        for (const auto& other : app_.selectedSatellites()) {
            for (const auto& queued : *other->passes) {
                const bool apart =
                    queued.setTime <= pass.riseTime || pass.setTime <= queued.riseTime;
                if (apart || !queue_.contains(keyOf(*other, queued))) continue;
                asked_ = {keyOf(*other, queued), keyOf(*body, pass)};
                return;
            }
        }
        insert(keyOf(*body, pass));
    }
    void answer(bool replace) {
        if (replace) {
            queue_.erase(asked_.first);
            insert(asked_.second);
        }
    }
    void clear() { queue_.clear(); }
    void begin(const SatellitePtr& body, const char* who) {
        end(who);
        session_ = body;
        note("start", who);
    }
    void end(const char* who) {
        if (session_) note("end", who);
        session_ = nullptr;
        followed_.reset();
    }
    /// What each second does while anything is queued.
    void fire() {
        if (queue_.empty()) return;
        const Instant now = app_.now();
        if (session_) {
            const auto running = runningSet(now);
            if (!running || now < *running) return;
            end("queue");
        }
        SatellitePtr next;
        Followed followed;
        Instant earliest{1e18};
        for (const auto& body : app_.selectedSatellites()) {
            std::set<Key> seen;
            for (const auto& pass : *body->passes) {
                const auto key = keyOf(*body, pass);
                if (!seen.insert(key).second || !queue_.contains(key)) continue;
                const bool high = pass.maxElevation >= app_.minAutoTrackElevation;
                const bool inside = pass.riseTime <= now && now < pass.setTime;
                if (!high || !inside || pass.riseTime >= earliest) continue;
                earliest = pass.riseTime;
                next = body;
                followed = {key, pass.setTime};
            }
        }
        if (!next) return;
        begin(next, "queue");
        followed_ = followed;
    }

    QueueIds ids() const {
        QueueIds result;
        for (const auto& [id, second] : queue_) result.insert(fmt::format("{}-{}", id, second));
        return result;
    }

  private:
    using Key = std::pair<std::int64_t, std::int64_t>;
    using Followed = std::pair<Key, Instant>;  // a queued pass and its set

    static Key keyOf(const Satellite& body, const PredictedPass& pass) {
        return {body.id, static_cast<std::int64_t>(pass.riseTime.secondsSinceReference)};
    }
    void insert(Key key) {
        const bool first = queue_.empty();
        queue_.insert(key);
        if (first) fire();
    }
    /// Of the pass that the session follows, in the list or as it was last seen there.
    std::optional<Instant> runningSet(Instant now) {
        for (const auto& pass : *session_->passes) {
            const bool inside = pass.riseTime <= now && now < pass.setTime + 60;
            const auto key = keyOf(*session_, pass);
            if (!inside || !queue_.contains(key)) continue;
            followed_ = {key, pass.setTime};
            return pass.setTime;
        }
        if (followed_ && !queue_.contains(followed_->first)) followed_.reset();
        return followed_ ? std::optional(followed_->second) : std::nullopt;
    }
    void note(const char* what, const char* who) {
        log.push_back(
            fmt::format("{:.2f} {} {} ({})", app_.now() - start_, what, session_->name, who));
    }

    AppState& app_;
    Instant start_;
    std::set<Key> queue_;
    std::pair<Key, Key> asked_;
    SatellitePtr session_;
    std::optional<Followed> followed_;
};

/// An orbit of its own for each body with a real one.
std::string realOrbits() {
    return R"([{"OBJECT_NAME":"REAL LOW","OBJECT_ID":"2020-001A",
        "EPOCH":"2026-11-21T00:00:00.000000","MEAN_MOTION":15.5,"ECCENTRICITY":0.0006,
        "INCLINATION":51.64,"RA_OF_ASC_NODE":120.0,"ARG_OF_PERICENTER":80.0,"MEAN_ANOMALY":30.0,
        "NORAD_CAT_ID":101,"BSTAR":0.0001},
        {"OBJECT_NAME":"REAL POLAR","OBJECT_ID":"2020-001B",
        "EPOCH":"2026-11-21T00:00:00.000000","MEAN_MOTION":14.2,"ECCENTRICITY":0.001,
        "INCLINATION":98.7,"RA_OF_ASC_NODE":40.0,"ARG_OF_PERICENTER":10.0,"MEAN_ANOMALY":200.0,
        "NORAD_CAT_ID":102,"BSTAR":0.0001},
        {"OBJECT_NAME":"REAL HIGH","OBJECT_ID":"2020-001C",
        "EPOCH":"2026-11-21T00:00:00.000000","MEAN_MOTION":12.8,"ECCENTRICITY":0.02,
        "INCLINATION":82.5,"RA_OF_ASC_NODE":300.0,"ARG_OF_PERICENTER":150.0,"MEAN_ANOMALY":90.0,
        "NORAD_CAT_ID":103,"BSTAR":0.0001}])";
}

class Story {
  public:
    explicit Story(unsigned seed) : random_(seed) {
        world_.machine.settings.set("tleCategories", std::vector<std::string>{"amateur"});
        world_.machine.settings.set("selectedSatIds", std::vector<std::int64_t>{101, 102, 103});
        world_.cacheGroup("amateur", realOrbits());
        world_.start();
        app().dopplerUpdateHz = 1.0;
        app().setTickAngles([](const Satellite&, Instant) -> std::optional<AppState::TickAngles> {
            return AppState::TickAngles{{180, 45, 1000, -3}, TopocentricResult{180, 45, 1000, -2}};
        });
        start_ = world_.now();
        world_.load();
        app().computeAllPasses();
        for (std::int64_t id = 1; id <= 9; ++id) addMadeUp(id);
        rules = std::make_unique<Rules>(app(), start_);
        keepLog();
        // All that the user and the queue do stands a quarter after the computations.
        world_.machine.loop.advance(0.25);
    }

    Log log;
    std::unique_ptr<Rules> rules;
    RadioLink radio{world_.machine};
    int asked = 0;

    AppState& app() { return *world_.app; }
    SatellitePtr body(std::int64_t id) const { return world_.body(id); }
    double time() const { return world_.now() - start_; }

    void runUntil(double when) {
        while (time() < when) {
            world_.machine.loop.advance(1);
            rules->fire();
            radio.serve();
            ASSERT_EQ(log.size(), rules->log.size()) << "at " << time();
        }
    }

    // ---- What a user does, to the program and to the rules.

    void queue(const SatellitePtr& satellite, const PredictedPass& pass, bool replace = false) {
        userActs([&] {
            app().togglePassQueued(satellite, pass);
            rules->toggle(satellite, pass);
            const auto conflict = app().pendingPassConflict.get();
            if (!conflict) return;
            ++asked;
            if (replace) {
                app().resolveConflictReplace(*conflict);
            } else {
                app().resolveConflictKeepExisting();
            }
            rules->answer(replace);
        });
    }
    void queue(std::int64_t id, std::size_t pass, bool replace = false) {
        const auto passes = body(id)->passes;
        queue(body(id), passes->at(pass), replace);
    }
    void clear() {
        app().clearPassQueue();
        rules->clear();
    }
    void track(const SatellitePtr& satellite) {
        byHand([&] {
            app().startTracking(satellite, std::nullopt);
            rules->begin(satellite, "hand");
        });
    }
    void stop() {
        byHand([&] {
            app().stopTracking();
            rules->end("hand");
        });
    }
    void select(const SatellitePtr& satellite) {
        app().toggleSatellite(satellite);
        world_.machine.loop.runPosted();
    }
    /// A computation finds the body's passes a little later or earlier.
    void shift(const SatellitePtr& satellite, double seconds) {
        PassList moved = *satellite->passes;
        for (auto& pass : moved) pass.riseTime = pass.riseTime + seconds;
        satellite->passes = std::make_shared<const PassList>(std::move(moved));
    }

    /// One of the many things that a user does in the course of a day.
    void actAtRandom() {
        const auto& bodies = app().satellites.get();
        const auto satellite = bodies[draw(bodies.size())];
        const auto dice = draw(100);
        if (dice < 60) {
            queueAtRandom(satellite);
        } else if (dice < 70) {
            shift(satellite, draw(2) == 0 ? 0.375 : -0.375);
        } else if (dice < 74) {
            select(satellite);
        } else if (dice < 82) {
            app().minAutoTrackElevation = static_cast<double>(1 + draw(25));
        } else if (dice < 86) {
            track(satellite);
        } else if (dice < 98) {
            stop();
        } else {
            clear();
        }
    }
    std::size_t draw(std::size_t count) { return random_() % count; }

  private:
    void queueAtRandom(const SatellitePtr& satellite) {
        const auto passes = satellite->passes;
        for (const auto& pass : *passes) {
            if (pass.setTime <= world_.now()) continue;
            if (draw(2) == 0) continue;
            queue(satellite, pass, draw(2) == 0);
            return;
        }
    }
    void addMadeUp(std::int64_t id) {
        PassList passes = scripted(id);
        double rise = 3 * kHour + static_cast<double>(draw(7200));
        while (rise < 3 * kDay) {
            const auto length = 300 + static_cast<double>(draw(3200)) / 8;
            passes.push_back(
                passFrom(start_ + rise, length, 2 + static_cast<double>(draw(600)) / 10));
            rise += length + 5000 + static_cast<double>(draw(16000)) / 8;
        }
        world_.add(id, fmt::format("BODY {}", id), std::move(passes));
    }
    PassList scripted(std::int64_t id) const {
        const auto pass = [this](double rise, double set, double peak = 45) {
            return passFrom(start_ + rise, set - rise, peak);
        };
        switch (id) {
            case 1:
                return {pass(600, 1200), pass(6600, 7200)};
            case 2:
                return {pass(1200, 1800), pass(7500, 8100)};
            case 3:
                return {pass(2400, 3000)};
            case 4:
                return {pass(2700, 3300), pass(8400, 9000)};
            case 5:
                return {pass(3600, 4200)};
            case 6:
                return {pass(3900, 4500), pass(9600, 9900)};
            case 7:
                return {pass(4800, 5200, 4.9)};
            case 8:
                return {pass(5400, 5800)};
            default:
                return {pass(6000.875, 6500)};
        }
    }
    void keepLog() {
        app().isTracking.alsoAfterChange([this](bool runs) {
            if (runs) {
                tracked_ = app().trackingSatellite.get()->name;
                note("start");
            } else if (!tracked_.empty()) {
                note("end");
                tracked_.clear();
            }
        });
    }
    void note(const char* what) {
        log.push_back(fmt::format("{:.2f} {} {} ({})", time(), what, tracked_, who_));
    }
    template <class Act>
    void userActs(Act act) {
        act();
        radio.serve();
    }
    template <class Act>
    void byHand(Act act) {
        who_ = "hand";
        userActs(act);
        who_ = "queue";
    }

    QueueWorld world_;
    Instant start_;
    std::mt19937 random_;
    std::string tracked_;
    const char* who_ = "queue";
};

/// The first three hours, told moment by moment.
void playMorning(Story& story) {
    for (const std::int64_t id : {1, 2, 3}) story.queue(id, 0);
    story.queue(4, 0, true);  // overlaps 3, and takes its place
    story.queue(5, 0);
    story.queue(6, 0, false);  // overlaps 5, and gives way
    for (const std::int64_t id : {7, 8, 9}) story.queue(id, 0);
    story.queue(2, 1);
    story.queue(4, 1);

    story.runUntil(5000);
    story.select(story.body(8));
    story.runUntil(5700);
    story.shift(story.body(9), 0.25);
    story.runUntil(5900);
    story.select(story.body(8));
    story.runUntil(6700);
    story.queue(1, 1);  // under way
    story.runUntil(6900);
    story.radio.steal();
    const auto armed = story.radio.server.countOf("\\sat_aos");
    story.runUntil(6910);
    EXPECT_EQ(story.radio.server.countOf("\\sat_aos"), armed + 1);
    EXPECT_TRUE(story.app().rigSatProtoArmed);

    story.runUntil(7400);
    story.track(story.body(3));
    story.runUntil(7800);
    story.stop();

    story.runUntil(8390);
    story.radio.reachable = false;
    story.radio.fail();
    const auto heard = story.radio.server.heard.size();
    story.runUntil(9010);
    EXPECT_EQ(story.radio.server.heard.size(), heard);
    story.radio.reachable = true;
    story.runUntil(9300);
    EXPECT_TRUE(story.app().rigConnected);
    story.clear();
    story.runUntil(9700);
    story.queue(6, 1);  // under way and the first of the queue: at once
    story.runUntil(3 * kHour);
}

const Log kMorning{
    "600.25 start BODY 1 (queue)",  "1200.25 end BODY 1 (queue)",   "1200.25 start BODY 2 (queue)",
    "1800.25 end BODY 2 (queue)",   "2700.25 start BODY 4 (queue)", "3300.25 end BODY 4 (queue)",
    "3600.25 start BODY 5 (queue)", "4200.25 end BODY 5 (queue)",   "6701.25 start BODY 1 (queue)",
    "7200.25 end BODY 1 (queue)",   "7400.25 start BODY 3 (hand)",  "7800.25 end BODY 3 (hand)",
    "7801.25 start BODY 2 (queue)", "8100.25 end BODY 2 (queue)",   "8400.25 start BODY 4 (queue)",
    "9000.25 end BODY 4 (queue)",   "9700.25 start BODY 6 (queue)", "9900.25 end BODY 6 (queue)"};

/// The log of that many days; the story is over when it comes back.
Log play(Story& story, double days) {
    playMorning(story);
    double next = 3 * kHour;
    while (next < days * kDay && !::testing::Test::HasFailure()) {
        next = std::min(days * kDay, next + static_cast<double>(1 + story.draw(1200)));
        story.runUntil(next);
        story.actAtRandom();
        EXPECT_EQ(story.app().queuedPassIds.get(), story.rules->ids()) << "at " << next;
    }
    EXPECT_EQ(story.log, story.rules->log);
    EXPECT_EQ(story.radio.misdirected(), 0u);
    return story.log;
}

std::size_t countOf(const Log& log, std::string_view text) {
    return static_cast<std::size_t>(std::count_if(log.begin(), log.end(), [text](const auto& line) {
        return line.find(text) != std::string::npos;
    }));
}

TEST(QueueStory, ThreeDaysGoByTheRulesAndComeOutTheSameAgain) {
    constexpr unsigned kSeed = 20261122;
    Story story(kSeed);
    const auto log = play(story, 3);
    fmt::print("three days: {} sessions, {} of them by the queue, {} conflicts\n",
               countOf(log, " start "), countOf(log, "(queue)") / 2, story.asked);

    ASSERT_GT(log.size(), kMorning.size());
    EXPECT_EQ(Log(log.begin(), log.begin() + static_cast<std::ptrdiff_t>(kMorning.size())),
              kMorning);
    // The random days are no empty days, and follow real orbits too.
    EXPECT_GT(countOf(log, " start BODY"), 30u);
    EXPECT_GT(countOf(log, " start REAL"), 5u);
    EXPECT_GT(countOf(log, "(hand)"), 10u);
    EXPECT_GT(story.asked, 5);

    Story again(kSeed);
    EXPECT_EQ(play(again, 3), log);
}

}  // namespace
}  // namespace veloran::test
