#pragma once

#include <array>
#include <string_view>

namespace veloran {

/// Every colour of the program by its part; the theme says what it looks like.
enum class Ink {
    green,
    red,
    orange,
    yellow,
    cyan,
    blue,
    purple,
    gray,
    mint,
    primary,    ///< text
    secondary,  ///< text of less weight
    window,     ///< background of the window
    control,    ///< background of lists and plots
    separator
};
inline constexpr std::size_t kInkCount = 14;

/// "green", "secondary", …
constexpr std::string_view inkName(Ink ink) {
    constexpr std::array<std::string_view, kInkCount> names = {
        "green", "red",  "orange",  "yellow",    "cyan",   "blue",    "purple",
        "gray",  "mint", "primary", "secondary", "window", "control", "separator"};
    return names[static_cast<std::size_t>(ink)];
}

}  // namespace veloran
