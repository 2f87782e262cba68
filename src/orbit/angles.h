#pragma once

#include <cmath>

namespace veloran {

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
