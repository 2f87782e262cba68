#pragma once

#include <string>

#include "base/instant.h"
#include "core/downloads.h"

namespace veloran {

/// What the row of a source says of its downloads: "asking…", "98 records, 2h ago", or nothing as
/// long as nothing is known.
std::string sourceDetail(const Downloads& downloads, const std::string& key, Instant now);

}  // namespace veloran
