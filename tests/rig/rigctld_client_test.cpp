#include "rig/rigctld_client.h"

#include <gmock/gmock.h>

#include "rig_names.h"
#include "support/simulated_machine.h"

namespace veloran::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto* kExtension = "SAT_PROTO=1\nRPRT 0\n";

/// A client on the simulated machine, and every call of its observers in order.
class RigctldClientTest : public testing::Test {
  protected:
    RigctldClientTest() {
        client->onModeChange = [this](RigProtocolMode mode) { note(codeName(mode)); };
        client->onArmedChange = [this](bool armed) { note(armed ? "armed" : "disarmed"); };
        client->onSatModeLost = [this] { note("lost"); };
    }

    void note(std::string_view call) { calls.emplace_back(call); }
    std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }
    std::vector<std::string> takeSent() { return std::exchange(server().sent, {}); }
    ScriptedConnection& server() { return machine.tcp.newest(); }
    std::size_t attempts() const { return machine.tcp.connections.size(); }

    void connect() {
        client->connect("radio", 4532, [this](bool up) { note(up ? "up" : "down"); });
    }
    void report(TcpState state) {
        server().report(state);
        machine.loop.runPosted();
    }
    void receive(std::string bytes) {
        server().deliver(std::move(bytes));
        machine.loop.runPosted();
    }
    RigctldClient::CodeCompletion noteCode() {
        return [this](std::int64_t code) { note("code " + std::to_string(code)); };
    }
    /// Connected, with the dialect found, and nothing noted so far.
    void connectTo(const std::string& probeAnswer) {
        connect();
        report(TcpState::ready);
        receive(probeAnswer);
        takeSent();
        takeCalls();
    }
    void arm() {
        connectTo(kExtension);
        client->satAOS("SO-50");
        receive("RPRT 0\n");
        ASSERT_TRUE(client->satModeArmed());
        takeSent();
        takeCalls();
    }

    SimulatedMachine machine;
    std::shared_ptr<RigctldClient> client = RigctldClient::create(machine.tcp, machine.loop);
    std::vector<std::string> calls;
};

// ---- Connection

TEST_F(RigctldClientTest, ConnectingStartsOneConnectionToTheGivenServer) {
    connect();
    EXPECT_EQ(attempts(), 1U);
    EXPECT_TRUE(server().started);
    EXPECT_EQ(server().host, "radio");
    EXPECT_EQ(server().port, 4532);
    EXPECT_FALSE(client->isConnected());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RigctldClientTest, SetupAndPreparingChangeNothing) {
    connect();
    report(TcpState::setup);
    report(TcpState::preparing);
    EXPECT_FALSE(client->isConnected());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RigctldClientTest, ReadyReportsTheStatusAndProbes) {
    connect();
    report(TcpState::ready);
    EXPECT_TRUE(client->isConnected());
    EXPECT_THAT(takeSent(), ElementsAre("\\sat_caps\n"));
    EXPECT_THAT(calls, ElementsAre("up"));
}

TEST_F(RigctldClientTest, ObserversComeFromTheLoopAndNeverFromInsideAnEvent) {
    connect();
    server().report(TcpState::ready);
    EXPECT_THAT(calls, IsEmpty());
    machine.loop.runPosted();
    server().deliver(kExtension);
    EXPECT_EQ(client->protocolMode(), RigProtocolMode::unknown);
    machine.loop.runPosted();
    EXPECT_THAT(calls, ElementsAre("up", "satProtoV1"));
}

TEST_F(RigctldClientTest, WaitingKeepsDialectArmingAndPendingCommands) {
    arm();
    client->satDL(145800000, 0, 0);
    report(TcpState::waiting);
    EXPECT_FALSE(client->isConnected());
    EXPECT_EQ(client->protocolMode(), RigProtocolMode::satProtoV1);
    EXPECT_TRUE(client->satModeArmed());
    EXPECT_EQ(client->pendingResponses(), 1U);
    EXPECT_FALSE(client->isReconnecting());
    EXPECT_THAT(calls, ElementsAre("down"));
}

