#pragma once

#include <variant>

#include "core/satellite_preferences.h"
#include "ui/ink.h"

namespace veloran {

/// A colour of the theme, or a fixed one such as a satellite's own.
using Paint = std::variant<Ink, RgbColor>;

/// A colour with an opacity.
struct Tint {
    Paint paint;
    double opacity = 1;
    bool operator==(const Tint&) const = default;
};

}  // namespace veloran
