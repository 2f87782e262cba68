// Passes computed anew amid a pass, and catalogues loaded anew under a queue.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "support/core_world.h"

namespace veloran::test {
namespace {

constexpr std::int64_t kBody = 44909;
constexpr double kAnomaly = 30.0;

/// The last moment up, stepping through the second half of the pass: plain look angles, no search.
Instant plainSet(const Satellite& body, const AppState& app, Instant peak) {
    Instant t = peak;
    const auto isUp = [&](Instant at) {
        const auto look = body.observe(at, app.obsLatitude, app.obsLongitude, app.obsAltitude);
        return look && look->elevation > 0;
    };
    for (const double step : {10.0, 1.0, 0.1, 0.01, 0.001}) {
        while (isUp(t + step)) t = t + step;
    }
    return t;
}

class Renewed : public ::testing::Test {
  protected:
    Renewed() {
        world.machine.settings.set("tleCategories", std::vector<std::string>{"amateur"});
        world.machine.settings.set("selectedSatIds", std::vector<std::int64_t>{kBody});
        elements(kAnomaly);
        world.start();
        app().minAutoTrackElevation = 0.5;
        app().dopplerUpdateHz = 1.0;
        world.load();
        pass = *std::ranges::find_if(*body()->passes, [this](const auto& each) {
            return each.riseTime > now() && each.maxElevation > 20;
        });
    }
    AppState& app() { return *world.app; }
    SatellitePtr body() const { return world.body(kBody); }
    Instant now() const { return world.machine.loop.now(); }
    void runUntil(Instant when) { world.machine.loop.advance(when - now()); }
    /// What the next load finds. A degree more is 15 seconds earlier.
    void elements(double anomaly) {
        world.cacheGroup("amateur", "[" + ommRecord("RS-44", kBody, anomaly) + "," +
                                        ommRecord("SO-50", 27607, 100) + "]");
    }
    void reload(double anomaly) {
        elements(anomaly);
        world.load();
    }
    void compute() {
        app().computeAllPasses();
        world.machine.loop.runPosted();
    }
    void queuePass() {
        app().togglePassQueued(body(), pass);
        ASSERT_EQ(app().queuedPassIds->size(), 1u);
    }
    const PredictedPass& passNear(Instant peak) const {
        return *std::ranges::min_element(*body()->passes, {}, [peak](const auto& each) {
            return std::abs(each.peakTime - peak);
        });
    }
    /// The first whole second after the set: the queue's timer fires on whole seconds.
    void expectSessionEndsAt(Instant set) {
        runUntil(set - 1.5);
        EXPECT_TRUE(app().isTracking);
        runUntil(set + 1);
        EXPECT_FALSE(app().isTracking);
    }

