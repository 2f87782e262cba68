#pragma once

#include <cstdint>

namespace veloran {

/// Propagator state of one satellite, under the field names of the published routine
/// (Spacetrack Report No. 3 and its revision of 2006). Made by TLEParser::createSatRec; from then
/// on shared as `const`.
struct SatRec {
    // Identity and input elements: radians, radians per minute.
    std::int64_t satnum = 0;
    std::int64_t epochyr = 0;  // two digits
    double epochdays = 0, ndot = 0, nddot = 0, bstar = 0, inclo = 0, nodeo = 0, ecco = 0, argpo = 0,
           mo = 0, no_kozai = 0;

    // Shape: Earth radii; alta and altp above the surface.
    double a = 0, alta = 0, altp = 0;

    // Epoch, two-part Julian date.
    double jdsatepoch = 0, jdsatepochF = 0;

    double no_unkozai = 0;

    // Beside the published fields: what every propagation needs of the epoch orbit.
    double sinio = 0, cosio = 0;  // of the inclination
    double ao = 0;                // semi-major axis, Earth radii

    std::int64_t isimp = 0;  // 1: simplified drag
    char method = 'n';       // 'd': period of 225 minutes or more

    // Near-Earth terms.
    double aycof = 0, con41 = 0, cc1 = 0, cc4 = 0, cc5 = 0, d2 = 0, d3 = 0, d4 = 0, delmo = 0,
           eta = 0, argpdot = 0, omgcof = 0, sinmao = 0, t = 0, t2cof = 0, t3cof = 0, t4cof = 0,
           t5cof = 0, x1mth2 = 0, x7thm1 = 0, mdot = 0, nodedot = 0, xlcof = 0, xmcof = 0,
           nodecf = 0;

    // Deep-space block of the published layout, kept for a later deep-space theory. Only irez,
    // atime, xli, xni and gsto are written, and only the five rates dedt, didt, dmdt, dnodt and
    // domdt are read; they stay 0.
    std::int64_t irez = 0;
    double d2201 = 0, d2211 = 0, d3210 = 0, d3222 = 0, d4410 = 0, d4422 = 0, d5220 = 0, d5232 = 0,
           d5421 = 0, d5433 = 0, dedt = 0, del1 = 0, del2 = 0, del3 = 0, didt = 0, dmdt = 0,
           dnodt = 0, domdt = 0, e3 = 0, ee2 = 0, peo = 0, pgho = 0, pho = 0, pinco = 0, plo = 0,
           se2 = 0, se3 = 0, sgh2 = 0, sgh3 = 0, sgh4 = 0, sh2 = 0, sh3 = 0, si2 = 0, si3 = 0,
           sl2 = 0, sl3 = 0, sl4 = 0, gsto = 0, xfact = 0, xgh2 = 0, xgh3 = 0, xgh4 = 0, xh2 = 0,
           xh3 = 0, xi2 = 0, xi3 = 0, xl2 = 0, xl3 = 0, xl4 = 0, xlamo = 0, zmol = 0, zmos = 0,
           atime = 0, xli = 0, xni = 0;

    std::int64_t error = 0;
    char operationmode = 'i';
    bool initDone = false;
};

}  // namespace veloran
