// An answer with orbit mean-elements messages.

#include <fmt/format.h>

#include <algorithm>
#include <boost/json/serialize.hpp>
#include <cmath>
#include <string>

#include "base/text.h"
#include "checks.h"
#include "element_properties.h"
#include "elements/omm_parser.h"
#include "elements/plain_omm.h"
#include "elements/tle_manager.h"
#include "require.h"

namespace veloran::fuzz {

namespace {

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Whether an epoch text of day of January and seconds can say the epoch.
bool hasPlainEpoch(const TLEData& set) {
    return set.epochYear >= 1 && set.epochYear <= 9999 && set.epochDays >= 1 && set.epochDays < 366;
}

std::string message(const TLEData& set) {
    const double day = std::trunc(set.epochDays);
    const auto epoch = fmt::format("{}-01-{}T00:00:{}", set.epochYear, day,
                                   shortestText((set.epochDays - day) * 86400));
    return fmt::format(
        R"({{"OBJECT_NAME":{},"NORAD_CAT_ID":{},"EPOCH":"{}","MEAN_MOTION":{},"ECCENTRICITY":{},)"
        R"("INCLINATION":{},"RA_OF_ASC_NODE":{},"ARG_OF_PERICENTER":{},"MEAN_ANOMALY":{},)"
        R"("BSTAR":{},"REV_AT_EPOCH":{}}})",
        boost::json::serialize(boost::json::string_view(set.name)), set.noradId, epoch,
        shortestText(set.meanMotion), shortestText(set.eccentricity), shortestText(set.inclination),
        shortestText(set.raan), shortestText(set.argPerigee), shortestText(set.meanAnomaly),
        shortestText(set.bstar), set.revNumber);
}

void requireComesBack(const TLEData& set) {
    const auto read = OMMParser::parse("[" + message(set) + "]");
    require(read.size() == 1, "a message that is written reads");
    TLEData back = read.front();
    require(std::abs(back.epochDays - set.epochDays) <= 1e-9, "an epoch reads back");
    back.epochDays = set.epochDays;
    // Written without what the lines have and the set has not.
    back.line1 = set.line1;
    require(isSame(back, set), "a message reads back the same");
}

void requireItsOwnLines(const TLEData& set) {
    require(characters(set.line1).size() == 69 && characters(set.line2).size() == 69,
            "lines have 69 characters");
    if (isAscii(set.line1) && fitsColumns(set)) requireReadsBack(set, {set.line1, set.line2});
}

}  // namespace

void checkOmmJson(std::string_view bytes) {
    const auto sets = OMMParser::parse(bytes);
    require(areSame(sets, test::parsePlainly(bytes)), "a tree of values gives the same messages");
    require(sets.empty() || OMMParser::looksLikeJSON(bytes), "a list of messages looks like JSON");
    require(sets.empty() || areSame(TLEManager::parseAuto(bytes), sets),
            "an answer with messages is taken as such");
    for (const auto& set : sets) {
        requireItsOwnLines(set);
        if (hasPlainEpoch(set)) requireComesBack(set);
    }
    requireSoundSets(sets);
}

}  // namespace veloran::fuzz
