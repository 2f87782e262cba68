// One check as a libFuzzer program; the build names the check.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "checks.h"
#include "require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    namespace fuzz = veloran::fuzz;
    static const auto check = std::ranges::find(fuzz::checks(), VELORAN_CHECK, &fuzz::Check::name);
    fuzz::require(check != fuzz::checks().end(), "the check that the build names exists");
    check->run({reinterpret_cast<const char*>(data), size});
    return 0;
}
