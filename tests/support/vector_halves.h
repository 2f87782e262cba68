#pragma once

#include <cstdint>

#if defined(__x86_64__)
#include <cpuid.h>
#endif

namespace veloran::test {

#if defined(__x86_64__)

// In assembly, for a compiler that is told of AVX clears the halves by itself.

/// Leaves the upper halves of this thread's vector registers in use, as some of Qt's functions do.
inline void dirtyWithAvx() {
    asm volatile("vpcmpeqd %%xmm0, %%xmm0, %%xmm0\n\tvinsertf128 $1, %%xmm0, %%ymm0, %%ymm0" ::
                     : "xmm0");
}

inline void clearWithAvx() {
    asm volatile("vzeroupper");
}

/// Whether the processor counts them as in use. Only where canSeeUpperHalves.
inline bool areUpperHalvesInUse() {
    constexpr std::uint32_t kUpperHalves = 1u << 2;
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    asm volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(1));
    return (low & kUpperHalves) != 0;
}

inline void dirtyUpperHalves() {
    if (__builtin_cpu_supports("avx")) dirtyWithAvx();
}

/// Whether this processor tells the one from the other.
inline bool canSeeUpperHalves() {
    unsigned a = 0, b = 0, c = 0, d = 0;
    constexpr unsigned kStateLeaf = 0xD;
    constexpr unsigned kXgetbv1 = 1u << 2;
    if (!__builtin_cpu_supports("avx") || !__get_cpuid_count(kStateLeaf, 1, &a, &b, &c, &d) ||
        (a & kXgetbv1) == 0) {
        return false;
    }
    dirtyWithAvx();
    const bool seesUse = areUpperHalvesInUse();
    clearWithAvx();
    return seesUse && !areUpperHalvesInUse();
}

#else

inline void dirtyUpperHalves() {}
inline bool areUpperHalvesInUse() {
    return false;
}
inline bool canSeeUpperHalves() {
    return false;
}

#endif

}  // namespace veloran::test
