#include <string_view>
#include <utility>

#include "base/text.h"
#include "rig/rigctld_client.h"
#include "rig/sat_command.h"

// The tuning and arming commands of RigctldClient, and what their answers lead to.

namespace veloran {
namespace {

constexpr std::int64_t kAccepted = 0;
constexpr std::int64_t kNeverSent = -1;
constexpr std::int64_t kUplinkRefused = -9;
constexpr std::int64_t kArmingLost = -11;
constexpr std::size_t kFrequencyBytes = 256;
constexpr std::string_view kReadFrequency = "f\n";

std::optional<double> frequencyFrom(std::string_view bytes) {
    if (!isValidUtf8(bytes)) return std::nullopt;
    return parseDouble(trimmed(bytes, Blanks::withNewlines));
}

}  // namespace

void RigctldClient::setFrequency(double hz) {
    if (isConnected_) sendCommand(frequencyCommand(hz));
}

void RigctldClient::setMode(const std::string& hamlibMode, std::int64_t passbandHz) {
    if (isConnected_) sendCommand(modeCommand(hamlibMode, passbandHz));
}

void RigctldClient::getFrequency(std::function<void(std::optional<double>)> completion) {
    if (!isConnected_) {
        completion(std::nullopt);
        return;
    }
    sendCommand(std::string(kReadFrequency));
    if (!connection_) return;
    connection_->receive(1, kFrequencyBytes,
                         [completion = std::move(completion)](const TcpReceived& received) {
                             completion(frequencyFrom(received.data));
                         });
}

void RigctldClient::checkConnection() {
    if (isConnected_ && !satModeArmed_) sendCommand(std::string(kReadFrequency));
}

void RigctldClient::satAOS(const std::string& name, CodeCompletion completion) {
    if (!speaksSatProto()) {
        if (completion) completion(kNeverSent);
        return;
    }
    sendAndExpectRPRT(armCommand(name),
                      [weak = weak_from_this(), sentName = armName(name),
                       completion = std::move(completion)](std::int64_t code, const ReplyLines&) {
                          const auto self = weak.lock();
                          if (self && code == kAccepted) {
                              self->satModeArmed_ = true;
                              self->lastArmedName_ = sentName;
                              self->postArmed(true);
                          }
                          if (completion) completion(code);
                      });
}

void RigctldClient::satLOS(CodeCompletion completion) {
    if (!speaksSatProto()) {
        if (completion) completion(kNeverSent);
        return;
    }
    // Refused or lost, this client counts itself as disarmed.
    sendAndExpectRPRT("\\sat_los\n", [weak = weak_from_this(), completion = std::move(completion)](
                                         std::int64_t code, const ReplyLines&) {
        if (const auto self = weak.lock()) {
            self->satModeArmed_ = false;
            self->postArmed(false);
        }
        if (completion) completion(code);
    });
}

void RigctldClient::satDL(double restHz, double dopplerHz, std::optional<double> rateHzS) {
    if (!speaksSatProto() || !satModeArmed_) return;
    sendAndExpectRPRT(formatSatCommand("sat_dl", restHz, dopplerHz, rateHzS),
                      [weak = weak_from_this()](std::int64_t code, const ReplyLines&) {
                          const auto self = weak.lock();
                          if (self && code == kArmingLost) self->handleArmingLost();
                      });
}

void RigctldClient::satUL(double restHz, double dopplerHz, std::optional<double> rateHzS) {
    if (!speaksSatProto() || !satModeArmed_ || ulUnsupported_) return;
    sendAndExpectRPRT(formatSatCommand("sat_ul", restHz, dopplerHz, rateHzS),
                      [weak = weak_from_this()](std::int64_t code, const ReplyLines&) {
                          const auto self = weak.lock();
                          if (!self) return;
                          if (code == kUplinkRefused) self->ulUnsupported_ = true;
                          if (code == kArmingLost) self->handleArmingLost();
                      });
}

bool RigctldClient::speaksSatProto() const {
    return isConnected_ && protocolMode_ == RigProtocolMode::satProtoV1;
}

void RigctldClient::postArmed(bool armed) {
    loop_.post([weak = weak_from_this(), armed] {
        const auto self = weak.lock();
        if (self && self->onArmedChange) self->onArmedChange(armed);
    });
}

void RigctldClient::handleArmingLost() {
    satModeArmed_ = false;
    // One task, so that nothing can come between the two.
    loop_.post([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self) return;
        if (self->onArmedChange) self->onArmedChange(false);
        if (self->onSatModeLost) self->onSatModeLost();
    });
}

}  // namespace veloran