    CoreWorld world;
    PredictedPass pass;
};

TEST_F(Renewed, PassUnderWayStaysWholeThroughComputations) {
    for (const double into : {1.0, 100.0, 301.0}) {
        runUntil(pass.riseTime + into);
        compute();
        const auto& entry = body()->passes->front();
        EXPECT_EQ(entry.riseTime, pass.riseTime);
        EXPECT_EQ(entry.riseAzimuth, pass.riseAzimuth);
        EXPECT_EQ(entry.peakTime, pass.peakTime);
        EXPECT_EQ(entry.setTime, pass.setTime);
        EXPECT_EQ(entry.trackPoints.size(), pass.trackPoints.size());
    }
}

TEST_F(Renewed, QueuedPassIsTrackedToItsTrueSetThroughComputations) {
    queuePass();
    runUntil(pass.riseTime + 2);
    ASSERT_TRUE(app().isTracking);
    for (const double into : {50.0, 200.0}) {
        runUntil(pass.riseTime + into);
        compute();
        EXPECT_TRUE(app().isPassQueued(*body(), body()->passes->front()));
    }
    expectSessionEndsAt(plainSet(*body(), app(), pass.peakTime));
}

TEST_F(Renewed, ComputationBetweenSetAndTheNextFiringLeavesTheSessionToTheQueue) {
    world.machine.loop.advance(0.4);
    queuePass();
    runUntil(pass.setTime + 0.0005);
    ASSERT_TRUE(app().isTracking);
    compute();
    EXPECT_GT(body()->passes->front().riseTime, now()) << "the list has forgotten the pass";
    world.machine.loop.advance(1);
    EXPECT_FALSE(app().isTracking);
}

TEST_F(Renewed, ReloadOfTheSameElementsAmidAPassChangesNothing) {
    queuePass();
    runUntil(pass.riseTime + 100);
    reload(kAnomaly);
    EXPECT_EQ(body()->passes->front().riseTime, pass.riseTime);
    EXPECT_EQ(body()->passes->front().setTime, pass.setTime);
    EXPECT_TRUE(app().isPassQueued(*body(), body()->passes->front()));
    expectSessionEndsAt(plainSet(*body(), app(), pass.peakTime));
}

TEST_F(Renewed, ReloadWithNewerElementsCarriesAnEntryOver) {
    queuePass();
    const auto before = app().queuedPassIds.get();
    std::size_t told = 0;
    app().queuedPassIds.alsoAfterChange([&told](const auto&) { ++told; });
    reload(kAnomaly + 0.5);
    const PredictedPass moved = passNear(pass.peakTime);
    ASSERT_NE(passQueueId(kBody, moved.riseTime), *before.begin());
    EXPECT_EQ(app().queuedPassIds.get(), QueueIds{passQueueId(kBody, moved.riseTime)});
    EXPECT_EQ(told, 1u);
    compute();
    EXPECT_EQ(told, 1u) << "once, when the list is stored";

    runUntil(moved.riseTime - 0.1);
    EXPECT_FALSE(app().isTracking);
    runUntil(moved.riseTime + 1);
    EXPECT_TRUE(app().isTracking);
    expectSessionEndsAt(plainSet(*body(), app(), moved.peakTime));
}

TEST_F(Renewed, EntriesAreCarriedOverAReloadWhoseSearchWasOvertaken) {
    queuePass();
    bool holds = true;
    app().satellites.alsoAfterChange(
        [&](const auto&) { world.machine.workers.held = std::exchange(holds, false); });
    reload(kAnomaly + 1);
    ASSERT_TRUE(body()->passes->empty());
    world.machine.workers.held = false;
    reload(kAnomaly + 2);
    EXPECT_EQ(app().queuedPassIds.get(),
              QueueIds{passQueueId(kBody, passNear(pass.peakTime).riseTime)});
}

TEST_F(Renewed, EntriesAreCarriedOverFromReloadToReload) {
    queuePass();
    for (int i = 1; i <= 20; ++i) reload(kAnomaly + i);  // 15 seconds each, five minutes in all
    const auto id = *app().queuedPassIds->begin();
    EXPECT_TRUE(std::ranges::any_of(*body()->passes, [&id](const auto& each) {
        return passQueueId(kBody, each.riseTime) == id;
    }));
}

TEST_F(Renewed, SessionEndsAtTheSetThatNewerElementsPredict) {
    queuePass();
    runUntil(pass.riseTime + 100);
    ASSERT_TRUE(app().isTracking);
    reload(kAnomaly - 1);  // about 15 seconds later
    const Instant set = plainSet(*body(), app(), pass.peakTime);
    ASSERT_GT(set - pass.setTime, 5);
    EXPECT_EQ(body()->passes->front().riseTime, pass.riseTime);
    EXPECT_NEAR(body()->passes->front().setTime - set, 0, 0.01);
    runUntil(pass.setTime + 3);
    EXPECT_TRUE(app().isTracking);
    expectSessionEndsAt(set);
}

TEST_F(Renewed, SessionGoesOnBetweenAReloadAndItsPasses) {
    queuePass();
    runUntil(pass.riseTime + 100);
    // The search of the new bodies never comes to its end.
    app().satellites.alsoAfterChange([this](const auto&) { world.machine.workers.held = true; });
    reload(kAnomaly);
    ASSERT_TRUE(body()->passes->empty());
    expectSessionEndsAt(pass.setTime);
}

TEST_F(Renewed, PassForAnotherPlaceIsTheOneFoundThere) {
    queuePass();
    runUntil(pass.riseTime + 100);
    app().obsLatitude = app().obsLatitude + 0.5;
    compute();
    const auto& entry = body()->passes->front();
    EXPECT_GT(entry.riseTime, pass.riseTime + 80) << "as searched from here on";
    EXPECT_TRUE(app().isPassQueued(*body(), entry));
    expectSessionEndsAt(plainSet(*body(), app(), pass.peakTime));
}

TEST_F(Renewed, SessionEndsThoughItsPassForAnotherPlaceIsFoundAfterTheSet) {
    queuePass();
    runUntil(pass.riseTime + 100);
    Instant set = pass.setTime;
    while (pass.setTime - set < kQueueGraceSeconds + 20) {
        app().obsLatitude = app().obsLatitude - 0.5;
        set = plainSet(*body(), app(), now());
        ASSERT_GT(set - now(), 60) << "it is up there too";
    }
    world.machine.workers.held = true;
    app().computeAllPasses();
    const auto search = world.machine.workers.takeHeld();
    ASSERT_EQ(search.size(), 1u);
    runUntil(pass.setTime - 10);
    ASSERT_TRUE(app().isTracking);
    search.front()();  // the machine was busy
    world.machine.loop.runPosted();
    ASSERT_NEAR(body()->passes->front().setTime - set, 0, 0.01);
    runUntil(pass.setTime - 5);
    EXPECT_FALSE(app().isTracking);
}

TEST_F(Renewed, EntryThatFindsNoPassIsKeptAndSaysSo) {
    queuePass();
    const auto ids = app().queuedPassIds.get();
    reload(kAnomaly + 180);
    EXPECT_EQ(app().queuedPassIds.get(), ids);
    EXPECT_EQ(app().queueEntries().at(0).state, QueueEntryState::gone);
}

TEST_F(Renewed, OpenQuestionGoesAlong) {
    app().toggleSatellite(world.body(27607));
    world.machine.loop.runPosted();
    PassConflict asked{makePassRef(kBody, "RS-44", pass),
                       makePassRef(27607, "SO-50", world.body(27607)->passes->front())};
    queuePass();
    app().pendingPassConflict = asked;
    reload(kAnomaly + 0.5);
    const auto& conflict = app().pendingPassConflict.get();
    ASSERT_TRUE(conflict);
    EXPECT_EQ(conflict->existing.id, *app().queuedPassIds->begin());
    EXPECT_NE(conflict->existing.id, asked.existing.id);
    EXPECT_EQ(conflict->incoming, asked.incoming);
    app().resolveConflictReplace(*conflict);
    EXPECT_EQ(app().queuedPassIds.get(), QueueIds{asked.incoming.id});
}

TEST_F(Renewed, OpenQuestionAboutAPassThatMovesGoesAlong) {
    app().toggleSatellite(world.body(27607));
    world.machine.loop.runPosted();
    const auto& other = world.body(27607)->passes->front();
    app().togglePassQueued(world.body(27607), other);
    const PassConflict asked{makePassRef(27607, "SO-50", other), makePassRef(kBody, "RS-44", pass)};
    app().pendingPassConflict = asked;
    reload(kAnomaly + 0.5);
    const auto& conflict = app().pendingPassConflict.get();
    ASSERT_TRUE(conflict);
    EXPECT_EQ(conflict->existing, asked.existing);
    EXPECT_NE(conflict->incoming.id, asked.incoming.id);
    EXPECT_EQ(conflict->incoming.id, passQueueId(kBody, conflict->incoming.riseTime));
    EXPECT_NEAR(conflict->incoming.riseTime - asked.incoming.riseTime, 0, 60);
    app().resolveConflictReplace(*conflict);
    EXPECT_EQ(app().queueEntries().at(0).state, QueueEntryState::waiting);
}

TEST_F(Renewed, LateListOfAnEarlierCatalogueMovesNoEntry) {
    queuePass();
    world.machine.workers.held = true;
    app().computeAllPasses();  // over the bodies of now
    const auto earlier = body();
    elements(kAnomaly + 0.5);
    world.machine.workers.held = false;
    world.load();  // runs, with its search; the first one still waits
    const auto ids = app().queuedPassIds.get();
    ASSERT_NE(ids, QueueIds{passQueueId(kBody, pass.riseTime)});
    world.machine.workers.release();
    world.machine.loop.runPosted();
    EXPECT_GT(earlier->passRun, 1u);
    EXPECT_EQ(app().queuedPassIds.get(), ids);
}

TEST_F(Renewed, LateListForAnEarlierPlaceAndCatalogueMovesNoEntry) {
    queuePass();
    const double home = app().obsLatitude;
    app().obsLatitude = home + 0.5;
    world.machine.workers.held = true;
    app().computeAllPasses();
    const auto search = world.machine.workers.takeHeld();
    const auto earlier = body();
    world.machine.workers.held = false;
    app().obsLatitude = home;
    reload(kAnomaly);
    const auto ids = app().queuedPassIds.get();
    ASSERT_EQ(ids, QueueIds{passQueueId(kBody, pass.riseTime)});
    search.front()();
    world.machine.loop.runPosted();
    const auto& late = *std::ranges::min_element(*earlier->passes, {}, [this](const auto& each) {
        return std::abs(each.peakTime - pass.peakTime);
    });
    ASSERT_NE(passQueueId(kBody, late.riseTime), *ids.begin());
    EXPECT_EQ(app().queuedPassIds.get(), ids);
}

}  // namespace
}  // namespace veloran::test
