#include "rig/rigctld_client.h"

#include <utility>

// Connection and dialect; the commands of tuning and arming stand in rigctld_commands.cpp.

namespace veloran {
namespace {

constexpr std::size_t kReceiveBytes = 4096;
constexpr std::size_t kReleasedInATurn = 1024 * 1024;  // bytes

/// What a server has made the program hold may be so much that to let go of it takes the system a
/// while: a piece in each turn of the loop.
void letGo(MainLoop& loop, BlockText text) {
    text.release(kReleasedInATurn);
    if (text.isReleased()) return;
    loop.after(0, [&loop, rest = std::make_shared<BlockText>(std::move(text))] {
        letGo(loop, std::move(*rest));
    });
}

}  // namespace

std::shared_ptr<RigctldClient> RigctldClient::create(TcpNetwork& network, MainLoop& loop) {
    return std::shared_ptr<RigctldClient>(new RigctldClient(network, loop));
}

RigctldClient::~RigctldClient() {
    if (connection_) connection_->cancel();
}

void RigctldClient::connect(const std::string& host, std::uint16_t port, StatusObserver onStatus) {
    host_ = host;
    port_ = port;
    onStatusChange_ = onStatus;
    connection_ = network_.makeConnection(host_, port_);
    connection_->setStateHandler(
        [weak = weak_from_this(), onStatus = std::move(onStatus)](TcpState state) {
            if (const auto self = weak.lock()) self->handleState(state, onStatus);
        });
    connection_->start();
}

void RigctldClient::disconnect() {
    stopReconnect();
    if (satModeArmed_) satLOS();
    if (connection_) {
        connection_->cancel();
        connection_ = nullptr;
    }
    markLost();
    const auto observer = onStatusChange_;  // survives a connect() from inside the call
    if (observer) observer(false);
}

/// Does not ask which connection the event comes from: the last event of a dropped one counts too.
void RigctldClient::handleState(TcpState state, const StatusObserver& onStatus) {
    switch (state) {
        case TcpState::setup:
        case TcpState::preparing:
            break;
        case TcpState::waiting:
            isConnected_ = false;  // and nothing else: the connection itself keeps trying
            postStatus(onStatus, false);
            break;
        case TcpState::ready:
            isConnected_ = true;
            startReceiveLoop();
            postStatus(onStatus, true);
            stopReconnect();
            detectCapabilities();
            break;
        case TcpState::failed:
        case TcpState::cancelled:
            markLost();
            postStatus(onStatus, false);
            startReconnect();
            break;
    }
}

void RigctldClient::markLost() {
    isConnected_ = false;
    setProtocolMode(RigProtocolMode::unknown);
    satModeArmed_ = false;
    flushPending();
}

void RigctldClient::postStatus(const StatusObserver& observer, bool connected) {
    if (observer) loop_.post([observer, connected] { observer(connected); });
}

// ---- Bytes in

void RigctldClient::startReceiveLoop() {
    if (!connection_) return;
    connection_->receive(1, kReceiveBytes, [weak = weak_from_this()](const TcpReceived& received) {
        const auto self = weak.lock();
        if (!self) return;
        self->handleIncoming(received.data);
        const bool goesOn = !received.isComplete && !received.failed;
        if (goesOn && self->isConnected_) self->startReceiveLoop();
    });
}

void RigctldClient::handleIncoming(std::string_view bytes) {
    while (auto line = framer_.takeLine(bytes)) {
        if (auto answer = replies_.dispatch(*line)) postAnswer(std::move(*answer));
        if (line->isLong()) letGo(loop_, std::move(line->longText));
    }
}

void RigctldClient::postAnswer(ReplyQueue::Answer answer) {
    auto shared = std::make_shared<ReplyQueue::Answer>(std::move(answer));
    loop_.post([&loop = loop_, answer = std::move(shared)] {
        answer->completion(answer->code, answer->lines);
        letGo(loop, answer->lines.takeText());
    });
}

void RigctldClient::flushPending() {
    letGo(loop_, framer_.clear());
    letGo(loop_, replies_.takeLines());
    // One task for all: a server that answered nothing may have left very many.
    loop_.post([waiting = replies_.flush()] {
        for (const auto& completion : waiting) completion(ReplyQueue::kConnectionGone, {});
    });
}

// ---- Bytes out

void RigctldClient::sendCommand(std::string text) {
    if (!connection_) return;
    connection_->send(std::move(text), [weak = weak_from_this()](bool ok) {
        const auto self = weak.lock();
        if (ok || !self) return;
        // No reconnect from here: the connection reports its end by itself when it has one.
        self->markLost();
        self->postStatus(self->onStatusChange_, false);
    });
}

void RigctldClient::sendAndExpectRPRT(std::string text, ReplyCompletion completion) {
    replies_.expect(std::move(completion));
    sendCommand(std::move(text));
}

// ---- Reconnecting

void RigctldClient::startReconnect() {
    if (reconnectTimer_) return;
    loop_.post([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self) return;
        self->reconnectTimer_ = self->loop_.every(kReconnectSeconds, [weak] {
            if (const auto client = weak.lock()) client->reconnect();
        });
    });
}

void RigctldClient::stopReconnect() {
    reconnectTimer_ = nullptr;
}

void RigctldClient::reconnect() {
    if (isConnected_) return;
    if (connection_) connection_->cancel();
    connect(host_, port_, onStatusChange_);
}

// ---- Dialect

void RigctldClient::setProtocolMode(RigProtocolMode mode) {
    if (mode == protocolMode_) return;
    protocolMode_ = mode;
    loop_.post([weak = weak_from_this(), mode] {
        const auto self = weak.lock();
        if (self && self->onModeChange) self->onModeChange(mode);
    });
}

void RigctldClient::detectCapabilities() {
    if (!isConnected_) return;
    if (forceClassic) {
        setProtocolMode(RigProtocolMode::classic);
        return;
    }
    const auto probe = UniqueId::make();
    capsProbeID_ = probe;
    sendAndExpectRPRT("\\sat_caps\n",
                      [weak = weak_from_this(), probe](std::int64_t code, const ReplyLines& lines) {
                          if (const auto self = weak.lock()) {
                              self->finishProbe(probe, modeFromCapabilities(code, lines));
                          }
                      });
    // The entry of a probe that timed out goes on waiting for its answer.
    loop_.after(kProbeSeconds, [weak = weak_from_this(), probe] {
        if (const auto self = weak.lock()) self->finishProbe(probe, RigProtocolMode::classic);
    });
}

/// Answer and time-out both come here, and the first decides. A newer probe makes both void.
void RigctldClient::finishProbe(UniqueId probe, RigProtocolMode mode) {
    if (capsProbeID_ != probe) return;
    capsProbeID_ = std::nullopt;
    setProtocolMode(mode);
}

}  // namespace veloran
