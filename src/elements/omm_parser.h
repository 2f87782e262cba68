#pragma once

#include <string_view>
#include <vector>

#include "elements/tle_data.h"

namespace veloran {

/// Orbit mean-elements messages: a JSON array of records, each turned into an element set with the
/// exact numbers of the message and the two lines the classic service would have sent.
namespace OMMParser {

/// Empty when the text is not a JSON array in which every record has what it must, and when one of
/// them has an eccentricity too large for the digits of a line (see omm_lines::fitsEccentricity). A
/// record whose epoch does not read, or is in no calendar, is left out alone.
std::vector<TLEData> parse(std::string_view text);

/// Whether the first character that is not blank opens a JSON array or object.
bool looksLikeJSON(std::string_view text);

}  // namespace OMMParser

}  // namespace veloran
