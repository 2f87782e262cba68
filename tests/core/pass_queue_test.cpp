#include "core/pass_queue.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/queue_world.h"

namespace veloran::test {
namespace {

constexpr Instant kRise{817000000.5};
constexpr double kLength = 600;
constexpr Instant kSet = kRise + kLength;

QueueBody body(std::int64_t id, PassList passes) {
    return {id, "BODY " + std::to_string(id), std::make_shared<const PassList>(std::move(passes))};
}

QueueIds idsOf(const std::vector<QueueBody>& bodies) {
    QueueIds ids;
    for (const auto& each : bodies) {
        for (const auto& pass : *each.passes) ids.insert(passQueueId(each.noradId, pass.riseTime));
    }
    return ids;
}

TEST(PassQueueId, HoldsTheRiseTruncatedToTheSecond) {
    EXPECT_EQ(passQueueId(44909, Instant{817000000.999}), "44909-817000000");
    EXPECT_EQ(passQueueId(44909, Instant{817000001.0}), "44909-817000001");
    EXPECT_EQ(passQueueId(44909, Instant{-1.999}), "44909--1");
    EXPECT_EQ(passQueueId(44909, Instant{-0.5}), "44909-0");
}

TEST(PassQueueId, OfTheSunHasAMinusOfItsOwn) {
    EXPECT_EQ(passQueueId(-1, Instant{817000000.0}), "-1-817000000");
}

TEST(PassQueueId, TellsItsNumber) {
    EXPECT_EQ(passQueueNumber("44909-817000000"), 44909);
    EXPECT_EQ(passQueueNumber("44909--1"), 44909);
    EXPECT_EQ(passQueueNumber("-1-817000000"), -1);
    EXPECT_EQ(passQueueNumber("x-817000000"), std::nullopt);
    EXPECT_EQ(passQueueNumber(""), std::nullopt);
    EXPECT_EQ(passQueueNumbers({"44909-1", "44909-2", "-1-3", "x-4"}),
              (std::set<std::int64_t>{-1, 44909}));
}

TEST(QueuedPassRefs, AreEqualOnlyInEveryField) {
    const QueuedPassRef ref{"1-2", "NAME", 1, Instant{2}, Instant{3}, 45};
    EXPECT_EQ(ref, QueuedPassRef(ref));
    auto other = ref;
    EXPECT_NE((other.id = "1-3", other), ref);
    other = ref;
    EXPECT_NE((other.satName = "OTHER", other), ref);
    other = ref;
    EXPECT_NE((other.noradId = 2, other), ref);
    other = ref;
    EXPECT_NE((other.riseTime = Instant{2.5}, other), ref);
    other = ref;
    EXPECT_NE((other.setTime = Instant{3.5}, other), ref);
    other = ref;
    EXPECT_NE((other.maxElevation = 46, other), ref);
}

TEST(PassesOverlap, OnlyIfEachRisesStrictlyBeforeTheOtherSets) {
    const auto pass = passFrom(kRise, kLength);
    EXPECT_TRUE(passesOverlap(pass, pass));
    EXPECT_TRUE(passesOverlap(pass, passFrom(kSet - 0.001, 10)));
    EXPECT_TRUE(passesOverlap(passFrom(kRise + 100, 10), pass));
    EXPECT_FALSE(passesOverlap(pass, passFrom(kSet, 10)));
    EXPECT_FALSE(passesOverlap(passFrom(kSet, 10), pass));
}

TEST(FindConflict, ReportsTheFirstInTheOrderOfTheCatalogue) {
    const std::vector bodies{
        body(2, {passFrom(kRise - 5000, kLength), passFrom(kRise + 300, kLength)}),
        body(1, {passFrom(kRise - 300, kLength)})};
    const auto found = findConflict(bodies, idsOf(bodies), passFrom(kRise, kLength));
    ASSERT_TRUE(found);
    EXPECT_EQ(*found, makePassRef(2, "BODY 2", bodies[0].passes->at(1)));
}

TEST(FindConflict, SeesOnlyWhatIsQueuedAndSelected) {
    const std::vector bodies{body(1, {passFrom(kRise, kLength)})};
    const auto incoming = passFrom(kRise + 60, kLength);
    EXPECT_TRUE(findConflict(bodies, idsOf(bodies), incoming));
    EXPECT_FALSE(findConflict(bodies, {"1-1", "2-817000000"}, incoming));
    EXPECT_FALSE(findConflict({}, idsOf(bodies), incoming));
}

TEST(PassQueueId, TellsItsRise) {
    EXPECT_EQ(passQueueRise("44909-817000000"), Instant{817000000});
    EXPECT_EQ(passQueueRise("44909--1"), Instant{-1});
    EXPECT_EQ(passQueueRise("-1-817000000"), Instant{817000000});
    EXPECT_EQ(passQueueRise("-1"), std::nullopt);
    EXPECT_EQ(passQueueRise("1-x"), std::nullopt);
    EXPECT_EQ(passQueueRise(""), std::nullopt);
}

class FoundAgain : public ::testing::Test {
  protected:
    /// The new identifier of the one entry, and whether there is one.
    std::optional<std::string> again(const PredictedPass& former, const PassList& present) const {
        const auto id = passQueueId(1, former.riseTime);
        const auto found = foundAgain({"10-817000000", "11-5", id, "2-817000000", "x"},
                                      body(1, present), {passFrom(kRise - 9000, 60), former});
        if (found.empty()) return std::nullopt;
        EXPECT_EQ(found.size(), 1u);
        EXPECT_EQ(found[0].id, id);
        EXPECT_EQ(found[0].present.noradId, 1);
        EXPECT_EQ(found[0].present.satName, "BODY 1");
        return found[0].present.id;
    }
    const PredictedPass pass = passFrom(kRise, kLength);
};

TEST_F(FoundAgain, IsAPassThatOverlapsByMoreThanHalfOfTheShorter) {
    EXPECT_EQ(again(pass, {passFrom(kRise + 299, kLength)}), "1-817000299");
    EXPECT_EQ(again(pass, {passFrom(kRise - 299, kLength)}), "1-816999701");
    EXPECT_EQ(again(pass, {passFrom(kRise + 300, kLength)}), std::nullopt);
    EXPECT_EQ(again(pass, {passFrom(kSet - 51, 100)}), "1-817000549");
    EXPECT_EQ(again(pass, {passFrom(kSet - 50, 100)}), std::nullopt);
    EXPECT_EQ(again(passFrom(kRise, 20), {passFrom(kRise + 9, kLength)}), "1-817000009");
}

TEST_F(FoundAgain, IsTheOneWithMostInCommon) {
    EXPECT_EQ(again(pass, {passFrom(kRise - 20, 60), passFrom(kRise + 100, 400)}), "1-817000100");
}

TEST_F(FoundAgain, MayKeepItsIdentifier) {
    EXPECT_EQ(again(pass, {passFrom(kRise + 0.25, kLength)}), "1-817000000");
}

TEST_F(FoundAgain, NeedsThePassInTheFormerList) {
    EXPECT_TRUE(foundAgain({"1-817000000"}, body(1, {pass}), {}).empty());
    EXPECT_TRUE(foundAgain({"1-817000000"}, body(1, {}), {pass}).empty());
}

TEST_F(FoundAgain, KnowsTheSunByItsNumber) {
    const auto found =
        foundAgain({"-1-817000000"}, body(-1, {passFrom(kRise + 2, kLength)}), {pass});
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].present.id, "-1-817000002");
}

