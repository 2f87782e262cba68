#pragma once

#include <cmath>
#include <cstdint>

#include "orbit/constants.h"

namespace veloran {

/// std::fmod(angle, twoPi) to the last bit: both give the exact remainder, but the library's takes
/// a step for each binary digit of the quotient.
inline double withoutWholeTurns(double angle) {
    const double size = std::abs(angle);
    if (size < twoPi) return angle;
    if (size < 2.0 * twoPi) return std::copysign(size - twoPi, angle);  // exact, for it is small
    const double quotient = angle / twoPi;
    if (!(std::abs(quotient) < 1e9)) return std::fmod(angle, twoPi);
    const auto turns = static_cast<double>(static_cast<std::int64_t>(quotient));
    double rest = std::fma(-turns, twoPi, angle);
    // The quotient of an angle just short of a whole turn may have been rounded up to it.
    const bool isTooFar = angle < 0.0 ? rest > 0.0 : rest < 0.0;
    if (isTooFar) rest = std::fma(angle < 0.0 ? -turns - 1.0 : 1.0 - turns, twoPi, angle);
    return std::copysign(rest, angle);
}

/// The sine and cosine of one angle.
struct SineCosine {
    double sine, cosine;

    /// Of the angle that is `angle` (radians) larger: within a few units of the last digit of what
    /// the library gives for it, and sooner if `angle` is small.
    SineCosine turnedBy(double angle) const;
};

inline SineCosine sineCosine(double angle) {
    return {std::sin(angle), std::cos(angle)};
}

/// Whether the first four terms of the series of sine and cosine hold all digits: what is left out
/// is below 0.03^8 / 8! = 2e-17.
inline bool isSmall(double angle) {
    return std::abs(angle) < 0.03;
}

inline SineCosine smallSineCosine(double angle) {
    const double square = angle * angle;
    const double fourth = square * square;
    const double sine =
        angle - angle * square * (1.0 / 6.0 - square * (1.0 / 120.0) + fourth * (1.0 / 5040.0));
    const double cosine = 1.0 - (square * 0.5 - fourth * (1.0 / 24.0 - square * (1.0 / 720.0)));
    return {sine, cosine};
}

// sin (a + b) = sin a cos b + cos a sin b, cos (a + b) = cos a cos b - sin a sin b
inline SineCosine SineCosine::turnedBy(double angle) const {
    const SineCosine by = isSmall(angle) ? smallSineCosine(angle) : sineCosine(angle);
    return {sine * by.cosine + cosine * by.sine, cosine * by.cosine - sine * by.sine};
}

/// `value` brought into -turn/2 to turn/2 by whole turns, one at a time, so that an angle within a
/// few turns keeps its digits. What is not a number stays so; an infinity becomes so.
inline double withinHalfTurn(double value, double turn) {
    // Only nonsense is this far out; single turns might never arrive.
    if (std::abs(value) > 1000.0 * turn) value = std::fmod(value, turn);
    while (value > 0.5 * turn) value -= turn;
    while (value < -0.5 * turn) value += turn;
    return value;
}

}  // namespace veloran
