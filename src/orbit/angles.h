#pragma once

#include <cmath>
#include <cstdint>

#include "orbit/constants.h"

namespace veloran {

/// std::fmod(angle, twoPi) to the last bit: both give the exact remainder, but the library's takes
/// a step for each binary digit of the quotient.
inline double withoutWholeTurns(double angle) {
    const double quotient = angle / twoPi;
    if (!(std::abs(quotient) < 1e9)) return std::fmod(angle, twoPi);
    const auto turns = static_cast<double>(static_cast<std::int64_t>(quotient));
    double rest = std::fma(-turns, twoPi, angle);
    // The quotient of an angle just short of a whole turn may have been rounded up to it.
    const bool isTooFar = angle < 0.0 ? rest > 0.0 : rest < 0.0;
    if (isTooFar) rest = std::fma(angle < 0.0 ? -turns - 1.0 : 1.0 - turns, twoPi, angle);
    return std::copysign(rest, angle);
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
