// A hundred random users on failing radios: whatever they do, the queue keeps its promises.
// VELORAN_SEED=<n> plays one of them again.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

#include "support/queue_world.h"
#include "support/radio_server.h"
#include "support/running_case.h"
#include "support/seeds.h"

namespace veloran::test {
namespace {

constexpr int kSeeds = 100;
constexpr int kSeconds = 3 * 3600;
constexpr unsigned kMostSeconds = 60;  // of real time
constexpr std::int64_t kBodies = 8;

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

class RandomDay {
  public:
    RandomDay(unsigned seed, Tally& tally) : random_(seed), tally_(tally) {
        world_.start();
        app().dopplerUpdateHz = 1.0;
        app().setTickAngles([this](const Satellite&, Instant) {
            ++ticks_;
            return AppState::TickAngles{{180, 45, 1000, -3}, TopocentricResult{180, 45, 1000, -2}};
        });
        for (std::int64_t id = 1; id <= kBodies; ++id) addBody(id);
        watchSessions();
    }

    void play() {
        for (int second = 0; second < kSeconds; ++second) {
            step();
            if (draw(25) == 0) act();
            if (draw(120) == 0) strike();
            checkQueue();
            if (::testing::Test::HasFailure()) return;
        }
        leaveNothing();
    }

  private:
    struct Promise {  // a session that the queue began and that nobody has meddled with
        std::string id;
        std::int64_t body;
        Instant set;
    };

    AppState& app() { return *world_.app; }
    std::size_t draw(std::size_t count) { return random_() % count; }
    Instant now() const { return world_.now(); }