TEST_F(RigctldClientTest, LosingTheConnectionFlushesAndStartsOneTimer) {
    arm();
    client->satLOS(noteCode());
    report(TcpState::failed);
    EXPECT_FALSE(client->satModeArmed());
    EXPECT_EQ(client->pendingResponses(), 0U);
    EXPECT_TRUE(client->isReconnecting());
    EXPECT_THAT(calls, ElementsAre("unknown", "code -1", "down", "disarmed"));
    const auto timers = machine.loop.timerCount();
    report(TcpState::cancelled);
    EXPECT_EQ(machine.loop.timerCount(), timers);
}

TEST_F(RigctldClientTest, ASecondEventOfALossNeitherPutsOffTheNextAttemptNorAddsOne) {
    connect();
    report(TcpState::failed);
    machine.loop.advance(1);
    report(TcpState::cancelled);
    machine.loop.advance(0.9);
    EXPECT_EQ(attempts(), 1U);
    machine.loop.advance(0.2);
    EXPECT_EQ(attempts(), 2U);
    server().reportsCancel = false;
    machine.loop.advance(1.8);
    EXPECT_EQ(attempts(), 2U);
    machine.loop.advance(0.2);
    EXPECT_EQ(attempts(), 3U);
}

TEST_F(RigctldClientTest, AFlushedDisarmTellsItThoughArmingIsGoneAlready) {
    arm();
    client->satLOS();
    report(TcpState::cancelled);
    EXPECT_THAT(calls, ElementsAre("unknown", "down", "disarmed"));
}

TEST_F(RigctldClientTest, AttemptsComeEveryTwoSecondsUntilOneSucceeds) {
    connect();
    report(TcpState::failed);
    machine.loop.advance(1.9);
    EXPECT_EQ(attempts(), 1U);
    machine.loop.advance(0.2);
    EXPECT_EQ(attempts(), 2U);
    EXPECT_TRUE(machine.tcp.connections.front()->cancelled);
    machine.loop.advance(20);
    EXPECT_EQ(attempts(), 12U);
    report(TcpState::ready);
    EXPECT_FALSE(client->isReconnecting());
    machine.loop.advance(20);
    EXPECT_EQ(attempts(), 12U);
}

TEST_F(RigctldClientTest, ATimerThatTicksWhileConnectedDoesNothing) {
    connect();
    // The loss has been reported but its timer not yet made when the connection comes up.
    server().report(TcpState::failed);
    server().report(TcpState::ready);
    machine.loop.runPosted();
    EXPECT_TRUE(client->isConnected());
    ASSERT_TRUE(client->isReconnecting());
    machine.loop.advance(10);
    EXPECT_EQ(attempts(), 1U);
    EXPECT_FALSE(server().cancelled);
}

TEST_F(RigctldClientTest, ASendErrorLosesTheConnectionButStartsNoTimer) {
    connectTo(kExtension);
    client->satAOS("X", noteCode());
    server().failLatestSend();
    machine.loop.runPosted();
    EXPECT_FALSE(client->isConnected());
    EXPECT_FALSE(client->isReconnecting());
    EXPECT_THAT(calls, ElementsAre("unknown", "code -1", "down"));
}

TEST_F(RigctldClientTest, AServerThatClosesIsNoticedByTheNextSendOnly) {
    arm();
    server().closeByPeer();
    machine.loop.runPosted();
    EXPECT_TRUE(client->isConnected());
    EXPECT_THAT(calls, IsEmpty());
    client->satDL(145800000, 0, 0);
    server().failLatestSend();
    machine.loop.runPosted();
    EXPECT_FALSE(client->isConnected());
    EXPECT_THAT(calls, ElementsAre("unknown", "down"));
}

TEST_F(RigctldClientTest, DisconnectReportsItsStatusFromInsideTheCall) {
    arm();
    client->disconnect();
    EXPECT_THAT(takeCalls(), ElementsAre("down"));
    EXPECT_THAT(takeSent(), ElementsAre("\\sat_los\n"));
    EXPECT_TRUE(server().cancelled);
    EXPECT_EQ(client->protocolMode(), RigProtocolMode::unknown);
    EXPECT_EQ(client->pendingResponses(), 0U);
    machine.loop.runPosted();
    EXPECT_THAT(calls, ElementsAre("unknown", "down", "disarmed"));
}

