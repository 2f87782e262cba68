#include "synthetic_catalogue.h"

#include <fmt/format.h>

#include <cmath>
#include <numbers>
#include <random>

#include "elements/omm_parser.h"
#include "elements/tle_parser.h"

namespace veloran::bench {
namespace {

constexpr std::string_view kGroup = "all";

/// Numbers that are the same with every standard library.
class Dice {
  public:
    double between(double low, double high) {
        return low + (high - low) * static_cast<double>(engine_() >> 11) * 0x1p-53;
    }

  private:
    std::mt19937_64 engine_{20261123};
};

/// Revolutions per day of an orbit that is so many kilometres high on average.
double meanMotionAt(double heightKm) {
    const double axis = 6378.137 + heightKm;
    return 86400.0 / (2.0 * std::numbers::pi * std::sqrt(axis * axis * axis / 398600.4418));
}

void setShape(SampleSatellite& s, double heightKm, double inclination, double eccentricity) {
    s.meanMotion = meanMotionAt(heightKm);
    s.inclination = inclination;
    s.eccentricity = eccentricity;
}

void setShapeOfMixture(SampleSatellite& s, std::size_t index, Dice& dice) {
    switch (index % 20) {
        case 3:
        case 9:
        case 15:
            return setShape(s, dice.between(450, 850), dice.between(97.2, 98.9), 0.001);
        case 5:
            return setShape(s, dice.between(380, 430), 51.6, 0.0006);
        case 11:
            return index % 40 == 11 ? setShape(s, 20180, dice.between(54, 64), 0.005)
                                    : setShape(s, 35786, dice.between(0, 3), 0.0003);
        case 17:
            return index % 40 == 17 ? setShape(s, 20200, 63.4, 0.7)
                                    : setShape(s, dice.between(900, 1500), 82, 0.02);
        default:
            return setShape(s, dice.between(530, 570), index % 2 == 0 ? 53 : 70, 0.0002);
    }
}

SampleSatellite blank(std::size_t index, Dice& dice) {
    SampleSatellite s;
    s.name = fmt::format("SYNTHETIC {}", index + 1);
    s.noradId = static_cast<std::int64_t>(index) + 10001;
    s.designator = fmt::format("2020-{:03}A", index % 999 + 1);
    s.raan = dice.between(0, 360);
    s.argPerigee = dice.between(0, 360);
    s.meanAnomaly = dice.between(0, 360);
    s.bstar = dice.between(1e-5, 3e-4);
    s.groups = {std::string(kGroup)};
    return s;
}

}  // namespace

std::vector<SampleSatellite> syntheticCatalogue(std::size_t count) {
    Dice dice;
    std::vector<SampleSatellite> satellites;
    for (std::size_t i = 0; i < count; ++i) {
        satellites.push_back(blank(i, dice));
        setShapeOfMixture(satellites.back(), i, dice);
    }
    return satellites;
}

std::vector<SampleSatellite> lowOrbits(std::size_t count) {
    Dice dice;
    std::vector<SampleSatellite> satellites;
    for (std::size_t i = 0; i < count; ++i) {
        satellites.push_back(blank(i, dice));
        setShape(satellites.back(), dice.between(400, 1400), dice.between(45, 100),
                 dice.between(0.0002, 0.01));
    }
    return satellites;
}

std::string groupText(const std::vector<SampleSatellite>& satellites, Instant day) {
    return ommArray(satellites, kGroup, day);
}

std::vector<std::shared_ptr<const SatRec>> records(const std::vector<SampleSatellite>& satellites) {
    std::vector<std::shared_ptr<const SatRec>> result;
    for (const auto& set : OMMParser::parse(groupText(satellites))) {
        result.push_back(std::make_shared<const SatRec>(TLEParser::createSatRec(set)));
    }
    return result;
}

}  // namespace veloran::bench