    void addBody(std::int64_t id) {
        PassList passes;
        Instant rise = now() + static_cast<double>(draw(1200)) - 300;
        while (rise < now() + 2.0 * kSeconds) {
            const double length = 60 + static_cast<double>(draw(5000)) / 8;
            // A sum of eighths, and a part of its own: no two bodies rise at the same moment.
            rise = Instant{std::floor(rise.secondsSinceReference * 8) / 8} +
                   static_cast<double>(id) / 128;
            passes.push_back(passFrom(rise, length, 2 + static_cast<double>(draw(400)) / 10));
            rise = rise + length + static_cast<double>(draw(2400));
        }
        world_.add(id, fmt::format("BODY {}", id), std::move(passes));
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
            EXPECT_EQ(passQueueId(picked->satellite->id, picked->pass.riseTime), next->id);
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
    const PredictedPass* runningPass(std::int64_t id) const {
        const auto found = bodyOf(id);
        for (const auto& pass : *found->passes) {
            const bool near = pass.riseTime <= now() && now() < pass.setTime + 60;
            if (near && queued_.contains(passQueueId(id, pass.riseTime))) return &pass;
        }
        return nullptr;
    }
    /// The set of the pass that the session follows, in the list or as it was last seen there.
    std::optional<Instant> runningSet(std::int64_t id) {
        if (const auto* pass = runningPass(id)) {
            followed_ = Promise{passQueueId(id, pass->riseTime), id, pass->setTime};
        } else if (followed_ && (followed_->body != id || !queued_.contains(followed_->id))) {
            followed_.reset();
        }
        return followed_ ? std::optional(followed_->set) : std::nullopt;
    }
    /// What the rules let begin now: the earliest rise of all queued passes under way.
    std::optional<Promise> nextCandidate() {
        std::optional<Promise> next;
        Instant earliest{1e18};
        for (const auto& body : app().satellites.get()) {
            for (const auto& pass : *body->passes) {
                const auto id = passQueueId(body->id, pass.riseTime);
                if (!queued_.contains(id) || now() < pass.riseTime || now() >= pass.setTime) {
                    continue;
                }
                if (!body->isSelected || pass.maxElevation < app().minAutoTrackElevation) {
                    ++tally_.skipped;
                } else if (pass.riseTime < earliest) {
                    earliest = pass.riseTime;
                    next = Promise{id, body->id, pass.setTime};
                }
            }
        }
        return next;
    }
    /// A session that the queue began ends on the first firing at or after set, and not before.
    void checkPromise() {
        if (!promise_) return;
        if (now() < promise_->set) {
            EXPECT_EQ(session_, promise_->body) << promise_->id << " was cut short";
            return;
        }
        EXPECT_NE(session_, promise_->body) << promise_->id << " runs past its set";
        promise_.reset();
    }
    void checkQueue() {
        EXPECT_EQ(app().queuedPassIds.get(), queued_);
        EXPECT_EQ(app().isTracking, session_.has_value());
        EXPECT_EQ(radio_.misdirected(), 0u) << "a command to a radio that is not connected";
    }

    // ---- The user.

    SatellitePtr bodyOf(std::int64_t id) const { return world_.body(id); }
    SatellitePtr anyBody() { return app().satellites->at(draw(app().satellites->size())); }

    void act() {
        switch (draw(10)) {
            case 0:
                return byHand([&] { app().startTracking(anyBody(), std::nullopt); });
            case 1:
                return byHand([&] { app().stopTracking(); });
            case 2:
                app().toggleSatellite(anyBody());
                return world_.machine.loop.runPosted();
            case 3:
                app().minAutoTrackElevation = static_cast<double>(draw(20));
                return;
            case 4:
                return unqueue();
            case 5:
                return draw(8) == 0 ? clear() : settle(true);
            default:
                return queue(anyBody());
        }
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
            if (pass.setTime <= now() || draw(3) == 0) continue;
            toggle(body, pass);
            if (app().pendingPassConflict.get() && draw(4) > 0) settle(draw(2) == 0);
            return;
        }
    }
    void toggle(const SatellitePtr& body, const PredictedPass& pass) {
        const auto id = passQueueId(body->id, pass.riseTime);
        const bool asked = app().pendingPassConflict.get().has_value();
        const auto before = app().queuedPassIds.get();
        const bool overlaps = !before.contains(id) && overlapsQueued(pass);
        beginsAtOnce([&] { app().togglePassQueued(body, pass); },
                     [&] {
                         if (queued_.erase(id) > 0) {
                             breakPromise(id);
                         } else if (!overlaps) {
                             queued_.insert(id);
                         }
                     });
        EXPECT_EQ(app().pendingPassConflict.get().has_value(), asked || overlaps);
        tally_.conflicts += overlaps ? 1 : 0;
    }
    bool overlapsQueued(const PredictedPass& pass) {
        const auto all = app().allPassesSorted();
        return std::any_of(all.begin(), all.end(), [&](const auto& each) {
            const auto& other = each.second;
            return queued_.contains(passQueueId(each.first->id, other.riseTime)) &&
                   other.riseTime < pass.setTime && pass.riseTime < other.setTime;
        });
    }
    void unqueue() {
        if (queued_.empty()) return;
        const auto id =
            *std::next(queued_.begin(), static_cast<std::ptrdiff_t>(draw(queued_.size())));
        for (const auto& body : app().satellites.get()) {
            const auto passes = body->passes;
            for (const auto& pass : *passes) {
                if (passQueueId(body->id, pass.riseTime) == id) return toggle(body, pass);
            }
        }
    }
    void settle(bool replace) {
        const auto conflict = app().pendingPassConflict.get();
        if (!conflict) return;
        if (!replace) {
            app().resolveConflictKeepExisting();
        } else {
            beginsAtOnce([&] { app().resolveConflictReplace(*conflict); },
                         [&] {
                             queued_.erase(conflict->existing.id);
                             breakPromise(conflict->existing.id);
                             queued_.insert(conflict->incoming.id);
                         });
        }
        EXPECT_FALSE(app().pendingPassConflict.get());
    }
    void clear() {
        queued_.clear();
        promise_.reset();
        app().clearPassQueue();
    }
    void breakPromise(const std::string& id) {
        if (promise_ && promise_->id == id) promise_.reset();
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
        promise_.reset();
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

    QueueWorld world_;
    RadioLink radio_{world_.machine};
    std::mt19937 random_;
    Tally& tally_;
    QueueIds queued_;  // what the user has marked, by the test's own books
    std::optional<std::int64_t> session_;
    std::optional<Promise> promise_;
    std::optional<Promise> followed_;  // by the session, whoever began it
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
    EXPECT_GT(tally.started, 10 * kSeeds);
    EXPECT_GT(tally.endedAtSet, 3 * kSeeds);
    EXPECT_GT(tally.handedOver, 10);
    EXPECT_GT(tally.conflicts, 10 * kSeeds);
    EXPECT_GT(tally.byHand, 10 * kSeeds);
    EXPECT_GT(tally.outlived, 10);
    EXPECT_GT(tally.skipped, kSeeds);
    EXPECT_GT(tally.lines, 1000u * kSeeds);
}

}  // namespace
}  // namespace veloran::test