TEST_F(RigctldClientTest, AClientThatLivesOnAfterDisconnectComesBack) {
    connectTo(kExtension);
    client->disconnect();
    machine.loop.advance(2.1);
    EXPECT_EQ(attempts(), 2U);
}

TEST_F(RigctldClientTest, ConnectingAgainLeavesTheEarlierConnectionAlone) {
    connect();
    connect();
    EXPECT_EQ(attempts(), 2U);
    EXPECT_FALSE(machine.tcp.connections.front()->cancelled);
}

TEST_F(RigctldClientTest, TheLastEventOfADroppedConnectionRunsTheSameSteps) {
    connect();
    report(TcpState::waiting);
    connectTo(kExtension);
    machine.tcp.connections.front()->report(TcpState::failed);
    machine.loop.runPosted();
    EXPECT_FALSE(client->isConnected());
    EXPECT_THAT(calls, ElementsAre("unknown", "down"));
}

TEST_F(RigctldClientTest, AClientThatHasGoneIsNotTouchedByWhatComesLater) {
    arm();
    client->satDL(1, 0, 0);
    const auto connection = machine.tcp.connections.back();
    client = nullptr;
    EXPECT_TRUE(connection->cancelled);
    connection->deliver("RPRT -11\n");
    connection->failLatestSend();
    connection->report(TcpState::failed);
    machine.loop.advance(10);
    EXPECT_EQ(attempts(), 1U);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RigctldClientTest, ACompletionOfAnAnswerUnderWayIsCalledThoughTheClientHasGone) {
    connectTo(kExtension);
    client->satAOS("X", noteCode());
    client->satLOS(noteCode());
    server().report(TcpState::failed);
    machine.loop.post([this] { client = nullptr; });  // behind the event, before the completions
    machine.loop.runPosted();
    EXPECT_THAT(calls, ElementsAre("code -1", "code -1", "down"));
}

// ---- Dialect

TEST_F(RigctldClientTest, ForcedClassicSendsNoProbe) {
    client->forceClassic = true;
    connect();
    report(TcpState::ready);
    EXPECT_THAT(takeSent(), IsEmpty());
    EXPECT_THAT(calls, ElementsAre("up", "classic"));
}

TEST_F(RigctldClientTest, ForcedClassicWithoutAConnectionLeavesTheDialectAlone) {
    client->forceClassic = true;
    client->detectCapabilities();
    machine.loop.runPosted();
    EXPECT_EQ(client->protocolMode(), RigProtocolMode::unknown);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RigctldClientTest, AProbeWithoutAnswerEndsClassicAndItsLateAnswerChangesNothing) {
    connect();
    report(TcpState::ready);
    machine.loop.advance(1.9);
    EXPECT_EQ(client->protocolMode(), RigProtocolMode::unknown);
    machine.loop.advance(0.6);
    EXPECT_EQ(client->pendingResponses(), 1U);
    receive(kExtension);
    EXPECT_EQ(client->pendingResponses(), 0U);
    EXPECT_THAT(calls, ElementsAre("up", "classic"));
}

TEST_F(RigctldClientTest, OfTwoProbesOnlyTheSecondCounts) {
    connect();
    report(TcpState::ready);
    machine.loop.advance(1);
    client->detectCapabilities();
    receive(kExtension);
    machine.loop.advance(1.5);  // past the time-out of the first
    EXPECT_EQ(client->protocolMode(), RigProtocolMode::unknown);
    receive("RPRT -4\n");
    EXPECT_THAT(calls, ElementsAre("up", "classic"));
}

TEST_F(RigctldClientTest, TheDialectItHasAlreadyIsNotReportedAgain) {
    connectTo("RPRT -4\n");
    client->detectCapabilities();
    receive("RPRT -4\n");
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RigctldClientTest, TurningForcedClassicOffGoesStraightToTheResultOfANewProbe) {
    client->forceClassic = true;
    connect();
    report(TcpState::ready);
    takeCalls();
    client->forceClassic = false;
    client->detectCapabilities();
    EXPECT_EQ(client->protocolMode(), RigProtocolMode::classic);
    receive(kExtension);
    EXPECT_THAT(calls, ElementsAre("satProtoV1"));
}

