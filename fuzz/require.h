#pragma once

#include <cstdio>
#include <cstdlib>

namespace veloran::fuzz {

/// Ends the program where a property does not hold: what fuzzer and replay take for a finding.
inline void require(bool holds, const char* property) {
    if (holds) return;
    std::fprintf(stderr, "veloran: not so: %s\n", property);
    std::abort();
}

}  // namespace veloran::fuzz
