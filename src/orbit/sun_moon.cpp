#include "orbit/sun_moon.h"

#include <array>
#include <cmath>

#include "orbit/angles.h"
#include "orbit/constants.h"

namespace veloran {

namespace {

constexpr double astronomicalUnitKm = 149597870.7;

double wrap360(double degrees) {
    const double rest = std::fmod(degrees, 360.0);
    return rest < 0.0 ? rest + 360.0 : rest;
}

double daysSinceJ2000(Instant at) {
    const JulianDate date = jdayFromDate(at);
    return (date.jd - 2451545.0) + date.jdFrac;
}

double siderealAngle(Instant at) {
    const JulianDate date = jdayFromDate(at);
    return gstime(date.jd + date.jdFrac);
}

/// The fundamental arguments of the Moon's motion, radians.
struct LunarArguments {
    double d;   // mean elongation
    double m;   // mean anomaly of the Sun
    double mp;  // mean anomaly of the Moon
    double f;   // argument of latitude
};

/// coefficient * sine or cosine of (d D + m M + mp M' + f F).
struct LunarTerm {
    double coefficient;
    double d, m, mp, f;

    double argument(const LunarArguments& a) const {
        return d * a.d + m * a.m + mp * a.mp + f * a.f;
    }
};

constexpr std::array longitudeTerms{
    // degrees, sines
    LunarTerm{6.289, 0, 0, 1, 0},  LunarTerm{-1.274, -2, 0, 1, 0}, LunarTerm{0.658, 2, 0, 0, 0},
    LunarTerm{-0.186, 0, 1, 0, 0}, LunarTerm{-0.059, -2, 0, 2, 0}, LunarTerm{-0.057, -2, 1, 1, 0},
    LunarTerm{0.053, 2, 0, 1, 0},  LunarTerm{0.046, 2, -1, 0, 0},  LunarTerm{0.041, 0, -1, 1, 0},
    LunarTerm{-0.035, 1, 0, 0, 0}, LunarTerm{-0.031, 0, 1, 1, 0},
};
constexpr std::array latitudeTerms{
    // degrees, sines
    LunarTerm{5.128, 0, 0, 0, 1},  LunarTerm{0.281, 0, 0, 1, 1},  LunarTerm{0.278, 0, 0, 1, -1},
    LunarTerm{0.173, 2, 0, 0, -1}, LunarTerm{0.055, 2, 0, -1, 1}, LunarTerm{0.046, 2, 0, -1, -1},
    LunarTerm{0.033, 2, 0, 0, 1},
};
constexpr std::array distanceTerms{
    // km, cosines
    LunarTerm{-20905.0, 0, 0, 1, 0}, LunarTerm{-3699.0, 2, 0, -1, 0},
    LunarTerm{-2956.0, 2, 0, 0, 0},  LunarTerm{-570.0, 0, 0, 2, 0},
    LunarTerm{246.0, -2, 0, 2, 0},
};

template <std::size_t N>
double sumOfSines(const std::array<LunarTerm, N>& terms, const LunarArguments& arguments) {
    double sum = 0.0;
    for (const LunarTerm& term : terms) {
        sum += term.coefficient * std::sin(term.argument(arguments));
    }
    return sum;
}

template <std::size_t N>
double sumOfCosines(const std::array<LunarTerm, N>& terms, const LunarArguments& arguments) {
    double sum = 0.0;
    for (const LunarTerm& term : terms) {
        sum += term.coefficient * std::cos(term.argument(arguments));
    }
    return sum;
}

double withinTurn(double radians) {
    return radians < 0.0 ? radians + twoPi : radians;
}

TopocentricResult toTopocentric(const EquatorialPlace& place, Instant at, double obsLat,
                                double obsLon) {
    const double lat = obsLat * deg2rad;
    // H = theta + lambda - alpha
    const double localSiderealAngle = siderealAngle(at) + obsLon * deg2rad;
    const double hourAngle = withinHalfTurn(localSiderealAngle - place.ra, twoPi);
    // sin el = sin phi sin delta + cos phi cos delta cos H
    const double sinElevation = std::sin(lat) * std::sin(place.dec) +
                                std::cos(lat) * std::cos(place.dec) * std::cos(hourAngle);
    // tan az = -sin H / (tan delta cos phi - sin phi cos H)
    const double azimuth =
        std::atan2(-std::sin(hourAngle),
                   std::tan(place.dec) * std::cos(lat) - std::sin(lat) * std::cos(hourAngle));

    TopocentricResult look;
    look.azimuth = withinTurn(azimuth) * rad2deg;
    look.elevation = std::asin(sinElevation) * rad2deg;
    look.range = place.distanceKm;
    look.rangeRate = 0.0;
    return look;
}

SubSatellitePoint pointBelow(const EquatorialPlace& place, Instant at) {
    const double longitude = (place.ra - siderealAngle(at)) * rad2deg;
    return {place.dec * rad2deg, withinHalfTurn(longitude, 360.0), place.distanceKm};
}

}  // namespace

// epsilon = 23.43928 deg - 0.013 deg T
double obliquity(Instant at) {
    return (23.43928 - 0.013 * (daysSinceJ2000(at) / 36525.0)) * deg2rad;
}

// lambda = L + 1.915 sin g + 0.020 sin 2g, in degrees; beta = 0
// R = 1.00014 - 0.01671 cos g - 0.00014 cos 2g, in au
EquatorialPlace sunEquatorial(Instant at) {
    const double n = daysSinceJ2000(at);
    const double meanLongitude = wrap360(280.46 + 0.9856474 * n);
    const double g = wrap360(357.528 + 0.9856003 * n) * deg2rad;  // mean anomaly
    const double lambda =
        (meanLongitude + 1.915 * std::sin(g) + 0.02 * std::sin(2.0 * g)) * deg2rad;
    const double epsilon = obliquity(at);

    // tan alpha = cos epsilon tan lambda; sin delta = sin epsilon sin lambda
    EquatorialPlace place;
    place.ra = withinTurn(std::atan2(std::cos(epsilon) * std::sin(lambda), std::cos(lambda)));
    place.dec = std::asin(std::sin(epsilon) * std::sin(lambda));
    place.distanceKm =
        (1.00014 - 0.01671 * std::cos(g) - 0.00014 * std::cos(2.0 * g)) * astronomicalUnitKm;
    return place;
}

// lambda = L' + longitude terms, beta = latitude terms, in degrees
// distance = 385000.56 km + distance terms
EquatorialPlace moonEquatorial(Instant at) {
    const double t = daysSinceJ2000(at) / 36525.0;
    const double meanLongitude = wrap360(218.3164477 + 481267.88123421 * t);
    LunarArguments a{};
    a.d = wrap360(297.8501921 + 445267.1114034 * t) * deg2rad;
    a.m = wrap360(357.5291092 + 35999.0502909 * t) * deg2rad;
    a.mp = wrap360(134.9633964 + 477198.8675055 * t) * deg2rad;
    a.f = wrap360(93.272095 + 483202.0175233 * t) * deg2rad;

    const double lambda = (meanLongitude + sumOfSines(longitudeTerms, a)) * deg2rad;
    const double beta = sumOfSines(latitudeTerms, a) * deg2rad;
    const double epsilon = obliquity(at);

    // tan alpha = (sin lambda cos epsilon - tan beta sin epsilon) / cos lambda
    // sin delta = sin beta cos epsilon + cos beta sin epsilon sin lambda
    EquatorialPlace place;
    place.ra = withinTurn(
        std::atan2(std::sin(lambda) * std::cos(epsilon) - std::tan(beta) * std::sin(epsilon),
                   std::cos(lambda)));
    place.dec = std::asin(std::sin(beta) * std::cos(epsilon) +
                          std::cos(beta) * std::sin(epsilon) * std::sin(lambda));
    place.distanceKm = 385000.56 + sumOfCosines(distanceTerms, a);
    return place;
}

TopocentricResult sunTopocentric(Instant at, double obsLat, double obsLon) {
    return toTopocentric(sunEquatorial(at), at, obsLat, obsLon);
}

TopocentricResult moonTopocentric(Instant at, double obsLat, double obsLon) {
    return toTopocentric(moonEquatorial(at), at, obsLat, obsLon);
}

SubSatellitePoint sunSubPoint(Instant at) {
    return pointBelow(sunEquatorial(at), at);
}

SubSatellitePoint moonSubPoint(Instant at) {
    return pointBelow(moonEquatorial(at), at);
}

}  // namespace veloran
