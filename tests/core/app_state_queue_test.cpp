#include <gtest/gtest.h>

#include "support/queue_world.h"

namespace veloran::test {
namespace {

constexpr double kLength = 600;

/// Two bodies whose passes touch: B rises at the very moment at which A sets.
class Queue : public ::testing::Test {
  protected:
    Queue() {
        world.start();
        app().dopplerUpdateHz = 1.0;  // ticks on whole seconds: the simulated clock stays exact
        start = world.now();
        a = world.add(1, "A", {passFrom(riseA(), kLength)});
        b = world.add(2, "B", {passFrom(setA(), kLength)});
        other = world.add(3, "OTHER", {});
    }
    AppState& app() { return *world.app; }
    Instant riseA() const { return start + 100.25; }
    Instant setA() const { return riseA() + kLength; }
    Instant setB() const { return setA() + kLength; }

    void toggle(const SatellitePtr& body, std::size_t pass = 0) {
        const auto passes = body->passes;
        app().togglePassQueued(body, passes->at(pass));
    }
    std::string tracked() const {
        const auto& body = world.app->trackingSatellite.get();
        EXPECT_EQ(body != nullptr, world.app->isTracking.get());
        return body ? body->name : "";
    }
    std::string trackedAt(Instant when) {
        world.runUntil(when);
        return tracked();
    }
    void setPasses(const SatellitePtr& body, PassList passes) {
        body->passes = std::make_shared<const PassList>(std::move(passes));
    }
    std::size_t timers() const { return world.machine.loop.timerCount(); }

