#include "ui/browser/browser_rows.h"

#include <fmt/format.h>

#include <limits>

#include "ui/satellite_texts.h"

namespace veloran {

namespace {

std::string counted(std::size_t count, std::string_view thing) {
    return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

}  // namespace

SectionLook sectionLook(const BrowserSection& section, std::size_t selectedCount,
                        const std::set<std::string>& subscribed) {
    return {.label = section.label,
            .satellites = section.sats.size(),
            .selected = selectedCount,
            .isSubscribed = isDownloadGroup(section.key)
                                ? std::optional(subscribed.contains(section.key))
                                : std::nullopt,
            .canClear = section.key == kCustomKey};
}

SatelliteRowLook satelliteRowLook(const Satellite& satellite, Instant now) {
    const auto& tle = satellite.tle;
    const auto days = tle ? tle->ageDays(now) : std::nullopt;
    const auto& channels = satellite.transmitters;
    return {.name = satellite.name,
            .color = SatelliteColorPalette::color(satellite.id),
            .isSelected = satellite.isSelected,
            .number = std::to_string(satellite.id),
            .age = tle ? tle->ageString(now) : "",
            .ageInk = {ageColor(days.value_or(std::numeric_limits<double>::infinity())), 0.8},
            .channels = channels.size(),
            .frequency = channels.empty() ? "" : channels.front().displayFreqMHz()};
}

std::string spokenSection(const SectionLook& look) {
    std::string text = fmt::format("{}, {}", look.label, counted(look.satellites, "satellite"));
    if (look.selected > 0) text += fmt::format(", {} selected", look.selected);
    if (look.isSubscribed) text += *look.isSubscribed ? ", subscribed" : ", not subscribed";
    return text;
}

std::string spokenSatelliteRow(const SatelliteRowLook& look) {
    std::string text = fmt::format("{}, {}, NORAD {}", look.name,
                                   look.isSelected ? "tracked" : "not tracked", look.number);
    if (!look.age.empty()) text += fmt::format(", elements {} old", look.age);
    if (look.channels > 0) {
        text += fmt::format(", {}, {}", counted(look.channels, "transmitter"), look.frequency);
    }
    return text;
}

}  // namespace veloran
