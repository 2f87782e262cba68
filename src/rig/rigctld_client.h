#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/unique_id.h"
#include "platform/main_loop.h"
#include "platform/tcp.h"
#include "rig/line_framer.h"
#include "rig/reply_queue.h"
#include "rig/rig_protocol_mode.h"

namespace veloran {

/// The one client of the radio server: connection, dialect and commands. Main thread only; nothing
/// blocks. Observers and completions come by MainLoop::post, in order, but for three that come from
/// inside the call: the status of `disconnect`, the -1 of a command that cannot be sent, and the
/// empty answer of `getFrequency` without a connection.
class RigctldClient : public std::enable_shared_from_this<RigctldClient> {
  public:
    using StatusObserver = std::function<void(bool connected)>;
    using CodeCompletion = std::function<void(std::int64_t code)>;

    static constexpr double kReconnectSeconds = 2.0;
    static constexpr double kProbeSeconds = 2.0;

    static std::shared_ptr<RigctldClient> create(TcpNetwork& network, MainLoop& loop);
    ~RigctldClient();

    /// Makes a new connection and lets go of an earlier one without cancelling it. An attempt that
    /// ends is repeated every kReconnectSeconds until one succeeds.
    void connect(const std::string& host, std::uint16_t port, StatusObserver onStatus);
    /// Disarms, then drops the connection; what waits for a reply gets -1. A client that lives on
    /// connects again kReconnectSeconds after the connection has reported its end.
    void disconnect();

    /// Probes the dialect; without a connection nothing happens.
    void detectCapabilities();
    /// Tuning for a classic server. No reply is waited for. See frequencyCommand for the contract.
    void setFrequency(double hz);
    /// Either dialect. No reply is waited for.
    void setMode(const std::string& hamlibMode, std::int64_t passbandHz);
    /// Reads past the receive loop, which may get the answer instead; nothing may depend on it.
    void getFrequency(std::function<void(std::optional<double>)> completion);
    /// Sends a question whose answer nobody waits for. A connection that died unseen, in a sleep of
    /// the machine say, reports its end by it. Not the probe: an answer that a waking network makes
    /// late would change the dialect. While armed nothing is sent: the updates do the same, and an
    /// answer more would go to one of them.
    void checkConnection();
    /// Arm and disarm; code -1 at once unless connected to a SAT_PROTO server.
    void satAOS(const std::string& name, CodeCompletion completion = nullptr);
    void satLOS(CodeCompletion completion = nullptr);
    /// Updates; dropped in silence unless armed. See formatSatCommand for units and contract.
    void satDL(double restHz, double dopplerHz, std::optional<double> rateHzS);
    void satUL(double restHz, double dopplerHz, std::optional<double> rateHzS);

    // A server answers strictly in order, and a command without a reply entry (setFrequency,
    // setMode) is answered as well: its answer goes to whatever waits at that moment.

    bool isConnected() const { return isConnected_; }
    RigProtocolMode protocolMode() const { return protocolMode_; }
    bool satModeArmed() const { return satModeArmed_; }
    const std::optional<std::string>& lastArmedName() const { return lastArmedName_; }
    bool ulUnsupported() const { return ulUnsupported_; }
    std::size_t pendingResponses() const { return replies_.size(); }
    bool isReconnecting() const { return reconnectTimer_ != nullptr; }

    /// Never use SAT_PROTO. Setting it acts at the next detectCapabilities.
    bool forceClassic = false;
    std::function<void(RigProtocolMode)> onModeChange;
    /// Arming as the server's answers tell it; a lost connection is told by the other observers.
    std::function<void(bool)> onArmedChange;
    /// The radio was claimed by another client. Comes right after onArmedChange(false).
    std::function<void()> onSatModeLost;

  private:
    RigctldClient(TcpNetwork& network, MainLoop& loop) : network_(network), loop_(loop) {}

    void handleState(TcpState state, const StatusObserver& onStatus);
    void markLost();
    void startReceiveLoop();
    void handleIncoming(std::string_view bytes);
    void postAnswer(ReplyQueue::Answer answer);
    void flushPending();
    void startReconnect();
    void stopReconnect();
    void reconnect();
    void postStatus(const StatusObserver& observer, bool connected);
    void setProtocolMode(RigProtocolMode mode);

    void sendCommand(std::string text);
    void sendAndExpectRPRT(std::string text, ReplyCompletion completion);
    void finishProbe(UniqueId probe, RigProtocolMode mode);
    bool speaksSatProto() const;
    void postArmed(bool armed);
    void handleArmingLost();

    TcpNetwork& network_;
    MainLoop& loop_;
    std::shared_ptr<TcpConnection> connection_;
    bool isConnected_ = false;
    std::unique_ptr<Timer> reconnectTimer_;
    std::string host_ = "localhost";
    std::uint16_t port_ = 4532;
    StatusObserver onStatusChange_;
    RigProtocolMode protocolMode_ = RigProtocolMode::unknown;
    bool satModeArmed_ = false;
    std::optional<std::string> lastArmedName_;
    LineFramer framer_;
    ReplyQueue replies_;
    std::optional<UniqueId> capsProbeID_;
    bool ulUnsupported_ = false;
};

}  // namespace veloran
