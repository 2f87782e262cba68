#pragma once

#include <memory>
#include <optional>

#include "base/instant.h"
#include "orbit/pass_predictor.h"

namespace veloran {

/// What a list of passes was searched for.
struct PassSearch {
    Instant start;
    Instant end;
    double obsLat = 0;        ///< degrees north
    double obsLon = 0;        ///< degrees east
    double obsAltMeters = 0;  ///< metres

    bool isForObserverOf(const PassSearch& other) const {
        return obsLat == other.obsLat && obsLon == other.obsLon &&
               obsAltMeters == other.obsAltMeters;
    }
};

/// The list of passes that a body had before the present search of it.
struct FormerPasses {
    std::shared_ptr<const PassList> list;
    PassSearch search;
    bool sameElements = true;  ///< whether the present search is over the same elements
};

/// The list to show after a search that found `found`. A search sees nothing before its start: of a
/// pass under way it finds the rest, as if it had risen just then, or nothing where the rest stays
/// low. So the entry of that pass in the former list stays as it is, in place of the one found, or
/// in front. But
/// - for an observer elsewhere what was found stands;
/// - of an entry that the end of the former search had cut, rise and early track stay and the rest
///   is what was found;
/// - with other elements likewise, but the peak stays where it was the higher one.
PassList renewedPasses(PassList found, const PassSearch& search, const FormerPasses& former);

}  // namespace veloran
