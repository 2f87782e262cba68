#include "core/satellite_preferences.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "base/checked.h"

namespace veloran {

void SatellitePreferences::setLastTransmitter(std::int64_t noradId, double centerFreqHz) {
    settings_.set(lastTxKey(noradId), centerFreqHz);
}

double SatellitePreferences::lastTransmitterHz(std::int64_t noradId) const {
    return settings_.number(lastTxKey(noradId));
}

std::string SatellitePreferences::lastTxKey(std::int64_t noradId) {
    return fmt::format("lastTxHz_{}", noradId);
}

std::optional<Transmitter> preferredTransmitter(const std::vector<Transmitter>& transmitters,
                                                double lastHz) {
    constexpr double kSameChannelHz = 1000;
    const auto lastUsed =
        std::find_if(transmitters.begin(), transmitters.end(), [lastHz](const Transmitter& t) {
            return lastHz > 0 && std::abs(t.centerFreqHz() - lastHz) < kSameChannelHz;
        });
    if (lastUsed != transmitters.end()) return *lastUsed;
    const auto downlink = std::find_if(transmitters.begin(), transmitters.end(),
                                       [](const Transmitter& t) { return t.direction == "down"; });
    return downlink == transmitters.end() ? std::nullopt : std::optional(*downlink);
}

double CalibrationOffsetStore::transponderOffset(std::int64_t noradId, double txCenterHz) const {
    // Presence decides, not the value: a saved 0 hides the older version's value.
    const std::string own = key(noradId, txCenterHz);
    return settings_.number(settings_.contains(own) ? own : legacyKey(noradId));
}

void CalibrationOffsetStore::setTransponderOffset(std::int64_t noradId, double txCenterHz,
                                                  double hz) {
    settings_.set(key(noradId, txCenterHz), hz);
}

void CalibrationOffsetStore::clearTransponderOffset(std::int64_t noradId, double txCenterHz) {
    settings_.remove(key(noradId, txCenterHz));
}

std::string CalibrationOffsetStore::key(std::int64_t noradId, double txCenterHz) {
    return fmt::format("calOffset_sat_{}_tx_{}", noradId, checkedInt64(txCenterHz));
}

std::string CalibrationOffsetStore::legacyKey(std::int64_t noradId) {
    return fmt::format("calOffset_sat_{}", noradId);
}

const std::array<RgbColor, 16> SatelliteColorPalette::colors{{{0.0, 1.0, 0.0},
                                                              {1.0, 0.2, 0.2},
                                                              {0.2, 0.6, 1.0},
                                                              {1.0, 1.0, 0.0},
                                                              {1.0, 0.0, 1.0},
                                                              {0.0, 1.0, 1.0},
                                                              {1.0, 0.5, 0.0},
                                                              {0.6, 0.4, 1.0},
                                                              {1.0, 0.75, 0.8},
                                                              {0.5, 1.0, 0.0},
                                                              {0.0, 0.7, 0.5},
                                                              {1.0, 0.85, 0.4},
                                                              {0.8, 0.2, 0.5},
                                                              {0.4, 0.8, 1.0},
                                                              {0.9, 0.6, 0.0},
                                                              {0.0, 0.9, 0.4}}};

std::size_t SatelliteColorPalette::index(std::int64_t noradId) {
    constexpr std::int64_t n = 16;
    return static_cast<std::size_t>((noradId % n + n) % n);  // the Sun and the Moon are negative
}

}  // namespace veloran
