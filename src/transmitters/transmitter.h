#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/unique_id.h"

namespace veloran {

/// One radio channel of a satellite: a spot frequency or a range, in hertz.
struct Transmitter {
    UniqueId id = UniqueId::make();  ///< new for every value built or decoded; copies share it
    std::optional<double> freq;      ///< wins if a range is given too
    std::optional<double> freqLow;
    std::optional<double> freqHigh;
    std::string mode;
    std::string description;
    std::string direction;  ///< "down" or "up"; others are kept and pair with nothing
    bool inverting = false;
    std::optional<double> ctcss;

    /// Identity across reloads and restarts, and centre of tuning; 0 without a frequency.
    double centerFreqHz() const;
    std::string displayFreqMHz() const;  ///< "145.800 MHz", "435.610–435.670 MHz" or "—"
    std::string label() const;           ///< frequency, mode and description

    bool operator==(const Transmitter&) const = default;
};

/// Channels by NORAD catalogue number.
using TransmitterMap = std::map<std::int64_t, std::vector<Transmitter>>;

/// More channels than any satellite has (the richest has some sixty). Longer lists are refused, as
/// choosing among channels compares them with each other.
inline constexpr std::size_t kMaxTransmitters = 2000;

/// A database file. Absent when the text is not one, down to a single bad channel. A channel whose
/// numbers no radio could take (not finite, beyond 64 bits) counts as bad.
std::optional<TransmitterMap> decodeTransmitterDatabase(std::string_view json);
/// A list of channels, as the transmitter cache holds it.
std::optional<std::vector<Transmitter>> decodeTransmitters(std::string_view json);
/// What decodeTransmitters reads, as compact JSON; identities are left out. Numbers have to be
/// finite.
std::string encodeTransmitters(const std::vector<Transmitter>& transmitters);

/// The list compiled into the program, for use without a database file.
TransmitterMap builtinTransmitters();

/// Mode names of the data to what the radio server understands; case is ignored.
std::string modeToHamlib(std::string_view mode);
std::int64_t passbandForMode(std::string_view mode);  ///< hertz

}  // namespace veloran
