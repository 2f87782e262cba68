#pragma once

#include <string>
#include <vector>

#include "elements/tle_data.h"

namespace veloran::fuzz {

/// All members alike, the lines and the source too.
bool isSame(const TLEData& a, const TLEData& b);
bool areSame(const std::vector<TLEData>& a, const std::vector<TLEData>& b);

/// The set has an epoch and finite numbers; its states and look angles, near the epoch and far from
/// it, are absent or finite and in their ranges, and asking twice gives the same.
void requireSoundOrbit(const TLEData& set);

/// A search of three hours that estimates heights and skips samples finds the passes of the plain
/// one.
void requireSameSearch(const TLEData& set);

/// The first of them, as many as an input has time for, and what a merge makes of them all.
void requireSoundSets(const std::vector<TLEData>& sets);

/// The classic lines of the set's numbers.
struct Lines {
    std::string line1;
    std::string line2;
};
Lines writtenLines(const TLEData& set);

/// Whether the lines have room for the numbers: no minus sign but before a small angle or the drag
/// term, and no more digits than columns.
bool fitsColumns(const TLEData& set);

/// The lines read, and give the numbers of `set` but for what rounding to their columns takes. A
/// drag term counts only where it stands in its columns.
void requireReadsBack(const TLEData& set, const Lines& lines);

}  // namespace veloran::fuzz
