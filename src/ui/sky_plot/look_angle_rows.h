#pragma once

#include <array>
#include <optional>
#include <string>

#include "core/pass_info.h"
#include "orbit/look_angles.h"
#include "ui/ink.h"

namespace veloran {

/// Names of the rows of the table beside the disk, for the screen and for a screen reader. The
/// first seven tell of the pass, the others of the satellite's place.
struct RowName {
    const char* label;
    const char* spoken;
    const char* objectName;
};
inline constexpr std::size_t kTableRows = 12;
inline constexpr std::size_t kPassRows = 7;
inline constexpr std::array<RowName, kTableRows> kRowNames{{
    {"AOS", "Acquisition of signal", "skyAOS"},
    {"TCA", "Closest approach", "skyTCA"},
    {"LOS", "Loss of signal", "skyLOS"},
    {"Dur", "Pass duration", "skyDuration"},
    {"Max", "Pass maximum elevation", "skyMaxElevation"},
    {"T", "Countdown", "skyCountdown"},
    {"State", "State of the pass", "skyState"},
    {"AZ", "Azimuth now", "skyAzimuth"},
    {"EL", "Elevation now", "skyElevation"},
    {"Rng", "Range now", "skyRange"},
    {"Vel", "Range rate", "skyVelocity"},
    {"V\u0307", "Range acceleration", "skyAcceleration"},  // V with a dot above
}};

struct RowValue {
    std::string text = "—";
    Ink ink = Ink::secondary;
    bool operator==(const RowValue&) const = default;
};
using RowValues = std::array<RowValue, kTableRows>;

/// What the table shows; `next` are the look angles one second after `live`. What is absent or not
/// a finite number reads "—".
RowValues lookAngleRows(const std::optional<PassInfo>& pass, Instant now,
                        const std::optional<TopocentricResult>& live,
                        const std::optional<TopocentricResult>& next);

}  // namespace veloran
