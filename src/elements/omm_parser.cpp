#include "elements/omm_parser.h"

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "base/json.h"
#include "base/text.h"
#include "elements/omm_lines.h"

namespace veloran::OMMParser {

namespace {

namespace json = boost::json;

/// One message, named as in the standard.
struct OMMRecord {
    std::string objectName;
    std::int64_t noradCatId = 0;
    std::string epoch;
    double meanMotion = 0;
    double eccentricity = 0;
    double inclination = 0;
    double raOfAscNode = 0;
    double argOfPericenter = 0;
    double meanAnomaly = 0;
    double bstar = 0;
    std::string classificationType;
    std::int64_t elementSetNo = 0;
    std::int64_t revAtEpoch = 0;
    double meanMotionDot = 0;
    double meanMotionDdot = 0;
    std::string objectId;
    std::int64_t ephemerisType = 0;
};

bool read(const json::value& value, std::string& target) {
    const auto* text = value.if_string();
    if (!text) return false;
    target.assign(text->data(), text->size());
    return true;
}

bool read(const json::value& value, double& target) {
    if (!value.is_number()) return false;
    target = value.to_number<double>();
    return std::isfinite(target);
}

/// A whole number may be written as 25544.0 too.
bool read(const json::value& value, std::int64_t& target) {
    if (const auto* whole = value.if_int64()) {
        target = *whole;
        return true;
    }
    const auto* number = value.if_double();
    if (!number || std::trunc(*number) != *number || !(std::abs(*number) < 0x1p63)) return false;
    target = static_cast<std::int64_t>(*number);
    return true;
}

template <class T>
bool readRequired(const json::object& object, std::string_view key, T& target) {
    const auto* value = object.if_contains(key);
    return value && read(*value, target);
}

template <class T>
bool readOptional(const json::object& object, std::string_view key, T& target) {
    const auto* value = object.if_contains(key);
    return !value || value->is_null() || read(*value, target);
}

std::optional<OMMRecord> decode(const json::value& value) {
    const auto* object = value.if_object();
    if (!object) return std::nullopt;
    OMMRecord record;
    const bool complete = readRequired(*object, "OBJECT_NAME", record.objectName) &&
                          readRequired(*object, "NORAD_CAT_ID", record.noradCatId) &&
                          readRequired(*object, "EPOCH", record.epoch) &&
                          readRequired(*object, "MEAN_MOTION", record.meanMotion) &&
                          readRequired(*object, "ECCENTRICITY", record.eccentricity) &&
                          readRequired(*object, "INCLINATION", record.inclination) &&
                          readRequired(*object, "RA_OF_ASC_NODE", record.raOfAscNode) &&
                          readRequired(*object, "ARG_OF_PERICENTER", record.argOfPericenter) &&
                          readRequired(*object, "MEAN_ANOMALY", record.meanAnomaly) &&
                          readRequired(*object, "BSTAR", record.bstar) &&
                          readOptional(*object, "CLASSIFICATION_TYPE", record.classificationType) &&
                          readOptional(*object, "ELEMENT_SET_NO", record.elementSetNo) &&
                          readOptional(*object, "REV_AT_EPOCH", record.revAtEpoch) &&
                          readOptional(*object, "MEAN_MOTION_DOT", record.meanMotionDot) &&
                          readOptional(*object, "MEAN_MOTION_DDOT", record.meanMotionDdot) &&
                          readOptional(*object, "OBJECT_ID", record.objectId) &&
                          readOptional(*object, "EPHEMERIS_TYPE", record.ephemerisType);
    if (!complete || !omm_lines::fitsEccentricity(record.eccentricity)) return std::nullopt;
    return record;
}

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
    const auto root = parseJson(text);
    const auto* array = root ? root->if_array() : nullptr;
    if (!array) return {};
    std::vector<TLEData> sets;
    for (const auto& element : *array) {
        const auto record = decode(element);
        if (!record) return {};  // an answer is sound as a whole or not at all
        if (auto set = tleData(*record)) sets.push_back(std::move(*set));
    }
    return sets;
}

bool looksLikeJSON(std::string_view text) {
    text = trimmed(text, Blanks::withNewlines);
    return text.starts_with('[') || text.starts_with('{');
}

}  // namespace veloran::OMMParser