TEST_F(RigctldClientTest, ALossDuringTheProbeEndsClassicUntilTheNextConnection) {
    connect();
    report(TcpState::ready);
    report(TcpState::failed);
    EXPECT_EQ(client->protocolMode(), RigProtocolMode::classic);
}

// ---- Commands

TEST_F(RigctldClientTest, WithoutAConnectionNothingIsSent) {
    connect();
    client->setFrequency(145800000);
    client->setMode("FM", 12000);
    client->satDL(1, 2, 3);
    client->satUL(1, 2, 3);
    client->satAOS("X", noteCode());
    client->satLOS(noteCode());
    client->getFrequency([this](auto hz) { note(hz ? "hz" : "no hz"); });
    EXPECT_THAT(takeSent(), IsEmpty());
    EXPECT_THAT(calls, ElementsAre("code -1", "code -1", "no hz"));
}

TEST_F(RigctldClientTest, TuningGoesOutInEitherDialectAndWaitsForNothing) {
    connectTo(kExtension);
    client->setFrequency(145800000.9);
    client->setMode("FM", 12000);
    EXPECT_THAT(takeSent(), ElementsAre("F 145800000\n", "M FM 12000\n"));
    EXPECT_EQ(client->pendingResponses(), 0U);
}

TEST_F(RigctldClientTest, ArmingTellsTheCodeBeforeTheArming) {
    connectTo(kExtension);
    client->satAOS("AO 91", noteCode());
    EXPECT_THAT(takeSent(), ElementsAre("\\sat_aos AO_91\n"));
    receive("RPRT 0\n");
    EXPECT_TRUE(client->satModeArmed());
    EXPECT_EQ(client->lastArmedName(), "AO_91");
    EXPECT_THAT(calls, ElementsAre("code 0", "armed"));
}

TEST_F(RigctldClientTest, ARefusedArmingChangesNothing) {
    connectTo(kExtension);
    client->satAOS("AO 91", noteCode());
    receive("RPRT -9\n");
    EXPECT_FALSE(client->satModeArmed());
    EXPECT_EQ(client->lastArmedName(), std::nullopt);
    EXPECT_THAT(calls, ElementsAre("code -9"));
}

TEST_F(RigctldClientTest, ARefusedDisarmCountsAsDisarmed) {
    arm();
    client->satLOS(noteCode());
    receive("RPRT -9\n");
    EXPECT_FALSE(client->satModeArmed());
    EXPECT_EQ(client->lastArmedName(), "SO-50");
    EXPECT_THAT(calls, ElementsAre("code -9", "disarmed"));
}

TEST_F(RigctldClientTest, DisarmingAClassicServerSendsNothingAndKeepsTheArming) {
    arm();
    client->forceClassic = true;
    client->detectCapabilities();
    client->satLOS(noteCode());
    EXPECT_THAT(takeSent(), IsEmpty());
    EXPECT_TRUE(client->satModeArmed());
    EXPECT_EQ(calls.front(), "code -1");
}

TEST_F(RigctldClientTest, UpdatesAreSentOnlyWhileArmed) {
    connectTo(kExtension);
    client->satDL(1, 0, 0);
    client->satUL(1, 0, 0);
    EXPECT_THAT(takeSent(), IsEmpty());
    client->satAOS("X");
    receive("RPRT 0\n");
    takeSent();
    client->satDL(145800000, 0, std::nullopt);
    client->satUL(435000000.5, -0.5, 0);
    EXPECT_THAT(takeSent(),
                ElementsAre("\\sat_dl 145800000 0\n", "\\sat_ul 435000000.500 -0.500 0\n"));
}

TEST_F(RigctldClientTest, AClaimedRadioIsToldInOneTask) {
    arm();
    client->onArmedChange = [this](bool) { machine.loop.post([this] { note("between"); }); };
    client->satUL(145800000, 0, 0);
    receive("RPRT -11\n");
    EXPECT_FALSE(client->satModeArmed());
    EXPECT_THAT(calls, ElementsAre("lost", "between"));
}

