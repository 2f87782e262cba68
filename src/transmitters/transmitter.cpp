#include "transmitters/transmitter.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/text.h"

namespace veloran {
namespace {

struct ModeRow {
    std::string_view mode, hamlib;
    std::int64_t passbandHz;
};

constexpr std::array kModes = {
    ModeRow{"FM", "FM", 12000},   ModeRow{"SSB", "USB", 2400}, ModeRow{"SSB/CW", "USB", 2400},
    ModeRow{"USB", "USB", 2400},  ModeRow{"LSB", "LSB", 2400}, ModeRow{"CW", "CW", 500},
    ModeRow{"BPSK", "USB", 2400}, ModeRow{"AM", "AM", 6000},
};
constexpr ModeRow kAnyOtherMode = {"", "USB", 2400};

const ModeRow& modeRow(std::string_view mode) {
    const auto upper = upperCased(mode);
    const auto* found = std::ranges::find(kModes, upper, &ModeRow::mode);
    return found == kModes.end() ? kAnyOtherMode : *found;
}

}  // namespace

double Transmitter::centerFreqHz() const {
    if (freq) return *freq;
    if (freqLow && freqHigh) return (*freqLow + *freqHigh) / 2;
    return 0;
}

std::string Transmitter::displayFreqMHz() const {
    if (freq) return fmt::format("{:.3f} MHz", *freq / 1e6);
    if (freqLow && freqHigh) {
        return fmt::format("{:.3f}–{:.3f} MHz", *freqLow / 1e6, *freqHigh / 1e6);
    }
    return "—";
}

std::string Transmitter::label() const {
    return displayFreqMHz() + " " + mode + " " + description;
}

std::string modeToHamlib(std::string_view mode) {
    return std::string(modeRow(mode).hamlib);
}

std::int64_t passbandForMode(std::string_view mode) {
    return modeRow(mode).passbandHz;
}

}  // namespace veloran
