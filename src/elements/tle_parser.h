#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "elements/tle_data.h"
#include "orbit/satrec.h"

namespace veloran {

/// The classic two-line form, read by columns and laxly: no checksum, no second look at the
/// catalogue number. Every element set of the program passes through here.
namespace TLEParser {

/// All sets of a text, with or without name lines ("Unknown" without); bad blocks are left out.
std::vector<TLEData> parse(std::string_view text);

/// Absent when a line has fewer than 69 characters, when a number does not read, and when no
/// calendar has the epoch. A bad drag term or revolution number reads as 0. `source` is left empty.
std::optional<TLEData> parseTwoLines(std::string_view name, std::string_view line1,
                                     std::string_view line2);

/// "12345-3" is 0.12345e-3; 0 for what does not read.
double parseExponentNotation(std::string_view text);

/// Always a record, whatever the numbers are. An eccentricity outside 0 up to 1 gives `error` 1, an
/// epoch beyond the calendar `error` 2: such a record is not initialised (`initDone` false) and
/// propagates to absent, with error 2, at every time. Otherwise `error` is that of the epoch state.
SatRec createSatRec(const TLEData& tle);

}  // namespace TLEParser

}  // namespace veloran
