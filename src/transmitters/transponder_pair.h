#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "transmitters/transmitter.h"

namespace veloran {

/// A downlink and the uplink that belongs to it.
struct TransponderPair {
    Transmitter downlink;
    Transmitter uplink;

    std::string id() const;     ///< "pair-<downlink Hz>-<uplink Hz>", truncated
    std::string label() const;  ///< "Mode B (435.150 ↑ / 145.900 ↓)"
    bool inverting() const { return downlink.inverting || uplink.inverting; }

    bool operator==(const TransponderPair&) const = default;
};

/// One choice offered for a satellite: a pair, or one channel alone.
struct TransmitterSelection {
    std::variant<TransponderPair, Transmitter> choice;

    const TransponderPair* pair() const { return std::get_if<TransponderPair>(&choice); }
    const Transmitter* single() const { return std::get_if<Transmitter>(&choice); }

    std::string id() const;
    std::string label() const;
    std::optional<Transmitter> downlink() const;
    std::optional<Transmitter> uplink() const;

    bool operator==(const TransmitterSelection&) const = default;
};

/// The choices in order: pairs by equal width, pairs by name, pairs by elimination, then what is
/// left. The data has no link between the halves of a transponder, so the pairing is inferred.
std::vector<TransmitterSelection> buildTransmitterSelections(
    const std::vector<Transmitter>& transmitters);

/// The uplink of the first pair whose downlink has exactly this centre.
std::optional<Transmitter> pairedUplink(const std::vector<Transmitter>& transmitters,
                                        double downlinkCenterHz);

/// The id of the choice to show as selected: the first whose downlink has exactly this centre, else
/// the first of all, else the empty text.
std::string shownSelectionId(const std::vector<TransmitterSelection>& selections,
                             std::optional<double> downlinkCenterHz);

/// FM goes with FM, any linear mode with any other; blanks and case are ignored.
bool modesAreCompatible(std::string_view a, std::string_view b);

}  // namespace veloran
