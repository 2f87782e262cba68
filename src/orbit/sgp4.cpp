#include "orbit/sgp4.h"

#include <cmath>
#include <cstdint>

#include "orbit/angles.h"
#include "orbit/constants.h"
#include "orbit/look_angles.h"

// The near-Earth theory of Hoots and Roehrich, Spacetrack Report No. 3 (1980), in the layout and
// order of operations of Vallado, Crawford, Hujsak and Kelso, Revisiting Spacetrack Report #3
// (AIAA 2006-6753). Units inside: Earth radii, radians, minutes. Where a line departs from the
// published one, a comment marked "Here:" says how.

namespace veloran {

namespace {

using namespace WGS84;

constexpr double x2o3 = 2.0 / 3.0;
constexpr double vkmpersec = radiusEarthKm * xke / 60.0;

/// Period in minutes from which the published routine changes to its deep-space theory.
constexpr double deepSpacePeriod = 225.0;

double cubed(double x) {
    return x * x * x;
}

double toTheFourth(double x) {
    return x * x * x * x;
}

/// What initialisation needs of the epoch orbit and the record does not keep.
struct EpochOrbit {
    double sinio, cosio, cosio2;  // of the inclination
    double omeosq;                // 1 - e^2
    double rteosq;                // its square root
    double ao;                    // semi-major axis
    double con42;
    double posq;  // square of the semi-latus rectum
};

/// The density function of the drag theory: (q0 - s)^4 and s, by the height of the perigee.
struct Atmosphere {
    double qzms24 = toTheFourth((120.0 - 78.0) / radiusEarthKm);
    double sfour = 78.0 / radiusEarthKm + 1.0;
};

/// Products shared by the drag coefficients.
struct DragTerms {
    double pinvsq, tsi, etasq, eeta, psisq, coef, coef1, cc3;
};

/// Removes Kozai's part from the mean motion.
EpochOrbit recoverMeanMotion(SatRec& s) {
    EpochOrbit o{};
    o.sinio = std::sin(s.inclo);
    o.cosio = std::cos(s.inclo);
    o.cosio2 = o.cosio * o.cosio;
    const double eccsq = s.ecco * s.ecco;
    o.omeosq = 1.0 - eccsq;
    o.rteosq = std::sqrt(o.omeosq);

    const double ak = std::pow(xke / s.no_kozai, x2o3);
    const double d1 = 0.75 * j2 * (3.0 * o.cosio2 - 1.0) / (o.rteosq * o.omeosq);
    double del = d1 / (ak * ak);
    const double adel = ak * (1.0 - del * del - del * (1.0 / 3.0 + 134.0 * del * del / 81.0));
    del = d1 / (adel * adel);
    s.no_unkozai = s.no_kozai / (1.0 + del);

    o.ao = std::pow(xke / s.no_unkozai, x2o3);
    const double po = o.ao * o.omeosq;
    o.con42 = 1.0 - 5.0 * o.cosio2;
    o.posq = po * po;
    s.sinio = o.sinio;
    s.cosio = o.cosio;
    s.ao = o.ao;
    return o;
}

void setLongPeriodTerms(SatRec& s, const EpochOrbit& o) {
    constexpr double temp4 = 1.5e-12;  // stands in for 1 + cos i at an inclination of 180 degrees
    const double divisor = std::abs(o.cosio + 1.0) > temp4 ? 1.0 + o.cosio : temp4;
    s.xlcof = -0.25 * j3oj2 * o.sinio * (3.0 + 5.0 * o.cosio) / divisor;
    s.aycof = -0.5 * j3oj2 * o.sinio;
}

Atmosphere atmosphereFor(double altp) {
    Atmosphere atmosphere;
    const double perigeeKm = altp * radiusEarthKm;
    if (perigeeKm < 156.0) {
        const double sKm = perigeeKm < 98.0 ? 20.0 : perigeeKm - 78.0;
        atmosphere.qzms24 = toTheFourth((120.0 - sKm) / radiusEarthKm);
        atmosphere.sfour = sKm / radiusEarthKm + 1.0;
    }
    return atmosphere;
}

DragTerms setDragCoefficients(SatRec& s, const EpochOrbit& o, const Atmosphere& atmosphere) {
    DragTerms d{};
    d.pinvsq = 1.0 / o.posq;
    d.tsi = 1.0 / (o.ao - atmosphere.sfour);
    s.eta = o.ao * s.ecco * d.tsi;
    d.etasq = s.eta * s.eta;
    d.eeta = s.ecco * s.eta;
    d.psisq = std::abs(1.0 - d.etasq);
    d.coef = atmosphere.qzms24 * std::pow(d.tsi, 4.0);
    d.coef1 = d.coef / std::pow(d.psisq, 3.5);
    const double cc2 =
        d.coef1 * s.no_unkozai *
        (o.ao * (1.0 + 1.5 * d.etasq + d.eeta * (4.0 + d.etasq)) +
         0.375 * j2 * d.tsi / d.psisq * s.con41 * (8.0 + 3.0 * d.etasq * (8.0 + d.etasq)));
    s.cc1 = s.bstar * cc2;
    d.cc3 = s.ecco > 1.0e-4 ? -2.0 * d.coef * d.tsi * j3oj2 * s.no_unkozai * o.sinio / s.ecco : 0.0;
    // Here: cc4 and cc5 carry sqrt(1 - e^2) where the published text has 1 - e^2.
    s.cc4 = 2.0 * s.no_unkozai * d.coef1 * o.ao * o.rteosq *
            (s.eta * (2.0 + 0.5 * d.etasq) + s.ecco * (0.5 + 2.0 * d.etasq) -
             j2 * d.tsi / (o.ao * d.psisq) *
                 (-3.0 * s.con41 * (1.0 - 2.0 * d.eeta + d.etasq * (1.5 - 0.5 * d.eeta)) +
                  0.75 * s.x1mth2 * (2.0 * d.etasq - d.eeta * (1.0 + d.etasq)) *
                      std::cos(2.0 * s.argpo)));
    s.cc5 = 2.0 * d.coef1 * o.ao * o.rteosq * (1.0 + 2.75 * (d.etasq + d.eeta) + d.eeta * d.etasq);
    return d;
}

void setSecularRates(SatRec& s, const EpochOrbit& o, const DragTerms& d) {
    const double cosio4 = o.cosio2 * o.cosio2;
    const double temp1 = 1.5 * j2 * d.pinvsq * s.no_unkozai;
    const double temp2 = 0.5 * temp1 * j2 * d.pinvsq;
    const double temp3 = -0.46875 * j4 * d.pinvsq * d.pinvsq * s.no_unkozai;
    s.mdot = s.no_unkozai + 0.5 * temp1 * o.rteosq * s.con41 +
             0.0625 * temp2 * o.rteosq * (13.0 - 78.0 * o.cosio2 + 137.0 * cosio4);
    s.argpdot = -0.5 * temp1 * o.con42 +
                0.0625 * temp2 * (7.0 - 114.0 * o.cosio2 + 395.0 * cosio4) +
                temp3 * (3.0 - 36.0 * o.cosio2 + 49.0 * cosio4);
    const double xhdot1 = -temp1 * o.cosio;
    s.nodedot =
        xhdot1 +
        (0.5 * temp2 * (4.0 - 19.0 * o.cosio2) + 2.0 * temp3 * (3.0 - 7.0 * o.cosio2)) * o.cosio;
    s.omgcof = s.bstar * d.cc3 * std::cos(s.argpo);
    // Here: the factor 2 pi / 1440 is not in the published text.
    s.xmcof =
        s.ecco > 1.0e-4 ? (-twoPi / minutesPerDay) * d.coef * s.bstar / d.eeta * 2.0 / 3.0 : 0.0;
    // Here: sqrt(1 - e^2) where the published text has 1 - e^2.
    s.nodecf = 3.5 * o.rteosq * xhdot1 * s.cc1;
    s.t2cof = 1.5 * s.cc1;
}

void setHigherDragTerms(SatRec& s, const EpochOrbit& o, const DragTerms& d, double sfour) {
    const double cc1sq = s.cc1 * s.cc1;
    s.d2 = 4.0 * o.ao * d.tsi * cc1sq;
    const double temp = s.d2 * d.tsi * s.cc1 / 3.0;
    s.d3 = (17.0 * o.ao + sfour) * temp;
    s.d4 = 0.5 * temp * o.ao * d.tsi * (221.0 * o.ao + 31.0 * sfour) * s.cc1;
    s.t3cof = s.d2 + 2.0 * cc1sq;
    s.t4cof = 0.25 * (3.0 * s.d3 + s.cc1 * (12.0 * s.d2 + 10.0 * cc1sq));
    s.t5cof = 0.2 * (3.0 * s.d4 + 12.0 * s.cc1 * s.d3 + 6.0 * s.d2 * s.d2 +
                     15.0 * cc1sq * (2.0 * s.d2 + cc1sq));
}

/// Mean elements at a time: m, node and argument of perigee not yet reduced to one turn.
struct MeanElements {
    double nm, em, inclm, argpm, mm, nodem;
    double tempa, tempe, templ;  // drag on the axis, the eccentricity and the longitude
};

MeanElements secularElements(const SatRec& s, double t) {
    MeanElements m{};
    const double xmdf = s.mo + s.mdot * t;
    const double argpdf = s.argpo + s.argpdot * t;
    const double nodedf = s.nodeo + s.nodedot * t;
    m.argpm = argpdf;
    m.mm = xmdf;
    const double t2 = t * t;
    m.nodem = nodedf + s.nodecf * t2;
    m.tempa = 1.0 - s.cc1 * t;
    m.tempe = s.bstar * s.cc4 * t;
    m.templ = s.t2cof * t2;
    if (s.isimp != 1) {
        const double delomg = s.omgcof * t;
        const SineCosine anomaly = sineCosine(xmdf);
        const double delm = s.xmcof * (cubed(1.0 + s.eta * anomaly.cosine) - s.delmo);
        const double temp = delomg + delm;
        m.mm = xmdf + temp;
        m.argpm = argpdf - temp;
        const double t3 = t2 * t;
        const double t4 = t3 * t;
        m.tempa = m.tempa - s.d2 * t2 - s.d3 * t3 - s.d4 * t4;
        m.tempe = m.tempe + s.bstar * s.cc5 * (anomaly.turnedBy(temp).sine - s.sinmao);
        m.templ = m.templ + s.t3cof * t3 + t4 * (s.t4cof + t * s.t5cof);
    }
    m.nm = s.no_unkozai;
    m.em = s.ecco;
    m.inclm = s.inclo;
    if (s.method == 'd') {  // Here: linear rates in place of the deep-space theory.
        m.nm += s.dmdt * t;
        m.em += s.dedt * t;
        m.inclm += s.didt * t;
        m.argpm += s.domdt * t;
        m.mm += s.dmdt * t - s.domdt * t;
        m.nodem += s.dnodt * t;
    }
    return m;
}

/// Kepler's equation in the equinoctial form, u = E + aynl cos E - axnl sin E. Here: at most ten
/// steps of any size, and the test is on the residual before the step.
SineCosine solveKepler(double u, double axnl, double aynl) {
    double eo1 = u;
    SineCosine eccentric = sineCosine(eo1);
    for (int step = 0; step < 10; ++step) {
        const double f = u - eo1 + axnl * eccentric.sine - aynl * eccentric.cosine;
        const double d = 1.0 - axnl * eccentric.cosine - aynl * eccentric.sine;
        if (std::abs(f) < 1.0e-12) break;
        const double correction = f / d;
        eo1 += correction;
        eccentric = isSmall(correction) ? eccentric.turnedBy(correction) : sineCosine(eo1);
    }
    return eccentric;
}

/// The orbit with short-period periodics: radius and rates in Earth radii, su, xnode and xinc the
/// argument of latitude, node and inclination.
struct OsculatingOrbit {
    double mrt, mvt, rvdot;
    SineCosine su, xnode, xinc;
};

/// What a caller wants to know; the velocity takes a quarter of the time.
enum class Wanted { state, position };

template <Wanted wanted>
SGP4Result stateOf(const OsculatingOrbit& o) {
    const auto [sinsu, cossu] = o.su;
    const auto [snod, cnod] = o.xnode;
    const auto [sini, cosi] = o.xinc;
    const double xmx = -snod * cosi;
    const double xmy = cnod * cosi;
    const Vec3 u{xmx * sinsu + cnod * cossu, xmy * sinsu + snod * cossu, sini * sinsu};
    SGP4Result state;
    state.position = {o.mrt * u.x * radiusEarthKm, o.mrt * u.y * radiusEarthKm,
                      o.mrt * u.z * radiusEarthKm};
    if constexpr (wanted == Wanted::state) {
        const Vec3 v{xmx * cossu - cnod * sinsu, xmy * cossu - snod * sinsu, sini * cossu};
        state.velocity = {(o.mvt * u.x + o.rvdot * v.x) * vkmpersec,
                          (o.mvt * u.y + o.rvdot * v.y) * vkmpersec,
                          (o.mvt * u.z + o.rvdot * v.z) * vkmpersec};
    }
    return state;
}

bool isFinite(const Vec3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

Propagation failure(Sgp4Error error) {
    return {error, {}};
}

/// Whether an orbit is so far from what overflows that its velocity is finite if its position is.
bool isModerate(double am, double pl, double rl) {
    return am < 1.0e6 && pl > 1.0e-6 && rl > 1.0e-6;
}

/// From mean elements with drag applied, angles reduced, to the state.
template <Wanted wanted>
Propagation withPeriodics(const SatRec& s, const MeanElements& m, double am) {
    const SineCosine inclination =
        m.inclm == s.inclo ? SineCosine{s.sinio, s.cosio} : sineCosine(m.inclm);
    const auto [sinip, cosip] = inclination;
    const SineCosine perigee = sineCosine(m.argpm);

    // Long-period periodics.
    const double axnl = m.em * perigee.cosine;
    double temp = 1.0 / (am * (1.0 - m.em * m.em));
    const double aynl = m.em * perigee.sine + temp * s.aycof;
    const double xl = m.mm + m.argpm + m.nodem + temp * s.xlcof * axnl;
    const double u = withoutWholeTurns(xl - m.nodem);

    const auto [sineo1, coseo1] = solveKepler(u, axnl, aynl);

    const double ecose = axnl * coseo1 + aynl * sineo1;
    const double esine = axnl * sineo1 - aynl * coseo1;
    const double el2 = axnl * axnl + aynl * aynl;
    const double pl = am * (1.0 - el2);
    if (!(pl >= 0.0)) return failure(Sgp4Error::semiLatusRectum);

    const double rl = am * (1.0 - ecose);
    if constexpr (wanted == Wanted::position) {
        if (!isModerate(am, pl, rl)) return withPeriodics<Wanted::state>(s, m, am);
    }
    const double betal = std::sqrt(1.0 - el2);
    temp = esine / (1.0 + betal);
    const double sinu = am / rl * (sineo1 - aynl - axnl * temp);
    const double cosu = am / rl * (coseo1 - axnl + aynl * temp);
    const double sin2u = (cosu + cosu) * sinu;
    const double cos2u = 1.0 - 2.0 * sinu * sinu;

    // Short-period periodics.
    temp = 1.0 / pl;
    const double temp1 = 0.5 * j2 * temp;
    const double temp2 = temp1 * temp;
    OsculatingOrbit o{};
    o.mrt = rl * (1.0 - 1.5 * temp2 * betal * s.con41) + 0.5 * temp1 * s.x1mth2 * cos2u;
    o.su = SineCosine{sinu, cosu}.turnedBy(-0.25 * temp2 * s.x7thm1 * sin2u);
    o.xnode = sineCosine(m.nodem).turnedBy(1.5 * temp2 * cosip * sin2u);
    o.xinc = inclination.turnedBy(1.5 * temp2 * cosip * sinip * cos2u);
    if constexpr (wanted == Wanted::state) {
        const double rootOfAm = std::sqrt(am);
        const double rdotl = rootOfAm * esine / rl;
        const double rvdotl = std::sqrt(pl) / rl;
        const double nm = xke / (am * rootOfAm);
        o.mvt = rdotl - nm * temp1 * s.x1mth2 * sin2u / xke;
        o.rvdot = rvdotl + nm * temp1 * (s.x1mth2 * cos2u + 1.5 * s.con41) / xke;
    }
    if (!(o.mrt >= 1.0)) return failure(Sgp4Error::decayed);

    const Propagation result{Sgp4Error::none, stateOf<wanted>(o)};
    // Only an axis that no double can hold, of a mean motion next to nothing, leads here.
    if (!isFinite(result.state.position) || !isFinite(result.state.velocity)) {
        return failure(Sgp4Error::meanMotion);
    }
    return result;
}

// The tests are written so that a value that is not a number fails them.
template <Wanted wanted>
Propagation propagated(const SatRec& satrec, double tsince) {
    MeanElements m = secularElements(satrec, tsince);
    if (!(m.nm > 0.0)) return failure(Sgp4Error::meanMotion);

    const double ao = m.nm == satrec.no_unkozai ? satrec.ao : std::pow(xke / m.nm, x2o3);
    const double am = ao * m.tempa * m.tempa;
    m.em -= m.tempe;
    if (!(m.em < 1.0 && m.em >= -0.001)) return failure(Sgp4Error::eccentricity);
    if (m.em < 1.0e-6) m.em = 1.0e-6;

    m.mm = m.mm + satrec.no_unkozai * m.templ;
    const double xlm = withoutWholeTurns(m.mm + m.argpm + m.nodem);
    m.nodem = withoutWholeTurns(m.nodem);
    m.argpm = withoutWholeTurns(m.argpm);
    m.mm = withoutWholeTurns(xlm - m.argpm - m.nodem);
    return withPeriodics<wanted>(satrec, m, am);
}

}  // namespace

Propagation propagate(const SatRec& satrec, double tsince) {
    return propagated<Wanted::state>(satrec, tsince);
}

Propagation propagatePosition(const SatRec& satrec, double tsince) {
    return propagated<Wanted::position>(satrec, tsince);
}

std::optional<SGP4Result> sgp4(SatRec& satrec, double tsince) {
    const Propagation result = propagate(satrec, tsince);
    satrec.t = tsince;
    satrec.error = static_cast<std::int64_t>(result.error);
    if (result.error != Sgp4Error::none) return std::nullopt;
    return result.state;
}

void sgp4init(SatRec& satrec) {
    satrec.initDone = false;
    satrec.error = 0;
    satrec.method = 'n';

    const EpochOrbit orbit = recoverMeanMotion(satrec);
    satrec.x1mth2 = 1.0 - orbit.cosio2;
    satrec.x7thm1 = 7.0 * orbit.cosio2 - 1.0;
    satrec.con41 = 3.0 * orbit.cosio2 - 1.0;
    setLongPeriodTerms(satrec, orbit);
    if (twoPi / satrec.no_unkozai >= deepSpacePeriod) satrec.method = 'd';
    satrec.alta = orbit.ao * (1.0 + satrec.ecco) - 1.0;
    satrec.altp = orbit.ao * (1.0 - satrec.ecco) - 1.0;

    const Atmosphere atmosphere = atmosphereFor(satrec.altp);
    const DragTerms drag = setDragCoefficients(satrec, orbit, atmosphere);
    setSecularRates(satrec, orbit, drag);
    satrec.delmo = cubed(1.0 + satrec.eta * std::cos(satrec.mo));
    satrec.sinmao = std::sin(satrec.mo);
    // Here: isimp is the caller's, and is not forced for long periods.
    if (satrec.method == 'n' && satrec.isimp != 1) {
        setHigherDragTerms(satrec, orbit, drag, atmosphere.sfour);
    }
    if (satrec.method == 'd') dsInit(satrec, orbit.cosio, orbit.sinio, satrec.ecco * satrec.ecco);

    satrec.gsto = gstime(satrec.jdsatepoch + satrec.jdsatepochF);
    satrec.initDone = true;
    satrec.t = 0.0;
    sgp4(satrec, 0.0);
}

void dsInit(SatRec& satrec, double /*cosio*/, double /*sinio*/, double /*eosq*/) {
    satrec.irez = 0;
    satrec.atime = 0.0;
    satrec.xli = 0.0;
    satrec.xni = satrec.no_unkozai;
}

}  // namespace veloran