    QueueWorld world;
    Instant start;
    SatellitePtr a, b, other;
};

TEST_F(Queue, TracksFromTheFirstFiringAfterRiseToTheFirstAfterSet) {
    toggle(a);  // fires on whole seconds from here
    EXPECT_EQ(trackedAt(riseA()), "");
    EXPECT_EQ(trackedAt(start + 100.75), "");
    EXPECT_EQ(trackedAt(start + 101), "A");
    EXPECT_EQ(trackedAt(setA()), "A");
    EXPECT_EQ(trackedAt(start + 700.75), "A");
    EXPECT_EQ(trackedAt(start + 701), "");
}

TEST_F(Queue, StartsWithThePreferredChannelAndShowsThePass) {
    a->transmitters = {channel(145e6), channel(435e6)};
    world.machine.settings.set("lastTxHz_1", 435e6);
    toggle(a);
    EXPECT_FALSE(app().selectedPass.get());
    world.runUntil(riseA() + 1);
    const auto& shown = app().selectedPass.get();
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->satellite, a);
    EXPECT_EQ(shown->pass.riseTime, riseA());
    EXPECT_EQ(shown->transmitter->freq, 435e6);
    EXPECT_EQ(app().selectedTransmitter.get()->freq, 435e6);
    EXPECT_EQ(app().statusMessage.get(), "Tracking A");
}

TEST_F(Queue, PassUnderWayIsStartedAtOnceWhenItIsTheFirstQueued) {
    world.runUntil(riseA() + 10);
    toggle(a);
    EXPECT_EQ(tracked(), "A");
}

TEST_F(Queue, PassUnderWayIsStartedAtTheNextFiringWhenTheTimerRuns) {
    toggle(b);
    world.runUntil(riseA() + 10);
    toggle(a);
    EXPECT_EQ(tracked(), "");
    EXPECT_EQ(trackedAt(riseA() + 11), "A");
}

TEST_F(Queue, PassThatRisesDuringAManualSessionIsStartedAfterIt) {
    toggle(a);
    app().startTracking(other, std::nullopt);
    EXPECT_EQ(trackedAt(riseA() + 300), "OTHER");
    app().stopTracking();
    EXPECT_EQ(tracked(), "");
    EXPECT_EQ(trackedAt(riseA() + 301), "A");
}

TEST_F(Queue, ManualSessionThatOutlastsThePassIsLeftAlone) {
    toggle(a);
    app().startTracking(other, std::nullopt);
    world.runUntil(setA() + 1);
    EXPECT_EQ(tracked(), "OTHER");
    app().stopTracking();
    EXPECT_EQ(trackedAt(setA() + 10), "");
}

TEST_F(Queue, ManualSessionOnAQueuedPassIsStoppedAtSet) {
    toggle(a);
    app().startTracking(a, std::nullopt);
    EXPECT_EQ(trackedAt(setA()), "A");
    EXPECT_FALSE(app().selectedPass.get());  // nothing was started anew
    EXPECT_EQ(trackedAt(setA() + 1), "");
}

TEST_F(Queue, PassTakenFromTheQueueDuringItsSessionGoesOnPastSet) {
    toggle(a);
    toggle(b);  // keeps the timer running
    world.runUntil(riseA() + 10);
    EXPECT_EQ(tracked(), "A");
    toggle(a);
    EXPECT_EQ(trackedAt(setA() + 30), "A");
    app().stopTracking();
    EXPECT_EQ(trackedAt(setA() + 31), "B");
}

TEST_F(Queue, ClearedQueueLetsTheSessionRunOnAndStopsTheTimer) {
    toggle(a);
    world.runUntil(riseA() + 10);
    const std::size_t before = timers();
    app().clearPassQueue();
    EXPECT_TRUE(app().queuedPassIds->empty());
    EXPECT_EQ(timers(), before - 1);
    EXPECT_EQ(trackedAt(setB()), "A");
}

TEST_F(Queue, PassesThatTouchAreBothQueuedAndHandedOverInOneFiring) {
    toggle(a);
    toggle(b);
    EXPECT_FALSE(app().pendingPassConflict.get());
    EXPECT_EQ(app().queuedPassIds->size(), 2u);
    EXPECT_EQ(trackedAt(start + 700.75), "A");
    EXPECT_EQ(trackedAt(start + 701), "B");
    EXPECT_EQ(trackedAt(start + 1301), "");
}

TEST_F(Queue, MinimumElevationOfFiveLetsInFiveAndNotLess) {
    app().minAutoTrackElevation = 5.0;
    setPasses(a, {passFrom(riseA(), kLength, 4.9)});
    setPasses(b, {passFrom(setA(), kLength, 5)});
    toggle(a);
    toggle(b);
    for (double t = 0; t < kLength; t += 50) EXPECT_EQ(trackedAt(riseA() + t), "");
    EXPECT_EQ(trackedAt(setA() + 1), "B");
    EXPECT_EQ(app().queuedPassIds->size(), 2u);
}

TEST_F(Queue, LoweredMinimumElevationLetsInAPassUnderWay) {
    app().minAutoTrackElevation = 50.0;
    toggle(a);
    EXPECT_EQ(trackedAt(riseA() + 100), "");
    app().minAutoTrackElevation = 45.0;
    EXPECT_EQ(trackedAt(riseA() + 101), "A");
    app().minAutoTrackElevation = 50.0;  // the session that runs is not cut short
    EXPECT_EQ(trackedAt(setA() - 1), "A");
}

TEST_F(Queue, OverlapAsksAndChangesNothing) {
    setPasses(b, {passFrom(setA() - 1, kLength)});
    toggle(a);
    const auto ids = app().queuedPassIds.get();
    toggle(b);
    EXPECT_EQ(app().queuedPassIds.get(), ids);
    const auto& conflict = app().pendingPassConflict.get();
    ASSERT_TRUE(conflict);
    EXPECT_EQ(conflict->existing, makePassRef(1, "A", a->passes->at(0)));
    EXPECT_EQ(conflict->incoming, makePassRef(2, "B", b->passes->at(0)));
}

TEST_F(Queue, PendingConflictDoesNotHoldUpTheQueue) {
    setPasses(b, {passFrom(setA() - 1, kLength)});
    toggle(a);
    toggle(b);
    EXPECT_EQ(trackedAt(riseA() + 1), "A");
    EXPECT_EQ(trackedAt(setA() + 1), "");
    EXPECT_TRUE(app().pendingPassConflict.get());
}

TEST_F(Queue, ReplacedPassGivesItsPlaceToTheIncomingOne) {
    setPasses(b, {passFrom(setA() - 1, kLength)});
    toggle(a);
    toggle(b);
    app().resolveConflictReplace(*app().pendingPassConflict.get());
    EXPECT_FALSE(app().pendingPassConflict.get());
    EXPECT_FALSE(app().isPassQueued(*a, a->passes->at(0)));
    EXPECT_TRUE(app().isPassQueued(*b, b->passes->at(0)));
    EXPECT_EQ(trackedAt(setA() - 2), "");
    EXPECT_EQ(trackedAt(setA() + 1), "B");
}

TEST_F(Queue, ReplacementStartsTheTimerAgainIfTheQueueWasClearedMeanwhile) {
    world.runUntil(riseA() - 10);
    setPasses(b, {passFrom(riseA() - 60, kLength)});
    toggle(a);
    toggle(b);
    app().clearPassQueue();
    EXPECT_EQ(timers(), 0u);
    EXPECT_TRUE(app().pendingPassConflict.get());
    app().resolveConflictReplace(*app().pendingPassConflict.get());
    EXPECT_EQ(tracked(), "B");  // under way: at once
}

TEST_F(Queue, ReplacementWhileTheTimerRunsStartsNothingAtOnce) {
    world.runUntil(riseA() - 10);
    setPasses(b, {passFrom(riseA() - 60, kLength)});
    toggle(a);
    toggle(b);
    app().resolveConflictReplace(*app().pendingPassConflict.get());
    EXPECT_EQ(tracked(), "");
    EXPECT_EQ(trackedAt(riseA() - 9), "B");
}

TEST_F(Queue, KeptPassDropsTheIncomingOne) {
    setPasses(b, {passFrom(setA() - 1, kLength)});
    toggle(a);
    toggle(b);
    app().resolveConflictKeepExisting();
    EXPECT_FALSE(app().pendingPassConflict.get());
    EXPECT_TRUE(app().isPassQueued(*a, a->passes->at(0)));
    EXPECT_FALSE(app().isPassQueued(*b, b->passes->at(0)));
}

TEST_F(Queue, RemainingOverlapAfterAReplacementGoesToTheEarlierRise) {
    // C overlaps both; only the first is reported, so that after its removal C and B stand queued.
    const auto c = world.add(4, "C", {passFrom(setA() - 10, 20)});
    toggle(a);
    toggle(b);
    toggle(c);
    app().resolveConflictReplace(*app().pendingPassConflict.get());
    EXPECT_EQ(app().queuedPassIds->size(), 2u);
    EXPECT_EQ(trackedAt(setA() + 5), "C");
    EXPECT_EQ(trackedAt(setA() + 11), "B");
}

TEST_F(Queue, RestartEmptiesTheQueue) {
    const auto keys = world.machine.settings.keys();
    toggle(a);
    EXPECT_EQ(world.machine.settings.keys(), keys);
    world.start();
    EXPECT_TRUE(app().queuedPassIds->empty());
    EXPECT_EQ(timers(), 0u);
}

TEST_F(Queue, EntryOfAPassThatSetStaysAndKeepsTheTimer) {
    toggle(a);
    world.runUntil(setA() + 7200);
    EXPECT_TRUE(app().isPassQueued(*a, a->passes->at(0)));
    EXPECT_EQ(timers(), 1u);
    toggle(a);
    EXPECT_EQ(timers(), 0u);
}

TEST_F(Queue, TimerRunsFromTheFirstEntryToTheLast) {
    EXPECT_EQ(timers(), 0u);
    toggle(a);
    toggle(b);
    EXPECT_EQ(timers(), 1u);
    toggle(a);
    EXPECT_EQ(timers(), 1u);
    toggle(b);
    EXPECT_EQ(timers(), 0u);
    app().clearPassQueue();
    EXPECT_EQ(timers(), 0u);
}

TEST_F(Queue, PassOfADeselectedBodyIsSkippedUntilItIsSelectedAgain) {
    toggle(a);
    a->isSelected = false;
    EXPECT_EQ(trackedAt(riseA() + 100), "");
    EXPECT_EQ(app().queueEntries().at(0).state, QueueEntryState::deselected);
    a->isSelected = true;
    EXPECT_EQ(trackedAt(riseA() + 101), "A");
}

TEST_F(Queue, SessionOnABodyDeselectedMeanwhileEndsAtSet) {
    toggle(a);
    world.runUntil(riseA() + 1);
    a->isSelected = false;
    EXPECT_EQ(app().queueEntries().at(0).state, QueueEntryState::tracked);
    EXPECT_EQ(trackedAt(setA() - 1), "A");
    EXPECT_EQ(trackedAt(setA() + 1), "");
}

TEST_F(Queue, QueuedPassOfADeselectedBodyRaisesNoConflict) {
    setPasses(b, {passFrom(setA() - 1, kLength)});
    toggle(a);
    a->isSelected = false;
    toggle(b);
    EXPECT_FALSE(app().pendingPassConflict.get());
    EXPECT_EQ(app().queuedPassIds->size(), 2u);
}

TEST_F(Queue, PassThatMovesWithinItsSecondIsStillKnown) {
    toggle(a);
    setPasses(a, {passFrom(riseA() + 0.7, kLength)});
    EXPECT_EQ(trackedAt(riseA() + 1), "A");
}

TEST_F(Queue, PassThatMovesToAnotherSecondIsCutLoose) {
    toggle(a);
    setPasses(a, {passFrom(riseA() + 0.75, kLength)});
    EXPECT_EQ(trackedAt(riseA() + 100), "");
    EXPECT_EQ(app().queueEntries().at(0).state, QueueEntryState::gone);
    EXPECT_EQ(app().queuedPassIds->size(), 1u);
}

TEST_F(Queue, SessionWhosePassTheListHasLostEndsAtItsSet) {
    toggle(a);
    world.runUntil(riseA() + 100);
    setPasses(a, {passFrom(riseA() + 5000, kLength)});
    EXPECT_EQ(app().queueEntries().at(0).state, QueueEntryState::tracked);
    EXPECT_EQ(trackedAt(setA() - 1), "A");
    EXPECT_EQ(trackedAt(setA() + 1), "");
}

TEST_F(Queue, ManualSessionOnAQueuedPassThatTheListHasLostEndsAtItsSetToo) {
    toggle(a);
    world.runUntil(riseA() - 10);
    app().startTracking(a, std::nullopt);
    world.runUntil(riseA() + 1);
    setPasses(a, {});
    EXPECT_EQ(trackedAt(setA() - 1), "A");
    EXPECT_EQ(trackedAt(setA() + 1), "");
}

TEST_F(Queue, ManualSessionAfterOneOfTheQueueIsNotTheQueues) {
    toggle(a);
    world.runUntil(riseA() + 100);
    setPasses(a, {});
    app().startTracking(a, std::nullopt);
    EXPECT_EQ(trackedAt(setB()), "A");
}

TEST_F(Queue, PassTakenFromTheQueueThatTheListHasLostGoesOnPastSet) {
    toggle(a);
    toggle(b);
    world.runUntil(riseA() + 100);
    const auto passes = a->passes;
    toggle(a);
    setPasses(a, {});
    EXPECT_EQ(trackedAt(setA() + 30), "A");
}

TEST_F(Queue, SessionFollowsItsOwnBodyThroughANewCatalogue) {
    toggle(a);
    world.runUntil(riseA() + 1);
    app().satellites = std::vector<SatellitePtr>{};
    const auto again = world.add(1, "A", {passFrom(riseA(), kLength)});
    EXPECT_EQ(trackedAt(setA() - 1), "A");
    EXPECT_EQ(app().trackingSatellite.get(), a);
    EXPECT_NE(app().trackingSatellite.get(), again);
    EXPECT_EQ(trackedAt(setA() + 1), "");
}

TEST_F(Queue, ClockSetBeyondTheGraceEndsTheSession) {
    toggle(a);
    world.runUntil(riseA() + 100);
    world.machine.loop.jumpClock(kLength + 60);  // a laptop that slept through the set
    EXPECT_EQ(trackedAt(world.now() + 1), "");
}

TEST_F(Queue, SleepIntoTheNextPassHandsOver) {
    toggle(a);
    toggle(b);
    world.runUntil(riseA() + 100);
    world.machine.loop.jumpClock(kLength + 200);
    EXPECT_EQ(trackedAt(world.now() + 1), "B");
    EXPECT_EQ(trackedAt(setB() + 1), "");
}

TEST_F(Queue, ClockSetBackBeforeTheRiseLeavesTheSessionToTheQueue) {
    toggle(a);
    world.runUntil(riseA() + 5);
    world.machine.loop.jumpClock(-60);
    EXPECT_EQ(trackedAt(riseA() - 1), "A");
    EXPECT_EQ(trackedAt(setA() - 1), "A");
    EXPECT_EQ(trackedAt(setA() + 1), "");
}

TEST_F(Queue, ClockSetIntoTheGraceEndsTheSession) {
    toggle(a);
    world.runUntil(riseA() + 100);
    world.machine.loop.jumpClock(kLength - 60);
    EXPECT_EQ(trackedAt(world.now() + 1), "");
}

TEST_F(Queue, PassesOfTheShownPassCanBeToggledFromTheFieldItself) {
    world.runUntil(riseA() + 1);
    PassInfo shown;
    shown.satellite = a;
    shown.pass = a->passes->at(0);
    app().selectedPass = shown;
    app().togglePassQueued(app().selectedPass.get()->satellite, app().selectedPass.get()->pass);
    EXPECT_EQ(tracked(), "A");
    EXPECT_TRUE(app().isPassQueued(*a, a->passes->at(0)));
}

TEST_F(Queue, EachSecondThatDecidesNothingTellsNobody) {
    toggle(a);
    int told = 0;
    const auto subscription = app().objectWillChange.subscribe([&told] { ++told; });
    world.runUntil(riseA());
    EXPECT_EQ(told, 0);
}

TEST_F(Queue, RowFromAnEarlierListStandsForItsPass) {
    const auto shown = a->passes;
    setPasses(a, {passFrom(riseA() + 3, kLength)});
    app().togglePassQueued(a, shown->at(0));
    EXPECT_EQ(app().queuedPassIds.get(), QueueIds{passQueueId(1, riseA() + 3)});
    EXPECT_TRUE(app().isPassQueued(*a, shown->at(0)));
    EXPECT_TRUE(app().isPassQueued(*a, a->passes->at(0)));
    EXPECT_FALSE(app().isPassQueued(*a, passFrom(setA() + 3, kLength)));
    EXPECT_FALSE(app().isPassQueued(*b, a->passes->at(0)));
    app().togglePassQueued(a, shown->at(0));
    EXPECT_TRUE(app().queuedPassIds->empty());
}

TEST_F(Queue, EndsWithTheState) {
    toggle(a);
    world.app.reset();
    world.runUntil(riseA() + 10);
    EXPECT_EQ(timers(), 0u);
}

}  // namespace
}  // namespace veloran::test
