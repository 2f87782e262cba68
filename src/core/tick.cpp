#include "core/tick.h"

#include "base/checked.h"
#include "orbit/doppler_calc.h"

namespace veloran {

namespace {

bool sendsRestFrequency(RigProtocolMode mode) {
    return mode == RigProtocolMode::satProtoV1;
}

/// Whether the operator's offsets stay out of what the radio gets.
bool keepsCenter(RigProtocolMode mode, SatProtoRestPattern pattern) {
    return sendsRestFrequency(mode) && pattern == SatProtoRestPattern::transponderCenter;
}

/// One channel at one moment, hertz; `sign` is -1 for an uplink, which is pre-corrected.
struct ChannelDoppler {
    double shift;
    std::optional<double> rate;  // absent without a look ahead
};

ChannelDoppler dopplerOf(double restHz, double sign, const TickInput& input) {
    ChannelDoppler result{DopplerCalc::compute(restHz, sign * input.rangeRate), std::nullopt};
    if (input.rangeRateAhead) {
        const double ahead = DopplerCalc::compute(restHz, sign * *input.rangeRateAhead);
        result.rate = (ahead - result.shift) / DopplerCalc::lookAheadSeconds;
    }
    return result;
}

void planDownlink(const TickInput& input, TickOutput& output) {
    if (!input.downlinkCenterHz) return;
    const double rest =
        restDownlink(*input.downlinkCenterHz, input.offsets, input.mode, input.pattern);
    const ChannelDoppler doppler = dopplerOf(rest, 1, input);
    DopplerFigures& figures = output.figures;
    figures.dopplerShift = doppler.shift;
    figures.correctedFreq = rest + doppler.shift;
    // Without a look ahead the last rate stays, and is sent again.
    figures.dopplerRate = doppler.rate.value_or(figures.dopplerRate);

    if (!input.connected) return;
    // Garbage in the channel data or the settings ends here: the wire carries 64 bits.
    if (sendsRestFrequency(input.mode)) {
        if (fitsInt64(rest) && fitsInt64(doppler.shift) && fitsInt64(figures.dopplerRate)) {
            output.commands.push_back(SatDownlink{rest, doppler.shift, figures.dopplerRate});
        }
    } else if (fitsInt64(figures.correctedFreq)) {
        output.commands.push_back(SetFrequency{figures.correctedFreq});
    }
}

void planUplink(const TickInput& input, TickOutput& output) {
    if (!input.uplinkCenterHz) {
        output.figures.uplinkFreq = 0;
        return;
    }
    const bool inverting = input.downlinkCenterHz && input.downlinkInverting;
    const double rest =
        restUplink(*input.uplinkCenterHz, input.offsets, input.mode, input.pattern, inverting);
    const ChannelDoppler doppler = dopplerOf(rest, -1, input);
    const double rate = doppler.rate.value_or(0);
    output.figures.uplinkFreq = rest + doppler.shift;
    // A classic server controls the receive frequency only: the uplink is just shown.
    if (input.connected && sendsRestFrequency(input.mode) && fitsInt64(rest) &&
        fitsInt64(doppler.shift) && fitsInt64(rate)) {
        output.commands.push_back(SatUplink{rest, doppler.shift, rate});
    }
}

}  // namespace

std::string_view rawValue(SatProtoRestPattern pattern) {
    return pattern == SatProtoRestPattern::transponderCenter ? "transponderCenter" : "selectedDL";
}

std::optional<SatProtoRestPattern> satProtoRestPatternFrom(std::string_view raw) {
    for (const auto pattern :
         {SatProtoRestPattern::transponderCenter, SatProtoRestPattern::selectedDL}) {
        if (rawValue(pattern) == raw) return pattern;
    }
    return std::nullopt;
}

double restDownlink(double centerHz, const TuningOffsets& offsets, RigProtocolMode mode,
                    SatProtoRestPattern pattern) {
    if (keepsCenter(mode, pattern)) return centerHz;
    return centerHz + offsets.passband + offsets.calibration + offsets.rit;
}

double restUplink(double centerHz, const TuningOffsets& offsets, RigProtocolMode mode,
                  SatProtoRestPattern pattern, bool inverting) {
    if (keepsCenter(mode, pattern)) return centerHz;
    // Moving up in an inverting passband means transmitting further down.
    return inverting ? centerHz + offsets.calibration - offsets.passband
                     : centerHz + offsets.passband - offsets.calibration;
}

TickOutput computeTick(const TickInput& input) {
    TickOutput output{input.previous, {}};
    planDownlink(input, output);
    planUplink(input, output);
    return output;
}

}  // namespace veloran
