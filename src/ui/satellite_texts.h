#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "elements/user_tle_source.h"
#include "ui/ink.h"

namespace veloran {

// What lists of satellites say about one, as pure functions.

/// Where its elements came from: "amateur · Custom · My List". A source of the user's own shows
/// under its name, or what its key tells of that.
std::string sourceDisplay(const std::set<std::string>& sources,
                          const std::vector<UserTLESource>& userSources);
std::string sourcesHelp(const std::set<std::string>& sources);  ///< the keys, "amateur, custom"
/// "12 upcoming passes in the prediction window".
std::string passesHelp(std::size_t count);
/// How far elements of this age, in days, may be trusted; an age that is no number counts as old.
Ink ageColor(double days);
/// How stale a download of elements is, by its age in seconds.
Ink elementAgeColor(double seconds);

}  // namespace veloran
