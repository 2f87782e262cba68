#pragma once

#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "orbit/look_angles.h"
#include "rig/rig_protocol_mode.h"

namespace veloran {

/// What goes to a SAT_PROTO radio as rest frequency.
enum class SatProtoRestPattern {
    transponderCenter,  ///< Pattern A: the published centre, drift stays visible
    selectedDL          ///< Pattern B: the operator's frequency with calibration
};
std::string_view rawValue(SatProtoRestPattern pattern);
std::optional<SatProtoRestPattern> satProtoRestPatternFrom(std::string_view rawValue);

/// The operator's three offsets, hertz.
struct TuningOffsets {
    double passband = 0;
    double calibration = 0;
    double rit = 0;
};

/// Figures of the tick that are shown, hertz and hertz per second.
struct DopplerFigures {
    double dopplerShift = 0;
    double correctedFreq = 0;
    double dopplerRate = 0;
    double uplinkFreq = 0;
};

struct TickInput {
    double rangeRate = 0;                    ///< now, km/s, positive when receding
    std::optional<double> rangeRateAhead;    ///< half a second ahead
    std::optional<double> downlinkCenterHz;  ///< absent: no channel chosen
    bool downlinkInverting = false;
    std::optional<double> uplinkCenterHz;
    TuningOffsets offsets;
    RigProtocolMode mode = RigProtocolMode::unknown;
    SatProtoRestPattern pattern = SatProtoRestPattern::selectedDL;
    bool connected = false;
    DopplerFigures previous;
};

/// Commands for the radio, in the order they go out.
struct SetFrequency {
    double hz;
};
struct SatDownlink {
    double restHz, dopplerHz, rateHzS;
};
struct SatUplink {
    double restHz, dopplerHz, rateHzS;
};
using RigCommand = std::variant<SetFrequency, SatDownlink, SatUplink>;

struct TickOutput {
    DopplerFigures figures;
    std::vector<RigCommand> commands;  // at most two
};

/// The whole decision of one tick.
TickOutput computeTick(const TickInput& input);

/// Rest frequency of the downlink and the uplink: the centre after the operator's offsets.
double restDownlink(double centerHz, const TuningOffsets&, RigProtocolMode, SatProtoRestPattern);
double restUplink(double centerHz, const TuningOffsets&, RigProtocolMode, SatProtoRestPattern,
                  bool inverting);

}  // namespace veloran
