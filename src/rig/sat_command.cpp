#include "rig/sat_command.h"

#include <fmt/format.h>

#include <cmath>

#include "base/checked.h"
#include "base/text.h"

namespace veloran {

std::string frequencyCommand(double hz) {
    return fmt::format("F {}\n", checkedInt64(hz));
}

std::string modeCommand(std::string_view hamlibMode, std::int64_t passbandHz) {
    return fmt::format("M {} {}\n", hamlibMode, passbandHz);
}

std::string armName(std::string_view name) {
    return replacedAll(std::string(name), ' ', '_');
}

std::string armCommand(std::string_view name) {
    return fmt::format("\\sat_aos {}\n", armName(name));
}

std::string satNumber(double value) {
    // The fraction is looked for before rounding, so 0.0004 is written as 0.000 and not as 0.
    const bool isWhole = std::fmod(value, 1.0) == 0;
    return isWhole ? fmt::format("{}", checkedInt64(value)) : fmt::format("{:.3f}", value);
}

std::string formatSatCommand(std::string_view name, double restHz, double dopplerHz,
                             std::optional<double> rateHzS) {
    auto line = fmt::format("\\{} {} {}", name, satNumber(restHz), satNumber(dopplerHz));
    if (rateHzS) line += " " + satNumber(*rateHzS);
    return line + "\n";
}

}  // namespace veloran
