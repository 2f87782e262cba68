#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veloran {

// Everything here is UTF-8 and independent of the locale.

/// Which characters a trim takes away.
enum class Blanks {
    horizontal,   ///< space, tab and the Unicode space separators (Zs); no line ends
    withNewlines  ///< those and the Unicode newline set (LF, VT, FF, CR, NEL, LS, PS)
};

std::string_view trimmed(std::string_view text, Blanks blanks);

/// Pieces between separators, empty ones kept; n separators give n + 1 pieces.
std::vector<std::string_view> split(std::string_view text, char separator);

/// Split at every single character of the Unicode newline set, so CR LF leaves an empty piece.
std::vector<std::string_view> splitLines(std::string_view text);

/// The same one line at a time: cuts the first line and its newline character off `rest`. The last
/// line leaves `rest` empty.
std::string_view takeLine(std::string_view& rest);

std::string replacedAll(std::string text, char from, char to);

/// Full Unicode case mapping is not needed for what is compared here: one code point maps to one.
std::string upperCased(std::string_view text);
std::string lowerCased(std::string_view text);

bool isValidUtf8(std::string_view bytes);

/// The user-perceived characters (extended grapheme clusters) of a text, the first `limit` of them.
/// Plain ASCII is fast, and what stands behind the limit costs nothing.
std::vector<std::string_view> characters(std::string_view text,
                                         std::size_t limit = std::string_view::npos);

/// The whole text as a decimal integer: one optional sign, then digits. Absent if anything else is
/// there, blanks included, or if it does not fit 64 bits.
std::optional<std::int64_t> parseInt64(std::string_view text);

/// The whole text as a finite double in plain or exponent notation, one optional sign. Absent if
/// anything else is there, and for what a double cannot hold (infinities, NaN).
std::optional<double> parseDouble(std::string_view text);

/// The shortest decimal digits that read back to the same double, with a point or an exponent:
/// "1.0", "1e+20".
std::string shortestText(double value);

}  // namespace veloran
