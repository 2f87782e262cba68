#pragma once

#include <cstdlib>
#include <optional>

#include "base/text.h"

namespace veloran::test {

/// The one seed to play again, of $VELORAN_SEED; absent: all of them.
inline std::optional<unsigned> givenSeed() {
    const char* text = std::getenv("VELORAN_SEED");
    const auto number = text ? parseInt64(text) : std::nullopt;
    return number ? std::optional(static_cast<unsigned>(*number)) : std::nullopt;
}

}  // namespace veloran::test
