#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace veloran {

/// One orbit mean-elements message, its members named as in the standard. Absent ones are empty
/// or 0.
struct OMMRecord {
    std::string objectName;
    std::string objectId;
    std::string epoch;
    double meanMotion = 0;
    double eccentricity = 0;
    double inclination = 0;
    double raOfAscNode = 0;
    double argOfPericenter = 0;
    double meanAnomaly = 0;
    std::int64_t ephemerisType = 0;
    std::string classificationType;
    std::int64_t noradCatId = 0;
    std::int64_t elementSetNo = 0;
    std::int64_t revAtEpoch = 0;
    double bstar = 0;
    double meanMotionDot = 0;
    double meanMotionDdot = 0;
};

/// Hands the messages of a JSON array to `take` as they are read, until it refuses one. True where
/// the text was sound to its end; otherwise those handed over before are worth nothing either.
///
/// Each element is an object with all of OBJECT_NAME, EPOCH, MEAN_MOTION, ECCENTRICITY,
/// INCLINATION, RA_OF_ASC_NODE, ARG_OF_PERICENTER, MEAN_ANOMALY, NORAD_CAT_ID and BSTAR; the other
/// members may be absent or null. Numbers are finite, and a whole one may be written as 25544.0.
/// Members with other names may hold anything. Of equal names the last one counts.
bool readOMM(std::string_view text, const std::function<bool(const OMMRecord&)>& take);

}  // namespace veloran
