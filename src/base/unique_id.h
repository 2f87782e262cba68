#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace veloran {

/// A random 128-bit identity (the bits of a version 4 UUID): two made ones never match.
struct UniqueId {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    static UniqueId make();  ///< from any thread
    std::string text() const;  ///< "8-4-4-4-12" hexadecimal digits, capitals
    auto operator<=>(const UniqueId&) const = default;
};

}  // namespace veloran
