#include "base/unique_id.h"

#include <fmt/format.h>

#include <random>

namespace veloran {

namespace {

std::mt19937_64 seededGenerator() {
    std::random_device entropy;
    std::seed_seq seed{entropy(), entropy(), entropy(), entropy(),
                       entropy(), entropy(), entropy(), entropy()};
    return std::mt19937_64{seed};
}

}  // namespace

UniqueId UniqueId::make() {
    thread_local std::mt19937_64 generator = seededGenerator();
    constexpr std::uint64_t kVersionBits = 0xF000, kVersion4 = 0x4000;
    constexpr std::uint64_t kVariantBits = std::uint64_t{3} << 62,
                            kVariant = std::uint64_t{2} << 62;
    UniqueId id{generator(), generator()};
    id.high = (id.high & ~kVersionBits) | kVersion4;
    id.low = (id.low & ~kVariantBits) | kVariant;
    return id;
}

std::string UniqueId::text() const {
    return fmt::format("{:08X}-{:04X}-{:04X}-{:04X}-{:012X}", high >> 32, high >> 16 & 0xFFFF,
                       high & 0xFFFF, low >> 48, low & 0xFFFFFFFFFFFF);
}

}  // namespace veloran
