#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "elements/tle_parser.h"
#include "orbit/look_angles.h"
#include "orbit/sample_orbits.h"

namespace veloran::test {
namespace {

bool isFinite(const Vec3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

void expectFiniteOrAbsent(const SatRec& satrec) {
    for (const double t : {-1e9, -1440.0, 0.0, 0.5, 1440.0, 1e6, 1e300}) {
        const Propagation result = propagate(satrec, t);
        EXPECT_TRUE(result.error != Sgp4Error::none ||
                    (isFinite(result.state.position) && isFinite(result.state.velocity)))
            << "at minute " << t;
        const auto look = lookAngles(satrec, sampleEpoch() + t * 60.0, 48.0, 11.0, 0.5);
        EXPECT_TRUE(!look || (std::isfinite(look->range) && std::isfinite(look->rangeRate)))
            << "at minute " << t;
    }
}

TEST(CreateSatRec, CopiesElementsInPropagatorUnits) {
    TLEData tle = lowOrbit();
    tle.epochYear = 1998;
    const SatRec satrec = TLEParser::createSatRec(tle);
    EXPECT_EQ(satrec.satnum, 99001);
    EXPECT_EQ(satrec.epochyr, 98);
    EXPECT_EQ(satrec.epochdays, 123.5);
    EXPECT_EQ(satrec.bstar, 1e-4);
    EXPECT_EQ(satrec.ecco, 0.0011);
    EXPECT_DOUBLE_EQ(satrec.inclo, 51.6 * deg2rad);
    EXPECT_DOUBLE_EQ(satrec.nodeo, 100.0 * deg2rad);
    EXPECT_DOUBLE_EQ(satrec.argpo, 130.0 * deg2rad);
    EXPECT_DOUBLE_EQ(satrec.mo, 220.0 * deg2rad);
    EXPECT_DOUBLE_EQ(satrec.no_kozai, 15.5 * twoPi / 1440.0);
    EXPECT_EQ(satrec.ndot, 0.0);
    EXPECT_EQ(satrec.nddot, 0.0);
    EXPECT_TRUE(satrec.initDone);
}

TEST(CreateSatRec, EpochIsMidnightAndTheFractionOfTheDay) {
    const SatRec satrec = TLEParser::createSatRec(lowOrbit());
    EXPECT_EQ(satrec.jdsatepoch, 2460432.5);  // 2024 May 2
    EXPECT_EQ(satrec.jdsatepochF, 0.5);
    EXPECT_EQ(minutesSinceEpoch(satrec, sampleEpoch()), 0.0);
}

TEST(CreateSatRec, DayBeforeTheFirstIsInTheYearBefore) {
    TLEData tle = lowOrbit();
    tle.epochDays = -0.25;  // truncated toward zero: day 0 is 31 December
    const SatRec satrec = TLEParser::createSatRec(tle);
    EXPECT_EQ(satrec.jdsatepoch, 2460309.5);
    EXPECT_EQ(satrec.jdsatepochF, -0.25);
}

TEST(CreateSatRec, PerigeeBelow220KilometresSimplifiesTheDrag) {
    EXPECT_EQ(TLEParser::createSatRec(orbitWithPerigee(219.9, 0.01)).isimp, 1);
    EXPECT_EQ(TLEParser::createSatRec(orbitWithPerigee(220.1, 0.01)).isimp, 0);
}

TEST(CreateSatRec, EccentricityOutsideTheEllipsesIsError1) {
    for (const double eccentricity : {1.0, 1.5, -1e-9, std::nan("")}) {
        TLEData tle = lowOrbit();
        tle.eccentricity = eccentricity;
        SatRec satrec = TLEParser::createSatRec(tle);
        EXPECT_EQ(satrec.error, 1);
        EXPECT_FALSE(satrec.initDone);
        EXPECT_FALSE(sgp4(satrec, 0.0));
        EXPECT_EQ(satrec.error, 2);
    }
}

TEST(CreateSatRec, EpochBeyondTheCalendarIsError2AndNeverPropagates) {
    constexpr std::int64_t last = std::numeric_limits<std::int64_t>::max();
    const std::array<std::pair<std::int64_t, double>, 7> epochs{{
        {last, 1.0},
        {-last - 1, 1.0},
        {1'000'000'000, 1.0},
        {2024, 1e18},
        {2024, 1e308},
        {2024, std::nan("")},
        {2024, -std::numeric_limits<double>::infinity()},
    }};
    for (const auto& [year, days] : epochs) {
        TLEData tle = lowOrbit();
        tle.epochYear = year;
        tle.epochDays = days;
        SatRec satrec = TLEParser::createSatRec(tle);
        EXPECT_EQ(satrec.error, 2);
        EXPECT_FALSE(satrec.initDone);
        EXPECT_FALSE(sgp4(satrec, 0.0));
        EXPECT_FALSE(lookAngles(satrec, sampleEpoch(), 48.0, 11.0, 0.5));
    }
}

TEST(CreateSatRec, FarYearsAreStillEpochs) {
    for (const std::int64_t year : {-5000, 0, 1582, 9999, 99'999'999}) {
        TLEData tle = lowOrbit();
        tle.epochYear = year;
        const SatRec satrec = TLEParser::createSatRec(tle);
        EXPECT_TRUE(satrec.initDone) << year;
        expectFiniteOrAbsent(satrec);
    }
}

TEST(CreateSatRec, NoNumberStopsTheProgramOrBecomesAState) {
    constexpr std::array members{
        &TLEData::epochDays,    &TLEData::bstar,      &TLEData::inclination, &TLEData::raan,
        &TLEData::eccentricity, &TLEData::argPerigee, &TLEData::meanAnomaly, &TLEData::meanMotion};
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (std::size_t m = 0; m < members.size(); ++m) {
        for (const double value : {std::nan(""), infinity, -infinity, 1e308, -1e308, 1e300, 1e18,
                                   1e9, 0.999999999999999, 1e-300, 5e-324, 0.0, -1.0}) {
            SCOPED_TRACE("member " + std::to_string(m) + " = " + std::to_string(value));
            TLEData tle = lowOrbit();
            tle.*members[m] = value;
            expectFiniteOrAbsent(TLEParser::createSatRec(tle));
        }
    }
}

TEST(CreateSatRec, RandomNonsenseIsFiniteOrAbsent) {
    Random random;
    SCOPED_TRACE(random.trace());
    const auto wild = [&] {
        const double magnitude = std::pow(10.0, random.between(-320.0, 308.0));
        return random.between(0.0, 1.0) < 0.3 ? -magnitude : magnitude;
    };
    for (int i = 0; i < 3000; ++i) {
        SCOPED_TRACE(i);
        TLEData tle = lowOrbit();
        for (const auto member :
             {&TLEData::bstar, &TLEData::inclination, &TLEData::raan, &TLEData::argPerigee,
              &TLEData::meanAnomaly, &TLEData::meanMotion, &TLEData::epochDays}) {
            if (random.between(0.0, 1.0) < 0.4) tle.*member = wild();
        }
        tle.eccentricity = random.between(0.0, 1.0);
        expectFiniteOrAbsent(TLEParser::createSatRec(tle));
    }
}

}  // namespace
}  // namespace veloran::test
