#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/instant.h"

namespace veloran {

/// What the order of a search needs to know of one body.
struct SearchBody {
    bool isTracked = false;
    bool isShown = false;                   ///< its pass is the selected one
    bool isQueued = false;                  ///< a pass of it is in the queue
    bool isNew = false;                     ///< never searched: nothing of it can be shown
    std::optional<Instant> firstRise = {};  ///< of the known passes that have not set
};

/// In which order the bodies are searched, as indices: what somebody waits for or looks at first,
/// then the rows of the pass list from the top. Equal ones stay in their order.
std::vector<std::size_t> searchOrder(const std::vector<SearchBody>& bodies);

}  // namespace veloran
