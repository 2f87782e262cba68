#pragma once

#include <string_view>
#include <vector>

#include "elements/tle_data.h"

namespace veloran::test {

/// What OMMParser::parse gives, found the plain way: by a tree of values, and lines from one format
/// each.
std::vector<TLEData> parsePlainly(std::string_view text);

}  // namespace veloran::test
