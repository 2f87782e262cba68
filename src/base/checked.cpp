#include "base/checked.h"

#include <cstdio>
#include <cstdlib>

namespace veloran {

void stopProgram(const char* reason) {
    std::fprintf(stderr, "veloran: %s\n", reason);
    std::abort();
}

bool fitsInt64(double value) {
    // 2^63 is a double, 2^63 - 1 is not. NaN fails both comparisons.
    constexpr double kLimit = 9223372036854775808.0;
    return value >= -kLimit && value < kLimit;
}

std::int64_t checkedInt64(double value) {
    if (!fitsInt64(value)) stopProgram("a number does not fit 64 bits");
    return static_cast<std::int64_t>(value);
}

std::uint16_t checkedUInt16(std::int64_t value) {
    if (value < 0 || value > 65535) stopProgram("a number does not fit 16 unsigned bits");
    return static_cast<std::uint16_t>(value);
}

}  // namespace veloran