class DecideQueue : public ::testing::Test {
  protected:
    QueueDecision decide(Instant now) const { return decideQueue(view(), now); }
    QueueView view() const { return {selected, tracked, queued, minimum}; }

    std::vector<QueueBody> selected{body(7, {passFrom(kRise, kLength)})};
    std::optional<QueueBody> tracked;
    QueueIds queued = idsOf(selected);
    double minimum = 5;
};

TEST_F(DecideQueue, StartsFromTheVeryRiseToJustBeforeSet) {
    EXPECT_FALSE(decide(kRise - 0.001).start);
    EXPECT_TRUE(decide(kRise).start);
    EXPECT_TRUE(decide(kSet - 0.001).start);
    EXPECT_FALSE(decide(kSet).start);
}

TEST_F(DecideQueue, StopsAtSetAndOnlyWithinTheGrace) {
    tracked = selected[0];
    EXPECT_FALSE(decide(kSet - 0.001).stop);
    EXPECT_TRUE(decide(kSet).stop);
    EXPECT_TRUE(decide(kSet + kQueueGraceSeconds - 0.001).stop);
    EXPECT_FALSE(decide(kSet + kQueueGraceSeconds).stop);
}

TEST_F(DecideQueue, NeitherStopsNorStartsDuringASessionOnNoQueuedPass) {
    tracked = body(8, {passFrom(kRise, kLength)});
    for (const Instant now : {kRise, kRise + 300, kSet, kSet + 30}) {
        EXPECT_FALSE(decide(now).stop);
        EXPECT_FALSE(decide(now).start);
    }
}

