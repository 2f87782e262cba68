// A hundred random users on failing radios, under a sky of real orbits: whatever they do, the queue
// keeps its promises. When passes rise and set is told by a plain search of the sky.
// VELORAN_SEED=<n> plays one of them again.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <compare>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "support/core_world.h"
#include "support/radio_server.h"
#include "support/running_case.h"
#include "support/seeds.h"
#include "support/unattended.h"

namespace veloran::test {
namespace {

constexpr int kSeeds = 100;
constexpr int kSeconds = 5400;
constexpr unsigned kMostSeconds = 60;  // of real time
constexpr std::int64_t kBodies = 8;
constexpr double kAfterSearches = 0.25;  // seconds by which all else is behind the searches

constexpr double kLatitude = 69.65;  // so far north that polar orbits come by each time round
constexpr double kLongitude = 18.96;
constexpr double kAltitude = 100;

/// Proof that the seeds reach what they are meant to reach.
struct Tally {
    int started = 0;     // sessions by the queue
    int endedAtSet = 0;  // and ended by it
    int handedOver = 0;  // ended and started in one firing
    int byHand = 0;
    int conflicts = 0;
    int skipped = 0;   // firings in which a rule kept a pass from being tracked
    int outlived = 0;  // sessions that the clock carried beyond the grace of their pass
    std::size_t lines = 0;
};

/// A pass of a body in the true sky.
struct Mark {
    std::int64_t body = 0;
    std::size_t pass = 0;  ///< place in the sky of the body

    auto operator<=>(const Mark&) const = default;
};

class RandomDay {
  public:
    RandomDay(unsigned seed, Tally& tally) : random_(seed), tally_(tally) {
        const auto bodies = launch();
        world_.cacheGroup("amateur", bodies);
        world_.machine.settings.set("tleCategories", std::vector<std::string>{"amateur"});
        world_.machine.settings.set("selectedSatIds",
                                    std::vector<std::int64_t>{1, 2, 3, 4, 5, 6, 7, 8});
        world_.start();
        app().obsLatitude = kLatitude;
        app().obsLongitude = kLongitude;
        app().obsAltitude = kAltitude;
        app().dopplerUpdateHz = 1.0;
        app().setTickAngles([this](const Satellite&, Instant) {
            ++ticks_;
            return AppState::TickAngles{{180, 45, 1000, -3}, TopocentricResult{180, 45, 1000, -2}};
        });
        world_.load();
        for (std::int64_t id = 1; id <= kBodies; ++id) {
            bodyOf(id)->transmitters = {channel(145e6 + static_cast<double>(id))};
        }
        seeLists(now());
        watchSessions();
        world_.machine.loop.advance(kAfterSearches);
    }

    void play() {
        for (int second = 0; second < kSeconds; ++second) {
            step();
            if (draw(40) == 0) act();
            if (draw(120) == 0) strike();
            checkQueue();
            if (::testing::Test::HasFailure()) return;
        }
        leaveNothing();
    }

  private:
    AppState& app() { return *world_.app; }
    std::size_t draw(std::size_t count) { return random_() % count; }
    double between(double low, double high) {
        return low + (high - low) * static_cast<double>(draw(1'000'000)) / 1e6;
    }
    Instant now() const { return world_.machine.loop.now(); }

    // ---- The sky.

    /// Bodies on orbits of all heights over the poles, as a message; the true sky knows them from
    /// well before the start to well behind the end.
    std::string launch() {
        std::string bodies;
        for (std::int64_t id = 1; id <= kBodies; ++id) {
            std::string message;
            do {
                message = randomOrbit(id);
                const auto sky = trueSky("[" + message + "]", {kLatitude, kLongitude, kAltitude},
                                         now(), now() - 3600, now() + 4.0 * kSeconds);
                sky_[id] = sky.passes.begin()->second;
            } while (std::ranges::any_of(sky_[id], isDoubtful));
            std::erase_if(sky_[id], [](const TruePass& pass) { return pass.maxElevation < 2; });
            bodies += (bodies.empty() ? "[" : ",") + message;
        }
        return bodies + "]";
    }
    /// So close to the lowest peak that is listed that it may fall on either side.
    static bool isDoubtful(const TruePass& pass) { return std::abs(pass.maxElevation - 2) < 0.05; }

