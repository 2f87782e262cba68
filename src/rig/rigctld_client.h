#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/unique_id.h"
#include "platform/main_loop.h"
#include "platform/tcp.h"
#include "rig/line_framer.h"
#include "rig/reply_queue.h"
#include "rig/rig_protocol_mode.h"

namespace veloran {

/// The one client of the radio server: connection, dialect and commands. Main thread only; nothing
/// blocks. Observers and completions come by MainLoop::post, in order; `disconnect` alone reports
/// the status directly.
class RigctldClient : public std::enable_shared_from_this<RigctldClient> {
  public:
    using StatusObserver = std::function<void(bool connected)>;
    using CodeCompletion = std::function<void(std::int64_t code)>;

    static constexpr double kReconnectSeconds = 2.0;
    static constexpr double kProbeSeconds = 2.0;

    static std::shared_ptr<RigctldClient> create(TcpNetwork& network, MainLoop& loop);
    ~RigctldClient();

    void connect(const std::string& host, std::uint16_t port, StatusObserver onStatus);
    /// A client that lives on connects again two seconds later.
    void disconnect();

    /// Probes the dialect; without a connection nothing happens.
    void detectCapabilities();
    /// Tuning for a classic server. No reply is waited for. See frequencyCommand for the contract.
    void setFrequency(double hz);
    void setMode(const std::string& hamlibMode, std::int64_t passbandHz);
    /// Reads past the receive loop; nothing else may depend on it.
    void getFrequency(std::function<void(std::optional<double>)> completion);
    /// Arm and disarm; code -1 at once unless connected to a SAT_PROTO server.
    void satAOS(const std::string& name, CodeCompletion completion = nullptr);
    void satLOS(CodeCompletion completion = nullptr);
    /// Updates; dropped in silence unless armed.
    void satDL(double restHz, double dopplerHz, std::optional<double> rateHzS);
    void satUL(double restHz, double dopplerHz, std::optional<double> rateHzS);

    bool isConnected() const { return isConnected_; }
    RigProtocolMode protocolMode() const { return protocolMode_; }
    bool satModeArmed() const { return satModeArmed_; }
    const std::optional<std::string>& lastArmedName() const { return lastArmedName_; }
    bool ulUnsupported() const { return ulUnsupported_; }
    std::size_t pendingResponses() const { return replies_.size(); }
    bool isReconnecting() const { return reconnectTimer_ != nullptr || reconnectPosted_; }

    /// Never use SAT_PROTO. Setting it acts at the next detectCapabilities.
    bool forceClassic = false;
    std::function<void(RigProtocolMode)> onModeChange;
    std::function<void(bool)> onArmedChange;
    std::function<void()> onSatModeLost;

  private:
    RigctldClient(TcpNetwork& network, MainLoop& loop) : network_(network), loop_(loop) {}

    TcpNetwork& network_;
    MainLoop& loop_;
    std::shared_ptr<TcpConnection> connection_;
    bool isConnected_ = false;
    std::unique_ptr<Timer> reconnectTimer_;
    bool reconnectPosted_ = false;
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
