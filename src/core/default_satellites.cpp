#include "core/default_satellites.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/text.h"

namespace veloran {

namespace {

// Found as parts of names on purpose: "TEVEL" is a whole family.
constexpr std::array<std::string_view, 10> kDefaultSatellites{
    "ISS", "RS-44", "SO-50", "AO-91", "AO-92", "CAS-4A", "CAS-4B", "TEVEL", "IO-117", "GREENCUBE"};

}  // namespace

bool matchesDefault(std::string_view name) {
    const std::string upper = upperCased(name);
    return std::any_of(
        kDefaultSatellites.begin(), kDefaultSatellites.end(),
        [&upper](std::string_view wanted) { return upper.find(wanted) != std::string::npos; });
}

}  // namespace veloran