TEST_F(RigctldClientTest, AClaimedRadioIsDisarmedBeforeItIsLost) {
    arm();
    client->satDL(145800000, 0, 0);
    receive("RPRT -11\n");
    EXPECT_THAT(calls, ElementsAre("disarmed", "lost"));
}

TEST_F(RigctldClientTest, ARefusedUplinkEndsUplinkUpdatesForGood) {
    arm();
    client->satUL(145800000, 0, 0);
    receive("RPRT -9\n");
    EXPECT_TRUE(client->ulUnsupported());
    report(TcpState::failed);
    machine.loop.advance(2.1);
    report(TcpState::ready);
    receive(kExtension);
    client->satAOS("SO-50");
    receive("RPRT 0\n");
    takeSent();
    client->satUL(145800000, 0, 0);
    client->satDL(436795000, 0, 0);
    EXPECT_THAT(takeSent(), ElementsAre("\\sat_dl 436795000 0 0\n"));
}

TEST_F(RigctldClientTest, OtherCodesOfUpdatesAreIgnored) {
    arm();
    client->satDL(145800000, 0, 0);
    client->satDL(145800000, 0, 0);
    client->satUL(145800000, 0, 0);
    receive("RPRT -9\nRPRT abc\nRPRT -8\n");
    EXPECT_TRUE(client->satModeArmed());
    EXPECT_FALSE(client->ulUnsupported());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RigctldClientTest, TheAnswerToAModeCommandIsTakenForThatOfTheUpdate) {
    arm();
    client->setMode("FM", 12000);
    client->satDL(145800000, 0, 0);
    receive("RPRT -11\nRPRT 0\n");
    EXPECT_FALSE(client->satModeArmed());
    EXPECT_EQ(client->pendingResponses(), 0U);
}

TEST_F(RigctldClientTest, AFrequencyIsReadFromTheServer) {
    std::vector<std::optional<double>> read;
    const auto ask = [&] { client->getFrequency([&](auto hz) { read.push_back(hz); }); };
    connectTo("RPRT -4\n");
    ask();
    EXPECT_THAT(takeSent(), ElementsAre("f\n"));
    receive("goes to the receive loop\n");
    receive(" 145800000.5\r\n");
    EXPECT_THAT(read, ElementsAre(145800000.5));
    ask();
    receive("goes to the receive loop\n");
    receive("no number\n");
    ask();
    server().closeByPeer();
    machine.loop.runPosted();
    EXPECT_THAT(read, ElementsAre(145800000.5, std::nullopt, std::nullopt));
}

// ---- After a sleep

TEST_F(RigctldClientTest, CheckingAConnectionAsksWithoutWaitingAndKeepsTheDialect) {
    connectTo(kExtension);
    client->checkConnection();
    EXPECT_THAT(takeSent(), ElementsAre("f\n"));
    EXPECT_EQ(client->pendingResponses(), 0U);
    machine.loop.advance(10);  // a network that wakes up late
    receive("145800000\n");
    EXPECT_EQ(client->protocolMode(), RigProtocolMode::satProtoV1);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RigctldClientTest, CheckingADeadConnectionReportsItsEnd) {
    connectTo("RPRT -1\n");
    client->checkConnection();
    server().failLatestSend();
    machine.loop.runPosted();
    EXPECT_FALSE(client->isConnected());
    EXPECT_THAT(calls, ElementsAre("unknown", "down"));
}

TEST_F(RigctldClientTest, CheckingIsLeftToTheUpdatesOfAnArmedSession) {
    arm();
    client->checkConnection();
    EXPECT_THAT(takeSent(), IsEmpty());
}

TEST_F(RigctldClientTest, CheckingWithoutAConnectionDoesNothing) {
    client->checkConnection();
    EXPECT_EQ(attempts(), 0U);
    connect();
    client->checkConnection();
    EXPECT_THAT(takeSent(), IsEmpty());
}

}  // namespace
}  // namespace veloran::test
