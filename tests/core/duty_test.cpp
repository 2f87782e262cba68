#include "core/duty.h"

#include <gtest/gtest.h>

#include "support/queue_world.h"

namespace veloran::test {
namespace {

constexpr Instant kNow{817000000.0};

QueueEntry entry(QueueEntryState state, double riseIn, std::int64_t number = 7) {
    const PredictedPass pass = passFrom(kNow + riseIn, 600);
    const auto reference = makePassRef(number, "BODY " + std::to_string(number), pass);
    const bool known = state != QueueEntryState::gone && state != QueueEntryState::deselected;
    return {reference.id, state, known ? std::optional(reference) : std::nullopt};
}

TEST(Duty, NothingRunsAndNothingWaits) {
    const Duty duty = dutyOf(std::nullopt, {}, kNow);
    EXPECT_FALSE(duty.isAny());
    EXPECT_EQ(duty, Duty{});
}

TEST(Duty, SessionByHandHasNoEnd) {
    const Duty duty = dutyOf("RS-44", {}, kNow);
    EXPECT_TRUE(duty.isAny());
    EXPECT_EQ(duty.session, (Duty::Session{"RS-44", std::nullopt}));
    EXPECT_EQ(duty.passesAhead, 0U);
}

TEST(Duty, SessionOfTheQueueEndsWithItsPass) {
    const Duty duty = dutyOf("RS-44", {entry(QueueEntryState::tracked, -100)}, kNow);
    EXPECT_EQ(duty.session, (Duty::Session{"RS-44", kNow + 500}));
    EXPECT_EQ(duty.passesAhead, 0U) << "what is tracked is no longer ahead";
}

TEST(Duty, NextIsTheEarliestOfThoseThatWait) {
    const Duty duty =
        dutyOf(std::nullopt,
               {entry(QueueEntryState::waiting, 5000, 1), entry(QueueEntryState::waiting, 900, 2),
                entry(QueueEntryState::held, 1000, 3)},
               kNow);
    EXPECT_EQ(duty.passesAhead, 3U);
    ASSERT_TRUE(duty.next);
    EXPECT_EQ(duty.next->noradId, 2);
}

TEST(Duty, WhatWillNotBeTrackedBindsNobody) {
    for (const auto state : {QueueEntryState::ended, QueueEntryState::tooLow,
                             QueueEntryState::deselected, QueueEntryState::tracked}) {
        EXPECT_FALSE(dutyOf(std::nullopt, {entry(state, 1000)}, kNow).isAny())
            << static_cast<int>(state);
    }
}

// After a reload no pass is known until it has been searched anew.
TEST(Duty, PassThatMayBeFoundAgainStillBinds) {
    for (const std::int64_t number : {25544, -1}) {
        const auto ahead = [number](double riseIn) {
            return dutyOf(std::nullopt, {entry(QueueEntryState::gone, riseIn, number)}, kNow)
                .passesAhead;
        };
        EXPECT_EQ(ahead(20000), 1U);
        EXPECT_EQ(ahead(-3590), 1U);
        EXPECT_EQ(ahead(-3610), 0U);
    }
    const Duty duty = dutyOf(std::nullopt, {entry(QueueEntryState::gone, 1000)}, kNow);
    EXPECT_TRUE(duty.isAny());
    EXPECT_FALSE(duty.next);
    EXPECT_FALSE(dutyOf(std::nullopt, {{"7", QueueEntryState::gone, {}}}, kNow).isAny());
}

}  // namespace
}  // namespace veloran::test
