// The tracking session: one body and its channels bound to the radio, and the tick that drives it.

#include <algorithm>
#include <utility>

#include "base/checked.h"
#include "base/vector_state.h"
#include "core/app_state.h"
#include "core/status_texts.h"
#include "orbit/doppler_calc.h"

namespace veloran {

namespace {

/// A name fit for the one line of the arm command. Names come from element files: a line end in one
/// must not become a command to the radio.
std::string nameForRadio(std::string name) {
    std::replace_if(
        name.begin(), name.end(),
        [](char c) {
            const auto byte = static_cast<unsigned char>(c);
            return byte < 0x20 || byte == 0x7F;
        },
        ' ');
    return name;
}

std::optional<double> centerOf(const std::optional<Transmitter>& transmitter) {
    return transmitter ? std::optional(transmitter->centerFreqHz()) : std::nullopt;
}

}  // namespace

void AppState::startTracking(SatellitePtr satellite, std::optional<Transmitter> transmitter) {
    stopTracking();
    trackingSatellite = satellite;
    selectedTransmitter = transmitter ? transmitter : preferredTransmitter(*satellite);
    isTracking = true;
    if (const auto center = centerOf(selectedTransmitter)) {
        preferences_.setLastTransmitter(satellite->id, *center);
    }
    loadTuning(*satellite, transmitter);
    pickUplink(*satellite);
    if (!rigClient_) createRigClient();
    connectOrArm();
    if (const auto& channel = selectedTransmitter.get()) {
        // Dropped by the client while a first connection is on its way, and not repeated.
        rigClient_->setMode(modeToHamlib(channel->mode), passbandForMode(channel->mode));
    }
    startTrackingTimer();
    statusMessage = statusTracking(satellite->name);
}

void AppState::stopTracking() {
    trackingTimer_.reset();
    followedPass_.reset();
    isTracking = false;
    trackingSatellite = nullptr;
    if (rigClient_) rigClient_->satLOS();
    currentRIT = 0;
    currentPassbandOffset = 0;
    selectedUplinkTransmitter = std::nullopt;
    statusMessage = std::string();
}

void AppState::updateDopplerRate(double hz) {
    dopplerUpdateHz = clampUpdateRate(hz);
    if (isTracking && trackingSatellite.get()) startTrackingTimer();
}

void AppState::startTrackingTimer() {
    trackingTimer_ = machine_.loop.every(1.0 / dopplerUpdateHz, weakly(&AppState::updateTracking));
}

/// The saved calibration belongs to the channel given, or else to the preferred one, asked for anew
/// now that the session's own choice has been remembered: with two channels less than 1 kHz apart
/// it may be the other one.
void AppState::loadTuning(const Satellite& satellite, const std::optional<Transmitter>& given) {
    const double center = centerOf(given ? given : preferredTransmitter(satellite)).value_or(0);
    currentSatCalibration = center > 0 ? calibrations_.transponderOffset(satellite.id, center) : 0;
    currentRIT = 0;
    currentPassbandOffset = 0;
}

// ---- The radio's side of the session.

void AppState::createRigClient() {
    rigClient_ = RigctldClient::create(machine_.tcp, machine_.loop);
    rigClient_->forceClassic = forceClassicRigctld;
    rigClient_->onModeChange = weakly(&AppState::rigModeChanged);
    rigClient_->onArmedChange = weakly(&AppState::rigArmedChanged);
    rigClient_->onSatModeLost = weakly(&AppState::rigSatModeLost);
}

void AppState::connectOrArm() {
    if (!rigConnected) {
        rigClient_->connect(rigHost, checkedUInt16(rigPort), weakly(&AppState::rigStatusReported));
    } else if (rigProtocolMode.get() == RigProtocolMode::satProtoV1) {
        arm();
    }
}

void AppState::arm() {
    rigClient_->satAOS(nameForRadio(trackingSatellite.get()->name));
}

/// One more turn of the loop: a dialect found in the turn of the status is published before it.
void AppState::rigStatusReported(bool connected) {
    machine_.loop.post(
        [changed = weakly(&AppState::rigStatusChanged), connected] { changed(connected); });
}

void AppState::rigStatusChanged(bool connected) {
    rigConnected = connected;
}

/// Arms a session that began before the probe had ended, and arms again after a reconnect.
void AppState::rigModeChanged(RigProtocolMode mode) {
    rigProtocolMode = mode;
    if (mode == RigProtocolMode::satProtoV1 && isTracking && trackingSatellite.get()) arm();
}

void AppState::rigArmedChanged(bool armed) {
    rigSatProtoArmed = armed;
}

void AppState::rigSatModeLost() {
    const bool satProto = rigProtocolMode.get() == RigProtocolMode::satProtoV1;
    if (!isTracking || !trackingSatellite.get() || !satProto) return;
    rigSatProtoStatus = std::string("Re-armed (radio was claimed by another client)");
    arm();
}

// ---- The tick.

void AppState::updateTracking() {
    const SatellitePtr satellite = trackingSatellite;
    if (!satellite) return;
    clearUpperVectorHalves();
    const auto angles =
        tickAngles_ ? tickAngles_(*satellite, now()) : propagatedAngles(*satellite, now());
    if (!angles) return;  // the figures stay; the next tick tries again
    currentAzimuth = angles->now.azimuth;
    currentElevation = angles->now.elevation;
    currentRange = angles->now.range;

    const TickInput input = tickInput(*angles);
    const TickOutput output = computeTick(input);
    publish(input, output.figures);
    for (const auto& command : output.commands) send(command);
}

/// Absent for the Sun and the Moon, which have no orbit here.
std::optional<AppState::TickAngles> AppState::propagatedAngles(const Satellite& satellite,
                                                               Instant at) const {
    if (!satellite.satrec) return std::nullopt;
    const auto look = [&](Instant when) {
        return lookAngles(*satellite.satrec, when, obsLatitude, obsLongitude, obsAltitude / 1000);
    };
    const auto present = look(at);
    if (!present) return std::nullopt;
    return TickAngles{*present, look(at + DopplerCalc::lookAheadSeconds)};
}

TickInput AppState::tickInput(const TickAngles& angles) const {
    TickInput input;
    input.rangeRate = angles.now.rangeRate;
    if (angles.ahead) input.rangeRateAhead = angles.ahead->rangeRate;
    input.downlinkCenterHz = centerOf(selectedTransmitter);
    input.downlinkInverting = selectedTransmitter.get() && selectedTransmitter.get()->inverting;
    input.uplinkCenterHz = centerOf(selectedUplinkTransmitter);
    input.offsets = {currentPassbandOffset, currentSatCalibration, currentRIT};
    input.mode = rigProtocolMode;
    input.pattern = satProtoRestPattern;
    input.connected = rigConnected;
    input.previous = {currentDopplerShift, currentCorrectedFreq, currentDopplerRate,
                      currentUplinkFreq};
    return input;
}

void AppState::publish(const TickInput& input, const DopplerFigures& figures) {
    if (input.downlinkCenterHz) {
        currentDopplerShift = figures.dopplerShift;
        currentCorrectedFreq = figures.correctedFreq;
        if (input.rangeRateAhead) currentDopplerRate = figures.dopplerRate;
    }
    currentUplinkFreq = figures.uplinkFreq;
}

void AppState::send(const RigCommand& command) {
    if (!rigClient_) return;
    struct Sender {
        RigctldClient& client;
        void operator()(const SetFrequency& f) const { client.setFrequency(f.hz); }
        void operator()(const SatDownlink& d) const {
            client.satDL(d.restHz, d.dopplerHz, d.rateHzS);
        }
        void operator()(const SatUplink& u) const {
            client.satUL(u.restHz, u.dopplerHz, u.rateHzS);
        }
    };
    std::visit(Sender{*rigClient_}, command);
}

}  // namespace veloran