TEST_F(DecideQueue, TellsWhichPassTheSessionFollows) {
    EXPECT_EQ(decide(kRise - 1).followed, std::nullopt);
    EXPECT_EQ(decide(kRise).followed, makePassRef(7, "BODY 7", selected[0].passes->at(0)));
    tracked = selected[0];
    EXPECT_EQ(decide(kRise + 1).followed, makePassRef(7, "BODY 7", selected[0].passes->at(0)));
    EXPECT_EQ(decide(kSet).followed, std::nullopt);
}

TEST_F(DecideQueue, GoesByThePassOfTheLastFiringWhereTheListHasLostIt) {
    const auto followed = makePassRef(7, "BODY 7", selected[0].passes->at(0));
    tracked = body(7, {passFrom(kSet + 5000, kLength)});
    const auto decideBy = [&](Instant now) {
        QueueView seen = view();
        seen.followed = followed;
        return decideQueue(seen, now);
    };
    EXPECT_FALSE(decideBy(kSet - 0.001).stop);
    EXPECT_EQ(decideBy(kSet - 0.001).followed, followed);
    EXPECT_TRUE(decideBy(kSet).stop);
    EXPECT_TRUE(decideBy(kSet + 86400).stop);

    queued = {"1-1"};  // taken from the queue meanwhile
    EXPECT_FALSE(decideBy(kSet).stop);
    queued = {followed.id};
    tracked = body(8, {});  // another body is tracked
    EXPECT_FALSE(decideBy(kSet).stop);
}

TEST_F(DecideQueue, FollowsThePassesOfTheSessionsOwnCopyOfTheBody) {
    tracked = selected[0];
    selected = {body(9, {passFrom(kSet, kLength)})};  // 7 deselected
    queued.merge(idsOf(selected));
    const auto decision = decide(kSet);
    EXPECT_TRUE(decision.stop);
    ASSERT_TRUE(decision.start);
    EXPECT_EQ(decision.start->body, 0u);
}

TEST_F(DecideQueue, TakesTheEarliestRiseOfSeveral) {
    selected = {body(1, {passFrom(kRise + 20, kLength)}),
                body(2, {passFrom(kRise - 9000, 60), passFrom(kRise, kLength)}),
                body(3, {passFrom(kRise + 10, kLength)})};
    queued = idsOf(selected);
    const auto start = decide(kRise + 30).start;
    ASSERT_TRUE(start);
    EXPECT_EQ(start->body, 1u);
    EXPECT_EQ(start->pass, 1u);
}

TEST_F(DecideQueue, FindsTheFirstOfTwoPassesInOneSecond) {
    selected = {body(1, {passFrom(Instant{817000000.2}, 30), passFrom(Instant{817000000.8}, 40)})};
    queued = idsOf(selected);
    ASSERT_TRUE(decide(Instant{817000001}).start);
    EXPECT_EQ(decide(Instant{817000001}).start->pass, 0u);
    EXPECT_FALSE(decide(Instant{817000035}).start);  // the second has no name of its own
}