    std::string randomOrbit(std::int64_t id) {
        return fmt::format(
            R"({{"OBJECT_NAME":"BODY {}","OBJECT_ID":"2020-001A",)"
            R"("EPOCH":"2026-11-21T00:00:00.000000","MEAN_MOTION":{:.8f},"ECCENTRICITY":{:.7f},)"
            R"("INCLINATION":{:.4f},"RA_OF_ASC_NODE":{:.4f},"ARG_OF_PERICENTER":{:.4f},)"
            R"("MEAN_ANOMALY":{:.4f},"NORAD_CAT_ID":{},"BSTAR":0.0001}})",
            id, between(11, 15.4), between(0.0001, 0.02), between(78, 102), between(0, 359),
            between(0, 359), between(0, 359), id);
    }
    const TruePass& truth(const Mark& mark) const { return sky_.at(mark.body).at(mark.pass); }
    /// The true pass that a list tells of.
    std::optional<Mark> markOf(std::int64_t id, Instant rise, Instant set) const {
        const auto& passes = sky_.at(id);
        for (std::size_t i = 0; i < passes.size(); ++i) {
            if (passes[i].rise < set && rise < passes[i].set) return Mark{id, i};
        }
        return std::nullopt;
    }
    /// A search lists what has not set by then.
    bool isListed(const Mark& mark) const { return truth(mark).set > searched_.at(mark.body); }
    void seeLists(Instant searchedAt) {
        for (std::int64_t id = 1; id <= kBodies; ++id) {
            auto& seen = lists_[id];
            if (seen == bodyOf(id)->passes) continue;
            seen = bodyOf(id)->passes;
            searched_[id] = searchedAt;
        }
    }

    // ---- Each session is heard of as it begins and ends.

    void watchSessions() {
        app().isTracking.alsoAfterChange([this](bool runs) {
            const auto& body = app().trackingSatellite.get();
            if (runs) {
                EXPECT_FALSE(session_) << "two sessions at once";
                session_ = body->id;
                ++begun_;
            } else if (session_) {
                session_.reset();
                ++ended_;
            }
        });
    }

    // ---- One firing of the queue's timer, and what it must have done.

    void step() {
        const auto before = session_;
        const int begun = begun_;
        const int ended = ended_;
        const int ticks = ticks_;
        const auto shown = app().selectedPass.get();
        world_.machine.loop.advance(1);
        seeLists(now() - kAfterSearches);
        EXPECT_LE(ticks_ - ticks, 1) << "two tracking timers";

        const bool fires = !queued_.empty();
        const auto set = fires && before ? runningSet(*before) : std::nullopt;
        const bool stops = set && now() >= *set;
        if (stops) followed_.reset();
        EXPECT_EQ(ended_ - ended, stops ? 1 : 0) << "session on body " << before.value_or(0);
        if (!stops) {
            EXPECT_EQ(ticks_ - ticks, before ? 1 : 0) << "timer lost or left over";
        }
        const auto next = fires && (!before || stops) ? nextCandidate() : std::nullopt;
        EXPECT_EQ(begun_ - begun, next ? 1 : 0);
        if (next) {
            EXPECT_EQ(session_, next->body);
            const auto& picked = app().selectedPass.get();
            ASSERT_TRUE(picked);
            EXPECT_EQ(markOf(picked->satellite->id, picked->pass.riseTime, picked->pass.setTime),
                      next);
            EXPECT_NEAR(picked->pass.riseTime - truth(*next).rise, 0, 0.001);
            EXPECT_TRUE(!shown || shown->id != picked->id);
        }
        checkPromise();
        if (next) promise_ = followed_ = next;
        tally_.started += next ? 1 : 0;
        tally_.endedAtSet += stops ? 1 : 0;
        tally_.handedOver += next && stops ? 1 : 0;
        radio_.serve();
    }

    /// The queued pass of the body around this moment, or up to a minute behind it.
    std::optional<Mark> runningPass(std::int64_t id) const {
        for (const auto& mark : queued_) {
            const auto& pass = truth(mark);
            const bool near = pass.rise <= now() && now() < pass.set + 60;
            if (mark.body == id && near && isListed(mark)) return mark;
        }
        return std::nullopt;
    }
    /// The set of the pass that the session follows, listed or not any more.
    std::optional<Instant> runningSet(std::int64_t id) {
        if (const auto mark = runningPass(id)) {
            followed_ = mark;
        } else if (followed_ && (followed_->body != id || !queued_.contains(*followed_))) {
            followed_.reset();
        }
        return followed_ ? std::optional(truth(*followed_).set) : std::nullopt;
    }
    /// What the rules let begin now: the earliest rise of all queued passes under way.
    std::optional<Mark> nextCandidate() {
        std::optional<Mark> next;
        for (const auto& mark : queued_) {
            const auto& pass = truth(mark);
            if (now() < pass.rise || now() >= pass.set || !isListed(mark)) continue;
            if (!bodyOf(mark.body)->isSelected || pass.maxElevation < app().minAutoTrackElevation) {
                ++tally_.skipped;
            } else if (!next || pass.rise < truth(*next).rise) {
                next = mark;
            }
        }
        return next;
    }
    /// A session that the queue began ends on the first firing at or after set, and not before,
    /// whatever the clock was set to meanwhile.
    void checkPromise() {
        if (!promise_) return;
        if (now() < truth(*promise_).set) {
            EXPECT_EQ(session_, promise_->body) << "cut short";
            return;
        }
        EXPECT_NE(session_, promise_->body) << "runs past its set";
        promise_.reset();
    }
    void checkQueue() {
        EXPECT_EQ(app().queuedPassIds->size(), queued_.size());
        for (const auto& mark : queued_) {
            const auto* listed = listedPass(mark);
            EXPECT_EQ(listed != nullptr, isListed(mark));
            EXPECT_TRUE(!listed || app().isPassQueued(*bodyOf(mark.body), *listed));
        }
        EXPECT_EQ(app().isTracking, session_.has_value());
        EXPECT_EQ(radio_.misdirected(), 0u) << "a command to a radio that is not connected";
    }

