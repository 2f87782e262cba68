#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/satellite.h"
#include "elements/tle_category.h"

namespace veloran {

// What the lists of satellites show of a catalogue, as pure functions.

/// The bodies of a catalogue in the order given, made ready to be searched at every keystroke: what
/// a search compares is worked out once.
class SatelliteSearch {
  public:
    SatelliteSearch() = default;
    explicit SatelliteSearch(std::vector<SatellitePtr> satellites);

    const std::vector<SatellitePtr>& satellites() const { return satellites_; }
    /// Those whose name, whatever its case, or whose catalogue number contains `text`, in order;
    /// all of them for an empty text.
    std::vector<SatellitePtr> matches(std::string_view text) const;

  private:
    /// Name in lower case, and number.
    struct Words {
        std::string name;
        std::string number;
    };

    std::vector<SatellitePtr> satellites_;
    std::vector<Words> words_;
};

/// Ascending by name; equal names keep their order.
std::vector<SatellitePtr> sortedByName(std::vector<SatellitePtr> satellites);

/// Satellites under one heading of the browser.
struct BrowserSection {
    std::string key;
    std::string label;
    std::vector<SatellitePtr> sats;
};

inline constexpr std::string_view kCelestialKey = "celestial";
inline constexpr std::string_view kCustomKey = "custom";
inline constexpr std::string_view kUncategorizedKey = "uncategorized";

/// Sun and Moon, each of `categories`, then the imported sets: those that hold a satellite. One
/// with several sources stands in each of them.
std::vector<BrowserSection> orderedCategories(const std::vector<SatellitePtr>& satellites,
                                              const std::vector<TLECategory>& categories);
/// Those without any source.
std::vector<SatellitePtr> uncategorizedSats(const std::vector<SatellitePtr>& satellites);

/// Whether the section stands for a group that can be downloaded, or left out of downloads.
bool isDownloadGroup(std::string_view sectionKey);

/// Those of `satellites` whose selected state is not `selected` yet.
std::vector<SatellitePtr> withOtherSelection(const std::vector<SatellitePtr>& satellites,
                                             bool selected);

}  // namespace veloran
