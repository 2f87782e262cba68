#include "orbit/sgp4.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "sample_orbits.h"

namespace veloran::test {
namespace {

double length(const Vec3& v) {
    return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
}

double distance(const Vec3& a, const Vec3& b) {
    return length({a.x - b.x, a.y - b.y, a.z - b.z});
}

void expectSame(const Propagation& a, const Propagation& b) {
    EXPECT_EQ(a.error, b.error);
    EXPECT_EQ(distance(a.state.position, b.state.position), 0.0);
    EXPECT_EQ(distance(a.state.velocity, b.state.velocity), 0.0);
}

/// Parameter s of the atmosphere in km, recovered from eta = ao e / (ao - s).
double atmosphereKm(const SatRec& s) {
    const double ao = (s.alta + s.altp) / 2.0 + 1.0;
    return (ao - ao * s.ecco / s.eta - 1.0) * WGS84::radiusEarthKm;
}

/// The low orbit with its mean motion set so that the period is about `minutes`.
TLEData orbitWithPeriod(double minutes) {
    TLEData tle = lowOrbit();
    tle.eccentricity = 0.01;
    tle.meanMotion = minutesPerDay / minutes;
    for (int i = 0; i < 20; ++i) {
        tle.meanMotion *= twoPi / TLEParser::createSatRec(tle).no_unkozai / minutes;
    }
    return tle;
}

TEST(SatRecRecord, StartsEmpty) {
    const SatRec satrec;
    EXPECT_EQ(satrec.method, 'n');
    EXPECT_EQ(satrec.operationmode, 'i');
    EXPECT_FALSE(satrec.initDone);
    EXPECT_EQ(satrec.no_unkozai, 0.0);
    EXPECT_EQ(satrec.error, 0);
}

TEST(Sgp4, RecordWithoutInitialisationHasNoMeanMotion) {
    SatRec satrec;
    EXPECT_FALSE(sgp4(satrec, 0.0));
    EXPECT_EQ(satrec.error, 2);
}

TEST(Sgp4, GeostationarySetKeepsNearEarthResult) {
    const SatRec satrec = TLEParser::createSatRec(geostationaryOrbit());
    EXPECT_EQ(satrec.method, 'd');
    EXPECT_EQ(satrec.isimp, 0);
    SatRec nearEarth = satrec;
    nearEarth.method = 'n';
    for (const double day : {0.0, 1.0, 30.0, 365.0}) {
        const Propagation result = propagate(satrec, day * minutesPerDay);
        EXPECT_EQ(result.error, Sgp4Error::none);
        EXPECT_NEAR(length(result.state.position), 42164.0, 40.0);
        expectSame(result, propagate(nearEarth, day * minutesPerDay));
    }
}

TEST(Sgp4, PeriodOf225MinutesOnlyDropsTheHigherDragTerms) {
    const SatRec shorter = TLEParser::createSatRec(orbitWithPeriod(224.99));
    const SatRec longer = TLEParser::createSatRec(orbitWithPeriod(225.0000001));
    EXPECT_EQ(shorter.method, 'n');
    EXPECT_EQ(longer.method, 'd');
    EXPECT_EQ(shorter.isimp, 0);
    EXPECT_EQ(longer.isimp, 0);
    for (const auto member :
         {&SatRec::d2, &SatRec::d3, &SatRec::d4, &SatRec::t3cof, &SatRec::t4cof, &SatRec::t5cof}) {
        EXPECT_NE(shorter.*member, 0.0);
        EXPECT_EQ(longer.*member, 0.0);
    }
    for (const auto member :
         {&SatRec::cc1, &SatRec::cc4, &SatRec::cc5, &SatRec::xmcof, &SatRec::omgcof, &SatRec::t2cof,
          &SatRec::mdot, &SatRec::argpdot, &SatRec::nodedot, &SatRec::nodecf}) {
        EXPECT_NEAR(longer.*member / (shorter.*member), 1.0, 1e-3);
    }
}

TEST(Sgp4, LinearRatesOfALongPeriodAreRead) {
    const SatRec satrec = TLEParser::createSatRec(geostationaryOrbit());
    const Propagation plain = propagate(satrec, 100.0);
    for (const auto rate :
         {&SatRec::dedt, &SatRec::didt, &SatRec::dmdt, &SatRec::dnodt, &SatRec::domdt}) {
        SatRec changed = satrec;
        changed.*rate = 1e-6;
        EXPECT_GT(distance(propagate(changed, 100.0).state.position, plain.state.position), 1e-3);
        changed.method = 'n';
        expectSame(propagate(changed, 100.0), plain);
    }
}

TEST(Sgp4, DeepSpaceInitialiserWritesFourFields) {
    SatRec satrec;
    satrec.irez = 7;
    satrec.atime = satrec.xli = satrec.xni = 7.0;
    satrec.no_unkozai = 0.25;
    dsInit(satrec, 1.0, 2.0, 3.0);
    EXPECT_EQ(satrec.irez, 0);
    EXPECT_EQ(satrec.atime, 0.0);
    EXPECT_EQ(satrec.xli, 0.0);
    EXPECT_EQ(satrec.xni, 0.25);
}

TEST(Sgp4, NearCircularSetHasNoEccentricDragTerms) {
    TLEData tle = lowOrbit();
    tle.eccentricity = 1e-4;
    SatRec satrec = TLEParser::createSatRec(tle);
    EXPECT_EQ(satrec.xmcof, 0.0);
    EXPECT_EQ(satrec.omgcof, 0.0);  // bstar cc3 cos(argument of perigee)
    tle.eccentricity = 1.01e-4;
    satrec = TLEParser::createSatRec(tle);
    EXPECT_NE(satrec.xmcof, 0.0);
    EXPECT_NE(satrec.omgcof, 0.0);
}

TEST(Sgp4, AtmosphereFollowsThePerigee) {
    const SatRec high = TLEParser::createSatRec(orbitWithPerigee(300.0, 0.1));
    EXPECT_NEAR(atmosphereKm(high), 78.0, 1e-6);
    const SatRec low = TLEParser::createSatRec(orbitWithPerigee(120.0, 0.1));
    EXPECT_NEAR(atmosphereKm(low), low.altp * WGS84::radiusEarthKm - 78.0, 1e-6);
    const SatRec lowest = TLEParser::createSatRec(orbitWithPerigee(90.0, 0.1));
    EXPECT_NEAR(atmosphereKm(lowest), 20.0, 1e-6);
}

TEST(Sgp4, WithoutDragTheEpochStateIsTheOrbitsOwn) {
    TLEData tle = lowOrbit();
    tle.bstar = 0.0;
    tle.eccentricity = 0.1;
    tle.meanMotion = 12.0;
    const SatRec satrec = TLEParser::createSatRec(tle);
    EXPECT_EQ(satrec.cc1, 0.0);
    EXPECT_EQ(satrec.xmcof, 0.0);
    EXPECT_EQ(satrec.omgcof, 0.0);
    EXPECT_EQ(satrec.nodecf, 0.0);
    EXPECT_EQ(satrec.t2cof, 0.0);

    // Kepler's orbit from the same elements; the periodic terms of J2 move it by some 10 km.
    double e = satrec.mo;
    for (int i = 0; i < 50; ++i) e = satrec.mo + satrec.ecco * std::sin(e);
    const double axisKm =
        std::pow(WGS84::xke / satrec.no_unkozai, 2.0 / 3.0) * WGS84::radiusEarthKm;
    const double p = axisKm * (std::cos(e) - satrec.ecco);
    const double q = axisKm * std::sqrt(1.0 - satrec.ecco * satrec.ecco) * std::sin(e);
    const double u = std::cos(satrec.argpo) * p - std::sin(satrec.argpo) * q;
    const double w = std::sin(satrec.argpo) * p + std::cos(satrec.argpo) * q;
    const double n = satrec.nodeo;
    const double i = satrec.inclo;
    const Vec3 kepler{std::cos(n) * u - std::sin(n) * std::cos(i) * w,
                      std::sin(n) * u + std::cos(n) * std::cos(i) * w, std::sin(i) * w};
    const Propagation result = propagate(satrec, 0.0);
    ASSERT_EQ(result.error, Sgp4Error::none);
    EXPECT_LT(distance(result.state.position, kepler), 25.0);
}

TEST(Sgp4, HighDragSetEndsInAnError) {
    TLEData tle = orbitWithPerigee(200.0, 0.001);
    tle.bstar = 0.01;
    SatRec satrec = TLEParser::createSatRec(tle);
    ASSERT_EQ(satrec.error, 0);
    EXPECT_FALSE(sgp4(satrec, 100.0 * minutesPerDay));
    EXPECT_TRUE(satrec.error == 1 || satrec.error == 2 || satrec.error == 6) << satrec.error;
}

TEST(Sgp4, SameArgumentsGiveTheSameState) {
    SatRec satrec = TLEParser::createSatRec(lowOrbit());
    const auto first = sgp4(satrec, 123.25);
    sgp4(satrec, -77.0);
    const auto again = sgp4(satrec, 123.25);
    ASSERT_TRUE(first && again);
    EXPECT_EQ(distance(first->position, again->position), 0.0);
    EXPECT_EQ(distance(first->velocity, again->velocity), 0.0);
    expectSame(propagate(satrec, 123.25), {Sgp4Error::none, *first});
}

TEST(Sgp4, ErrorIsNotSticky) {
    TLEData tle = orbitWithPerigee(200.0, 0.001);
    tle.bstar = 0.01;
    SatRec satrec = TLEParser::createSatRec(tle);
    EXPECT_FALSE(sgp4(satrec, 100.0 * minutesPerDay));
    EXPECT_EQ(satrec.t, 100.0 * minutesPerDay);
    EXPECT_TRUE(sgp4(satrec, 0.0));
    EXPECT_EQ(satrec.error, 0);
    EXPECT_EQ(satrec.t, 0.0);
}

TEST(Sgp4, InclinationOf180DegreesDividesByTheStandIn) {
    TLEData tle = lowOrbit();
    tle.inclination = 180.0;
    const SatRec satrec = TLEParser::createSatRec(tle);
    const double sinio = std::sin(satrec.inclo);
    EXPECT_DOUBLE_EQ(satrec.xlcof, -0.25 * WGS84::j3oj2 * sinio * (3.0 - 5.0) / 1.5e-12);
    EXPECT_EQ(propagate(satrec, 45.0).error, Sgp4Error::none);
}

TEST(Sgp4, VelocityIsTheRateOfThePosition) {
    Random random;
    SCOPED_TRACE(random.trace());
    for (int i = 0; i < 200; ++i) {
        TLEData tle = randomOrbit(random);
        tle.bstar = 0.0;
        const SatRec satrec = TLEParser::createSatRec(tle);
        const double t = random.between(-1440.0, 1440.0);
        constexpr double second = 1.0 / 60.0;
        const Vec3 before = propagate(satrec, t - second).state.position;
        const Vec3 after = propagate(satrec, t + second).state.position;
        const Vec3 rate{(after.x - before.x) / 2.0, (after.y - before.y) / 2.0,
                        (after.z - before.z) / 2.0};
        const Propagation result = propagate(satrec, t);
        ASSERT_EQ(result.error, Sgp4Error::none) << i;
        EXPECT_LT(distance(result.state.velocity, rate), 0.02) << i;
    }
}

TEST(Sgp4, TimeThatIsNoNumberGivesNoState) {
    const SatRec satrec = TLEParser::createSatRec(lowOrbit());
    for (const double t :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
        EXPECT_NE(propagate(satrec, t).error, Sgp4Error::none) << t;
    }
}

}  // namespace
}  // namespace veloran::test