    // ---- The user.

    SatellitePtr bodyOf(std::int64_t id) const { return world_.body(id); }
    SatellitePtr anyBody() { return bodyOf(1 + static_cast<std::int64_t>(draw(kBodies))); }
    const PredictedPass* listedPass(const Mark& mark) const {
        for (const auto& pass : *lists_.at(mark.body)) {
            if (markOf(mark.body, pass.riseTime, pass.setTime) == mark) return &pass;
        }
        return nullptr;
    }

    void act() {
        switch (draw(20)) {
            case 0:
                return byHand([&] { app().startTracking(anyBody(), std::nullopt); });
            case 1:
                return byHand([&] { app().stopTracking(); });
            case 2:
                return select();
            case 3:
                app().minAutoTrackElevation = static_cast<double>(draw(12));
                return;
            case 4:
                return unqueue();
            case 5:
                return draw(8) == 0 ? clear() : settle(true);
            default:
                // What one began by hand is ended by hand, before long.
                if (session_ && !followed_) return byHand([&] { app().stopTracking(); });
                return queue(anyBody());
        }
    }
    void select() {
        app().toggleSatellite(anyBody());
        world_.machine.loop.runPosted();
        seeLists(now());
    }
    template <class Act>
    void byHand(Act action) {
        promise_.reset();
        followed_.reset();
        ++tally_.byHand;
        action();
    }
    void queue(const SatellitePtr& body) {
        const auto passes = body->passes;
        for (const auto& pass : *passes) {
            const auto mark = markOf(body->id, pass.riseTime, pass.setTime);
            // Of what was up at the start no search saw the rise.
            const bool isWhole = mark && truth(*mark).rise > start_;
            if (!isWhole || pass.setTime <= now() || draw(3) == 0) continue;
            if (queued_.contains(*mark) && draw(8) > 0) continue;
            toggle(body, pass, *mark);
            if (app().pendingPassConflict.get() && draw(4) > 0) settle(draw(2) == 0);
            return;
        }
    }
    void toggle(const SatellitePtr& body, const PredictedPass& pass, const Mark& mark) {
        const bool asked = app().pendingPassConflict.get().has_value();
        const bool overlaps = !queued_.contains(mark) && overlapsQueued(truth(mark));
        beginsAtOnce([&] { app().togglePassQueued(body, pass); },
                     [&] {
                         if (queued_.erase(mark) > 0) {
                             breakPromise(mark);
                         } else if (!overlaps) {
                             queued_.insert(mark);
                         }
                     });
        EXPECT_EQ(app().pendingPassConflict.get().has_value(), asked || overlaps);
        tally_.conflicts += overlaps ? 1 : 0;
    }
    bool overlapsQueued(const TruePass& pass) const {
        return std::ranges::any_of(queued_, [&](const Mark& mark) {
            return bodyOf(mark.body)->isSelected && isListed(mark) && truth(mark).overlaps(pass);
        });
    }
    void unqueue() {
        if (queued_.empty()) return;
        const auto mark =
            *std::next(queued_.begin(), static_cast<std::ptrdiff_t>(draw(queued_.size())));
        if (const auto* listed = listedPass(mark)) {
            const PredictedPass pass = *listed;
            toggle(bodyOf(mark.body), pass, mark);
        }
    }
    void settle(bool replace) {
        const auto conflict = app().pendingPassConflict.get();
        if (!conflict) return;
        if (!replace) {
            app().resolveConflictKeepExisting();
        } else {
            const auto markOfRef = [this](const QueuedPassRef& ref) {
                return markOf(ref.noradId, ref.riseTime, ref.setTime).value();
            };
            const auto existing = markOfRef(conflict->existing);
            const auto incoming = markOfRef(conflict->incoming);
            beginsAtOnce([&] { app().resolveConflictReplace(*conflict); },
                         [&] {
                             queued_.erase(existing);
                             breakPromise(existing);
                             queued_.insert(incoming);
                         });
        }
        EXPECT_FALSE(app().pendingPassConflict.get());
    }
    void clear() {
        queued_.clear();
        promise_.reset();
        app().clearPassQueue();
    }
    void breakPromise(const Mark& mark) {
        if (promise_ == mark) promise_.reset();
    }
    /// The first entry of an empty queue is looked at without waiting for the timer.
    template <class Act, class Model>
    void beginsAtOnce(Act action, Model model) {
        const bool idle = queued_.empty();
        const int begun = begun_;
        const int ended = ended_;
        const auto before = session_;
        model();
        action();
        const auto set = idle && !queued_.empty() && before ? runningSet(*before) : std::nullopt;
        const bool stops = set && now() >= *set;
        if (stops) followed_.reset();
        const bool looks = idle && !queued_.empty() && (!before || stops);
        const auto next = looks ? nextCandidate() : std::nullopt;
        EXPECT_EQ(ended_ - ended, stops ? 1 : 0);
        EXPECT_EQ(begun_ - begun, next ? 1 : 0);
        if (next) promise_ = followed_ = next;
        tally_.started += next ? 1 : 0;
    }

