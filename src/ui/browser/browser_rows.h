#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>

#include "base/instant.h"
#include "ui/browser/browser_lists.h"
#include "ui/paint.h"

namespace veloran {

// What the rows of the browser look like, as pure functions.

/// The heading of a section.
struct SectionLook {
    std::string label;
    std::size_t satellites = 0;
    std::size_t selected = 0;
    std::optional<bool> isSubscribed = {};  ///< absent: nothing to subscribe to, no switch
    bool canClear = false;
    bool operator==(const SectionLook&) const = default;
};
SectionLook sectionLook(const BrowserSection& section, std::size_t selectedCount,
                        const std::set<std::string>& subscribed);

/// One satellite of a section. What is unknown has an empty text.
struct SatelliteRowLook {
    std::string name;
    RgbColor color;  ///< of the dot while selected
    bool isSelected = false;
    std::string number;
    std::string age;
    Tint ageInk;
    std::size_t channels = 0;
    std::string frequency;  ///< of the first channel
    bool operator==(const SatelliteRowLook&) const = default;
};
SatelliteRowLook satelliteRowLook(const Satellite& satellite, Instant now);

/// The rows in words.
std::string spokenSection(const SectionLook& look);
std::string spokenSatelliteRow(const SatelliteRowLook& look);

}  // namespace veloran
