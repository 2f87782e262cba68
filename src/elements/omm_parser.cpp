#include "elements/omm_parser.h"

#include <optional>
#include <utility>

#include "base/text.h"
#include "elements/omm_lines.h"
#include "elements/omm_reader.h"

namespace veloran::OMMParser {

namespace {

std::optional<TLEData> tleData(const OMMRecord& record) {
    const auto epoch = omm_lines::parseEpoch(record.epoch);
    if (!epoch) return std::nullopt;
    TLEData set;
    set.name = record.objectName;
    set.noradId = record.noradCatId;
    set.line1 = omm_lines::synthesizeLine1({.noradId = record.noradCatId,
                                            .classification = record.classificationType,
                                            .intlDesignator = record.objectId,
                                            .epoch = *epoch,
                                            .meanMotionDot = record.meanMotionDot,
                                            .meanMotionDdot = record.meanMotionDdot,
                                            .bstar = record.bstar,
                                            .ephemerisType = record.ephemerisType,
                                            .elementSetNo = record.elementSetNo});
    set.line2 = omm_lines::synthesizeLine2({.noradId = record.noradCatId,
                                            .inclination = record.inclination,
                                            .raan = record.raOfAscNode,
                                            .eccentricity = record.eccentricity,
                                            .argPerigee = record.argOfPericenter,
                                            .meanAnomaly = record.meanAnomaly,
                                            .meanMotion = record.meanMotion,
                                            .revNumber = record.revAtEpoch});
    set.epochYear = epoch->year;
    set.epochDays = epoch->days;
    set.bstar = record.bstar;
    set.inclination = record.inclination;
    set.raan = record.raOfAscNode;
    set.eccentricity = record.eccentricity;
    set.argPerigee = record.argOfPericenter;
    set.meanAnomaly = record.meanAnomaly;
    set.meanMotion = record.meanMotion;
    set.revNumber = record.revAtEpoch;
    // A time of day of 1e300 seconds reads as a number, but no calendar has that day.
    if (!set.epochDate()) return std::nullopt;
    return set;
}

}  // namespace

std::vector<TLEData> parse(std::string_view text) {
    std::vector<TLEData> sets;
    const bool isSound = readOMM(text, [&sets](const OMMRecord& record) {
        if (!omm_lines::fitsEccentricity(record.eccentricity)) return false;
        if (auto set = tleData(record)) sets.push_back(std::move(*set));
        return true;
    });
    if (!isSound) sets.clear();  // an answer is sound as a whole or not at all
    return sets;
}

bool looksLikeJSON(std::string_view text) {
    text = trimmed(text, Blanks::withNewlines);
    return text.starts_with('[') || text.starts_with('{');
}

}  // namespace veloran::OMMParser
