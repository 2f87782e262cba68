#pragma once

#include <string>
#include <vector>

#include "elements/tle_data.h"
#include "transmitters/transmitter.h"

namespace veloran {

/// Channels as records of the transmitter service, one record for each: a JSON array. Frequencies
/// have to be finite; tones, which the service does not have, are left out.
std::string serviceRecords(const std::vector<Transmitter>& channels);

/// Element sets as three lines each: what a user pastes.
std::string threeLineText(const std::vector<TLEData>& sets);

}  // namespace veloran
