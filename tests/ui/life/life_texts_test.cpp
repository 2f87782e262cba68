#include "ui/life/life_texts.h"

#include <gtest/gtest.h>

namespace veloran {
namespace {

// 2026-11-22 21:00:00 UTC, the tests' time zone
constexpr Instant kNine = Instant::fromUnixSeconds(1795381200);

QueuedPassRef passOf(const std::string& name, double riseIn) {
    return {.id = {},
            .satName = name,
            .noradId = 7,
            .riseTime = kNine + riseIn,
            .setTime = kNine + riseIn + 600,
            .maxElevation = 45};
}

TEST(LifeTexts, WhatTheProgramIsAt) {
    Duty duty;
    EXPECT_EQ(dutyText(duty), "Nothing to track");
    duty.passesAhead = 2;
    EXPECT_EQ(dutyText(duty), "Waiting for 2 queued passes");
    duty.next = passOf("ISS", 60);
    EXPECT_EQ(dutyText(duty), "Next pass: ISS at 21:01, then 1 more");
    duty.passesAhead = 1;
    EXPECT_EQ(dutyText(duty), "Next pass: ISS at 21:01");
    duty.session = {"RS-44", std::nullopt};
    EXPECT_EQ(dutyText(duty), "Tracking RS-44");
    duty.session->ends = kNine + 34 * 60;
    EXPECT_EQ(dutyText(duty), "Tracking RS-44 until 21:34");
}

TEST(LifeTexts, WhyTheMachineStaysAwake) {
    Duty duty;
    EXPECT_EQ(stayAwakeReason(duty), std::nullopt);
    duty.passesAhead = 1;
    EXPECT_EQ(stayAwakeReason(duty), "Waiting for 1 queued pass");
    duty.next = passOf("ISS", 60);
    EXPECT_EQ(stayAwakeReason(duty), "Waiting for the pass of ISS at 21:01");
    duty.session = {"RS-44", kNine};
    EXPECT_EQ(stayAwakeReason(duty), "Tracking RS-44 until 21:00");
}

TEST(LifeTexts, WhatQuittingEnds) {
    Duty duty;
    duty.session = {"RS-44", kNine};
    EXPECT_EQ(quitMessage(duty), "RS-44 is being tracked.");
    duty.passesAhead = 2;
    duty.next = passOf("ISS", 60);
    EXPECT_EQ(quitMessage(duty),
              "RS-44 is being tracked. 2 queued passes will not be tracked. "
              "The next is ISS at 21:01.");
    duty.session = std::nullopt;
    duty.passesAhead = 1;
    EXPECT_EQ(quitMessage(duty), "1 queued pass will not be tracked. The next is ISS at 21:01.");
}

TEST(LifeTexts, TheNoticeSaysHowToSeeTheWindowAgain) {
    Duty duty;
    duty.session = {"RS-44", std::nullopt};
    EXPECT_EQ(backgroundTitle(duty), "Veloran goes on: Tracking RS-44");
    EXPECT_TRUE(backgroundText(true).starts_with("Its symbol in the tray"));
    EXPECT_TRUE(backgroundText(false).starts_with("Start Veloran again"));
}

}  // namespace
}  // namespace veloran