TEST_F(DecideQueue, SkipsPeaksUnderTheMinimumOnly) {
    selected = {body(1, {passFrom(kRise, kLength, 4.9)})};
    queued = idsOf(selected);
    EXPECT_FALSE(decide(kRise).start);
    selected = {body(1, {passFrom(kRise, kLength, 5)})};
    EXPECT_TRUE(decide(kRise).start);
    // Right at the zenith the peak may be no number; it is no low pass.
    selected = {body(1, {passFrom(kRise, kLength, std::numeric_limits<double>::quiet_NaN())})};
    EXPECT_TRUE(decide(kRise).start);
}

TEST_F(DecideQueue, StopsALowPassThatIsTrackedAllTheSame) {
    selected = {body(1, {passFrom(kRise, kLength, 4.9)})};
    queued = idsOf(selected);
    tracked = selected[0];
    EXPECT_TRUE(decide(kSet).stop);
}

TEST_F(DecideQueue, FindsThePassOfTheSun) {
    selected = {body(-1, {passFrom(kRise, kLength)})};
    queued = idsOf(selected);
    EXPECT_TRUE(decide(kRise).start);
}

class DescribeQueue : public DecideQueue {
  protected:
    QueueEntry entryAt(Instant now) const {
        const auto entries = describeQueue(view(), now);
        EXPECT_EQ(entries.size(), 1u);
        return entries.at(0);
    }
    QueueEntryState stateAt(Instant now) const { return entryAt(now).state; }
    static std::string textOf(QueueEntryState state) { return queueEntryText(state); }
};

TEST_F(DescribeQueue, OfAnEmptyQueueIsEmpty) {
    queued.clear();
    EXPECT_TRUE(describeQueue(view(), kRise).empty());
}

TEST_F(DescribeQueue, PassToComeIsWaiting) {
    const auto entry = entryAt(kRise - 1);
    EXPECT_EQ(entry.id, "7-817000000");
    EXPECT_EQ(entry.state, QueueEntryState::waiting);
    EXPECT_EQ(entry.pass, makePassRef(7, "BODY 7", selected[0].passes->at(0)));
    EXPECT_EQ(queueEntryText(entry.state), "Will be tracked when it rises");
}

TEST_F(DescribeQueue, PassToComeIsWaitingThoughAnotherSessionRuns) {
    tracked = body(8, {});
    EXPECT_EQ(stateAt(kRise - 1), QueueEntryState::waiting);
}

TEST_F(DescribeQueue, PassUnderWayIsHeldWhileAnotherSessionRuns) {
    tracked = body(8, {});
    EXPECT_EQ(stateAt(kRise), QueueEntryState::held);
    EXPECT_EQ(stateAt(kSet - 0.001), QueueEntryState::held);
    EXPECT_EQ(textOf(QueueEntryState::held), "Under way; waiting for the running session to end");
}

TEST_F(DescribeQueue, PassUnderWayWithTheRadioFreeIsNotHeld) {
    EXPECT_EQ(stateAt(kRise), QueueEntryState::waiting);  // for the next firing
}

TEST_F(DescribeQueue, PassOfTheRunningSessionIsTrackedUntilItSets) {
    tracked = selected[0];
    EXPECT_EQ(stateAt(kRise - 1), QueueEntryState::waiting);
    EXPECT_EQ(stateAt(kRise), QueueEntryState::tracked);
    EXPECT_EQ(stateAt(kSet - 0.001), QueueEntryState::tracked);
    EXPECT_EQ(stateAt(kSet), QueueEntryState::ended);
    EXPECT_EQ(textOf(QueueEntryState::tracked), "Being tracked");
}

TEST_F(DescribeQueue, LowPassThatIsTrackedByHandIsTracked) {
    tracked = selected[0];
    minimum = 50;
    EXPECT_EQ(stateAt(kRise), QueueEntryState::tracked);
    EXPECT_EQ(stateAt(kSet), QueueEntryState::ended);
}