    // ---- Faults.

    void strike() {
        switch (draw(7)) {
            case 0:
                radio_.reachable = !radio_.reachable;  // refuses from the next attempt on
                return;
            case 1:
                return radio_.fail();
            case 2:
                return radio_.close();
            case 3:
                return radio_.steal();
            case 4:
                radio_.silent = !radio_.silent;
                return;
            case 5:
                radio_.server.satProto = !radio_.server.satProto;
                return;
            default:
                return jump();
        }
    }
    /// A laptop that slept, or a clock that was set.
    void jump() {
        constexpr std::array kJumps{0.5, -0.5, 30.0, -30.0, 400.0, -90.0};
        const bool followed = session_ && runningPass(*session_);
        world_.machine.loop.jumpClock(kJumps.at(draw(kJumps.size())));
        if (followed && !runningPass(*session_)) ++tally_.outlived;
    }

    // ---- The end of the day.

    void leaveNothing() {
        tally_.lines += radio_.server.heard.size();
        std::vector<std::weak_ptr<Satellite>> bodies(app().satellites->begin(),
                                                     app().satellites->end());
        const std::weak_ptr<AppState> state = world_.app;
        world_.app.reset();
        EXPECT_TRUE(state.expired());
        world_.machine.loop.advance(5);  // a probe's time-out is not cancelled, and ends by itself
        EXPECT_EQ(world_.machine.loop.timerCount(), 0u);
        for (const auto& body : bodies) EXPECT_TRUE(body.expired());
    }

    CoreWorld world_;
    RadioLink radio_{world_.machine};
    std::mt19937 random_;
    Tally& tally_;
    const Instant start_ = world_.machine.loop.now();
    std::map<std::int64_t, std::vector<TruePass>> sky_;
    std::map<std::int64_t, std::shared_ptr<const PassList>> lists_;  // as seen last
    std::map<std::int64_t, Instant> searched_;                       // when they were searched
    std::set<Mark> queued_;  // what the user has marked, by the test's own books
    std::optional<std::int64_t> session_;
    std::optional<Mark> promise_;   // a session that the queue began and nobody has meddled with
    std::optional<Mark> followed_;  // by the session, whoever began it
    int begun_ = 0;
    int ended_ = 0;
    int ticks_ = 0;
};

TEST(QueueSeeds, KeepTheQueuesPromises) {
    Tally tally;
    const auto given = givenSeed();
    const unsigned first = given.value_or(1);
    const unsigned last = given.value_or(kSeeds);
    for (unsigned seed = first; seed <= last && !HasFailure(); ++seed) {
        const RunningCase running(fmt::format("VELORAN_SEED={}", seed), kMostSeconds);
        RandomDay(seed, tally).play();
    }
    fmt::print(
        "{} sessions by the queue, {} ended at set, {} handed over, {} conflicts, "
        "{} outlived, {} skipped, {} lines\n",
        tally.started, tally.endedAtSet, tally.handedOver, tally.conflicts, tally.outlived,
        tally.skipped, tally.lines);
    if (given) return;
    EXPECT_GT(tally.started, 5 * kSeeds);
    EXPECT_GT(tally.endedAtSet, kSeeds);
    EXPECT_GT(tally.handedOver, 5);
    EXPECT_GT(tally.conflicts, 10 * kSeeds);
    EXPECT_GT(tally.byHand, 3 * kSeeds);
    EXPECT_GT(tally.outlived, 5);
    EXPECT_GT(tally.skipped, kSeeds);
    EXPECT_GT(tally.lines, 500u * kSeeds);
}

}  // namespace
}  // namespace veloran::test
