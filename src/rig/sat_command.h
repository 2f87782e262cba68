#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veloran {

// Commands of the rigctld protocol, each one line closed by a line feed.

std::string frequencyCommand(double hz);  ///< "F", truncated; stops the program beyond 64 bits
std::string modeCommand(std::string_view hamlibMode, std::int64_t passbandHz);
std::string armName(std::string_view name);  ///< blanks become underscores
std::string armCommand(std::string_view name);
/// One number field: whole values without a point, others with three decimals.
std::string satNumber(double value);
/// `name` without its backslash; hertz, hertz, and hertz per second.
std::string formatSatCommand(std::string_view name, double restHz, double dopplerHz,
                             std::optional<double> rateHzS);

}  // namespace veloran