TEST_F(DescribeQueue, PassIsTrackedThoughItsBodyIsDeselected) {
    tracked = selected[0];
    selected.clear();
    const auto entry = entryAt(kRise + 1);
    EXPECT_EQ(entry.state, QueueEntryState::tracked);
    EXPECT_EQ(entry.pass, makePassRef(7, "BODY 7", tracked->passes->at(0)));
    EXPECT_EQ(stateAt(kSet), QueueEntryState::deselected);
}

TEST_F(DescribeQueue, PassIsTrackedThoughTheCatalogueWasLoadedAnew) {
    tracked = selected[0];
    selected = {body(7, {passFrom(kRise + 0.25, kLength)})};  // same second, not the same moment
    EXPECT_EQ(stateAt(kRise + 1), QueueEntryState::tracked);
    selected = {body(7, {})};
    EXPECT_EQ(stateAt(kRise + 1), QueueEntryState::tracked);
}

TEST_F(DescribeQueue, EarlierPassThatSetIsEndedWhileTheNextIsTracked) {
    selected = {body(7, {passFrom(kRise, kLength), passFrom(kSet + 120, kLength)})};
    queued = idsOf(selected);
    tracked = selected[0];
    const auto entries = describeQueue(view(), kSet + 121);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].state, QueueEntryState::ended);
    EXPECT_EQ(entries[1].state, QueueEntryState::tracked);
}

TEST_F(DescribeQueue, PassThatSetIsEnded) {
    EXPECT_EQ(stateAt(kSet), QueueEntryState::ended);
    minimum = 50;  // nothing is to come of it either way
    EXPECT_EQ(stateAt(kSet), QueueEntryState::ended);
    EXPECT_EQ(textOf(QueueEntryState::ended), "Has set");
}

TEST_F(DescribeQueue, PassThatSetAndIsListedNoLongerIsEnded) {
    selected = {body(7, {passFrom(kSet + 5000, kLength)})};
    EXPECT_EQ(stateAt(kSet + 300), QueueEntryState::ended);
    EXPECT_EQ(stateAt(kSet + 5001), QueueEntryState::gone) << "which one it was cannot be told";
}

TEST_F(DescribeQueue, LowPassIsTooLowBeforeAndAfterItsRise) {
    minimum = 45.1;
    EXPECT_EQ(stateAt(kRise - 1), QueueEntryState::tooLow);
    EXPECT_EQ(stateAt(kRise), QueueEntryState::tooLow);
    tracked = body(8, {});
    EXPECT_EQ(stateAt(kRise), QueueEntryState::tooLow);
    minimum = 45;
    EXPECT_EQ(stateAt(kRise), QueueEntryState::held);
    EXPECT_EQ(textOf(QueueEntryState::tooLow),
              "Will not be tracked: stays under the minimum elevation");
}

TEST_F(DescribeQueue, PassOfADeselectedBodyIsDeselected) {
    selected = {body(8, {passFrom(kRise, kLength)})};
    const auto entry = entryAt(kRise);
    EXPECT_EQ(entry.state, QueueEntryState::deselected);
    EXPECT_FALSE(entry.pass);
    EXPECT_EQ(queueEntryText(entry.state),
              "Will not be tracked: the satellite is no longer selected");
}

TEST_F(DescribeQueue, PassThatMovedToAnotherSecondIsGone) {
    selected = {body(7, {passFrom(kRise + 0.5, kLength)})};
    const auto entry = entryAt(kRise + 1);
    EXPECT_EQ(entry.state, QueueEntryState::gone);
    EXPECT_FALSE(entry.pass);
    EXPECT_EQ(queueEntryText(entry.state),
              "Will not be tracked: the pass has moved or is no longer predicted");
}

TEST_F(DescribeQueue, PassOfTheSunIsToldFromOneOfADeselectedSun) {
    selected = {body(-1, {passFrom(kRise, kLength)})};
    queued = idsOf(selected);
    EXPECT_EQ(stateAt(kRise - 1), QueueEntryState::waiting);
    selected = {body(-1, {})};
    EXPECT_EQ(stateAt(kRise - 1), QueueEntryState::gone);
    selected = {body(-2, {})};
    EXPECT_EQ(stateAt(kRise - 1), QueueEntryState::deselected);
}

}  // namespace
}  // namespace veloran::test
