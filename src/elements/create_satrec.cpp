#include <cmath>

#include "base/calendar.h"
#include "elements/tle_parser.h"
#include "orbit/constants.h"
#include "orbit/look_angles.h"
#include "orbit/sgp4.h"

namespace veloran {

namespace {

/// Below this perigee height (km) the simplified drag equations are used.
constexpr double simplifiedDragPerigee = 220.0;

void copyElements(SatRec& satrec, const TLEData& tle) {
    satrec.satnum = tle.noradId;
    satrec.epochyr = tle.epochYear % 100;
    satrec.epochdays = tle.epochDays;
    satrec.bstar = tle.bstar;
    satrec.ecco = tle.eccentricity;
    satrec.inclo = tle.inclination * deg2rad;
    satrec.nodeo = tle.raan * deg2rad;
    satrec.argpo = tle.argPerigee * deg2rad;
    satrec.mo = tle.meanAnomaly * deg2rad;
    satrec.no_kozai = tle.meanMotion / xpdotp;
}

/// False where the calendar has no such day.
bool setEpoch(SatRec& satrec, const TLEData& tle) {
    const auto epoch = tle.epochParts();
    if (!epoch) return false;
    const CivilTime date = civilTime(epoch->midnight);
    const JulianDate julian = jday(date.year, date.month, date.day, 0, 0, 0.0);
    satrec.jdsatepoch = julian.jd;
    satrec.jdsatepochF = julian.jdFrac + epoch->dayFraction;
    return true;
}

double perigeeHeightKm(const SatRec& satrec) {
    using namespace WGS84;
    return (std::pow(xke / satrec.no_kozai, 2.0 / 3.0) * (1.0 - satrec.ecco) - 1.0) * radiusEarthKm;
}

SatRec refused(SatRec satrec, Sgp4Error error) {
    satrec.error = static_cast<std::int64_t>(error);
    return satrec;
}

}  // namespace

SatRec TLEParser::createSatRec(const TLEData& tle) {
    SatRec satrec;
    copyElements(satrec, tle);
    // Without rates, such a record has no mean motion, which is what its propagation will tell.
    if (!setEpoch(satrec, tle)) return refused(satrec, Sgp4Error::meanMotion);
    if (!(satrec.ecco < 1.0 && satrec.ecco >= 0.0)) return refused(satrec, Sgp4Error::eccentricity);
    satrec.operationmode = 'i';
    satrec.isimp = perigeeHeightKm(satrec) < simplifiedDragPerigee ? 1 : 0;
    sgp4init(satrec);
    return satrec;
}

}  // namespace veloran
