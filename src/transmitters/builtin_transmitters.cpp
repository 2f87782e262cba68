#include <array>

#include "transmitters/transmitter.h"

namespace veloran {
namespace {

struct Row {
    std::int64_t noradId;
    double freq, freqLow, freqHigh;  // hertz; 0 stands for absent
    std::string_view mode, description, direction;
    bool inverting;
    double ctcss;  // hertz; 0 stands for absent
};

constexpr std::array kRows = {
    // clang-format off
    Row{25544, 145800000, 0, 0, "FM", "Voice repeater DL", "down", false, 0},
    Row{25544, 437800000, 0, 0, "BPSK", "APRS", "down", false, 0},
    Row{44909, 435605000, 0, 0, "CW", "Beacon", "down", false, 0},
    Row{44909, 0, 435610000, 435670000, "SSB/CW", "Transponder DL", "down", true, 0},
    Row{44909, 0, 145935000, 145995000, "SSB/CW", "Transponder UL", "up", true, 0},
    Row{27607, 436795000, 0, 0, "FM", "Downlink", "down", false, 0},
    Row{27607, 145850000, 0, 0, "FM", "Uplink", "up", false, 67.0},
    Row{43017, 145960000, 0, 0, "FM", "Downlink", "down", false, 0},
    Row{43017, 435250000, 0, 0, "FM", "Uplink", "up", false, 67.0},
    Row{43137, 145880000, 0, 0, "FM", "Downlink", "down", false, 0},
    Row{43137, 435350000, 0, 0, "FM", "Uplink", "up", false, 67.0},
    Row{54684, 435310000, 0, 0, "BPSK", "Digipeater DL", "down", false, 0},
    // clang-format on
};

std::optional<double> presentUnlessZero(double value) {
    return value == 0 ? std::nullopt : std::optional(value);
}

}  // namespace

TransmitterMap builtinTransmitters() {
    TransmitterMap map;
    for (const auto& row : kRows) {
        Transmitter channel;
        channel.freq = presentUnlessZero(row.freq);
        channel.freqLow = presentUnlessZero(row.freqLow);
        channel.freqHigh = presentUnlessZero(row.freqHigh);
        channel.mode = row.mode;
        channel.description = row.description;
        channel.direction = row.direction;
        channel.inverting = row.inverting;
        channel.ctcss = presentUnlessZero(row.ctcss);
        map[row.noradId].push_back(std::move(channel));
    }
    return map;
}

}  // namespace veloran
