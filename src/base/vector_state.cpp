#include "base/vector_state.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace veloran {

#if defined(__x86_64__) || defined(__i386__)

namespace {

[[gnu::target("avx")]] void zeroUpper() {
    _mm256_zeroupper();
}

}  // namespace

void clearUpperVectorHalves() {
    if (__builtin_cpu_supports("avx")) zeroUpper();
}

#else

void clearUpperVectorHalves() {}

#endif

}  // namespace veloran
