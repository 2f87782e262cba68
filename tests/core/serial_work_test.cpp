#include "core/serial_work.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/simulated_machine.h"

namespace veloran::test {
namespace {

using ::testing::ElementsAre;

class SerialWorkTest : public ::testing::Test {
  protected:
    std::function<void()> note(const std::string& text) {
        return [this, text] { log.push_back(text); };
    }

    SimulatedMachine simulated;
    std::vector<std::string> log;
};

TEST_F(SerialWorkTest, RunsNothingBeforeAWorkerTakesIt) {
    SerialWork work(simulated.machine);
    work.run(note("task"), note("done"));
    EXPECT_TRUE(log.empty());
    simulated.loop.runPosted();
    EXPECT_THAT(log, ElementsAre("task", "done"));
}

TEST_F(SerialWorkTest, TasksNeverOverlapAndKeepTheirOrder) {
    SerialWork work(simulated.machine);
    simulated.workers.held = true;
    work.run(note("first"), note("first done"));
    work.run(note("second"), {});
    work.run(note("third"), note("third done"));
    // Only the first one stands with the workers.
    simulated.workers.release();
    simulated.workers.held = true;
    simulated.loop.runPosted();
    EXPECT_THAT(log, ElementsAre("first", "first done"));
    simulated.workers.release();
    simulated.loop.runPosted();
    EXPECT_THAT(log, ElementsAre("first", "first done", "second", "third", "third done"));
}

TEST_F(SerialWorkTest, WorkGivenWhileAnotherReportsComesBehindWhatWaits) {
    SerialWork work(simulated.machine);
    work.run(note("first"), [&] { work.run(note("third"), {}); });
    work.run(note("second"), {});
    simulated.loop.runPosted();
    EXPECT_THAT(log, ElementsAre("first", "second", "third"));
    work.run(note("fourth"), {});
    simulated.loop.runPosted();
    EXPECT_EQ(log.back(), "fourth");
}

TEST_F(SerialWorkTest, WhatWasGivenIsCarriedOutAfterItsEnd) {
    {
        SerialWork work(simulated.machine);
        work.run(note("first"), note("first done"));
        work.run(note("second"), note("second done"));
    }
    simulated.loop.runPosted();
    EXPECT_THAT(log, ElementsAre("first", "first done", "second", "second done"));
}

}  // namespace
}  // namespace veloran::test
