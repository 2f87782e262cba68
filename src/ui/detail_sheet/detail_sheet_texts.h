#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/instant.h"
#include "elements/tle_data.h"
#include "transmitters/transmitter.h"
#include "ui/ink.h"

namespace veloran {

// What the sheet about one satellite says, as pure functions.

struct LabeledText {
    std::string label;
    std::string value;
};

/// The rows of the orbital elements in their order. The semi-major axis is Kepler's third law's for
/// the mean motion; the altitude is above the equator's radius.
std::vector<LabeledText> orbitalElements(const TLEData& tle);
/// Minutes of one revolution, "92.9 min"; "—" unless the mean motion (revolutions per day) is above
/// 0.
std::string periodText(double meanMotion);
/// "2024-04-09 06:00:00 UTC (21.9 days ago)"; "—" where the calendar has no such day.
std::string tleEpochString(std::int64_t year, double days, Instant now);

std::string toneText(double hz);        ///< "67.0 Hz tone"
std::string maxText(double degrees);    ///< "max 45°"
Ink maxColor(double degrees);           ///< green from 30 degrees on, else yellow
std::string passRowTime(Instant rise);  ///< "Oct 4 15:37" in the system's time zone

/// Passes that are told one by one.
inline constexpr std::size_t kToldPasses = 5;
/// "+ 2 more" of `count` passes; absent when all have a row.
std::optional<std::string> morePasses(std::size_t count);

/// What a row shows of a channel; a text with nothing to show is empty.
struct TransmitterLook {
    bool isUplink = false;
    std::string description;
    std::string frequency;
    std::string mode;
    bool inverting = false;
    std::string tone;
};
TransmitterLook transmitterLook(const Transmitter& transmitter);
/// The row in words, for a screen reader.
std::string spokenTransmitter(const TransmitterLook& look);

}  // namespace veloran
