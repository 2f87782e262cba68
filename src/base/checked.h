#pragma once

#include <cstdint>

namespace veloran {

/// Contracts, not error handling: a caller that cannot keep the value in range has a bug, and the
/// program stops with one line on standard error. Values from outside are tested where they enter.

/// Whether `value` truncated toward zero is a 64-bit integer; false for NaN.
bool fitsInt64(double value);

/// `value` truncated toward zero. Stops the program on NaN, infinity and values beyond 64 bits.
std::int64_t checkedInt64(double value);

/// Stops the program unless 0 <= value <= 65535.
std::uint16_t checkedUInt16(std::int64_t value);

/// Prints "veloran: <reason>" and aborts.
[[noreturn]] void stopProgram(const char* reason);

}  // namespace veloran
