#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/settings_store.h"
#include "transmitters/transmitter.h"

namespace veloran {

/// Remembers the channel last worked on each satellite, in the settings store.
class SatellitePreferences {
  public:
    explicit SatellitePreferences(SettingsStore& settings) : settings_(settings) {}

    void setLastTransmitter(std::int64_t noradId, double centerFreqHz);
    double lastTransmitterHz(std::int64_t noradId) const;  ///< 0 when nothing is stored
    static std::string lastTxKey(std::int64_t noradId);

  private:
    SettingsStore& settings_;
};

/// The channel within 1 kHz of `lastHz` (0: none stored), else the first downlink.
std::optional<Transmitter> preferredTransmitter(const std::vector<Transmitter>& transmitters,
                                                double lastHz);

/// Saved transponder calibrations, hertz, per satellite and downlink centre.
class CalibrationOffsetStore {
  public:
    explicit CalibrationOffsetStore(SettingsStore& settings) : settings_(settings) {}

    double transponderOffset(std::int64_t noradId, double txCenterHz) const;
    void setTransponderOffset(std::int64_t noradId, double txCenterHz, double hz);
    /// The value of an older version's key, if there is one, shows again afterwards.
    void clearTransponderOffset(std::int64_t noradId, double txCenterHz);
    static std::string key(std::int64_t noradId, double txCenterHz);
    static std::string legacyKey(std::int64_t noradId);

  private:
    SettingsStore& settings_;
};

/// One stable colour for every body: sRGB, 0 to 1.
struct RgbColor {
    double red, green, blue;
    bool operator==(const RgbColor&) const = default;
};
class SatelliteColorPalette {
  public:
    static const std::array<RgbColor, 16> colors;
    static std::size_t index(std::int64_t noradId);
    static RgbColor color(std::int64_t noradId) { return colors[index(noradId)]; }
};

}  // namespace veloran
