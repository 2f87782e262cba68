#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "elements/tle_data.h"

namespace veloran {

/// The tag of imported sets; it wins ties.
inline constexpr const char* kCustomSource = "custom";

/// Whether `candidate` replaces `incumbent`: newer by more than 60 seconds, or imported where the
/// incumbent is not and the epochs lie within 60 seconds. A set without an epoch neither replaces
/// another nor is replaced.
bool isFresherOrPreferred(const TLEData& candidate, const TLEData& incumbent);

/// One set for each catalogue number, in order of first appearance; `source` becomes the sorted
/// keys of all groups that listed the number, joined by ",".
std::vector<TLEData> mergeElements(const std::vector<std::vector<TLEData>>& lists);

/// The keys of a joined `source`.
std::set<std::string> splitSources(std::string_view source);

}  // namespace veloran
