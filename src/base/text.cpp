#include "base/text.h"

#include <fmt/format.h>
#include <utf8proc.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

namespace veloran {

namespace {

/// One code point at the front of a text; a byte that starts none counts as one by itself.
struct CodePoint {
    utf8proc_int32_t value = -1;  ///< -1 for a stray byte
    std::size_t length = 1;
};

CodePoint firstCodePoint(std::string_view text) {
    const auto byte = static_cast<unsigned char>(text.front());
    if (byte < 0x80) return {byte, 1};
    utf8proc_int32_t value = -1;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                         static_cast<utf8proc_ssize_t>(text.size()), &value);
    if (length <= 0) return {};
    return {value, static_cast<std::size_t>(length)};
}

CodePoint lastCodePoint(std::string_view text) {
    std::size_t start = text.size() - 1;
    const std::size_t earliest = text.size() > 4 ? text.size() - 4 : 0;
    while (start > earliest && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80) --start;
    const CodePoint point = firstCodePoint(text.substr(start));
    return start + point.length == text.size() ? point : CodePoint{};
}

bool isNewline(utf8proc_int32_t point) {
    return (point >= 0x0A && point <= 0x0D) || point == 0x85 || point == 0x2028 || point == 0x2029;
}

bool isBlank(utf8proc_int32_t point, Blanks blanks) {
    if (point < 0) return false;
    if (point == ' ' || point == '\t') return true;
    if (blanks == Blanks::withNewlines && isNewline(point)) return true;
    return point >= 0x80 && utf8proc_category(point) == UTF8PROC_CATEGORY_ZS;
}

template <class Mapping>
std::string mapped(std::string_view text, Mapping map) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const CodePoint point = firstCodePoint(text);
        if (point.value < 0) {
            result += text.front();
        } else {
            utf8proc_uint8_t bytes[4];
            const auto length = utf8proc_encode_char(map(point.value), bytes);
            result.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
        }
        text.remove_prefix(point.length);
    }
    return result;
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// How many bytes at the front are ASCII, in eights: nearly all of a large answer.
std::size_t asciiPrefix(std::string_view text) {
    std::size_t length = 0;
    for (std::uint64_t eight = 0; length + sizeof eight <= text.size(); length += sizeof eight) {
        std::memcpy(&eight, text.data() + length, sizeof eight);
        if (eight & 0x8080808080808080) break;
    }
    return length;
}

std::size_t endOfCharacter(std::string_view text, std::size_t start) {
    CodePoint point = firstCodePoint(text.substr(start));
    std::size_t end = start + point.length;
    utf8proc_int32_t state = 0;
    while (point.value >= 0 && end < text.size()) {
        const CodePoint next = firstCodePoint(text.substr(end));
        if (next.value < 0 || utf8proc_grapheme_break_stateful(point.value, next.value, &state)) {
            break;
        }
        end += next.length;
        point = next;
    }
    return end;
}

/// Whether a well-formed number is too small rather than too big for a double: the power of ten of
/// its first digit that is not 0.
bool isTiny(std::string_view number) {
    const auto exponentMark = number.find_first_of("eE");
    const std::string_view mantissa = number.substr(0, exponentMark);
    const auto firstDigit = mantissa.find_first_of("123456789");
    if (firstDigit == std::string_view::npos) return true;
    const auto point = std::min(mantissa.find('.'), mantissa.size());
    const auto power = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(firstDigit);
    if (exponentMark == std::string_view::npos) return power <= 0;
    const std::string_view exponentText = number.substr(exponentMark + 1);
    const auto exponent = parseInt64(exponentText);
    if (!exponent) return exponentText.front() == '-';
    return *exponent < -power;
}

}  // namespace

std::string_view trimmed(std::string_view text, Blanks blanks) {
    while (!text.empty()) {
        const CodePoint point = firstCodePoint(text);
        if (!isBlank(point.value, blanks)) break;
        text.remove_prefix(point.length);
    }
    while (!text.empty()) {
        const CodePoint point = lastCodePoint(text);
        if (!isBlank(point.value, blanks)) break;
        text.remove_suffix(point.length);
    }
    return text;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (;;) {
        const auto end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return pieces;
        text.remove_prefix(end + 1);
    }
}

std::string_view takeLine(std::string_view& rest) {
    for (std::size_t i = 0; i < rest.size();) {
        const CodePoint point = firstCodePoint(rest.substr(i));
        if (isNewline(point.value)) {
            const std::string_view line = rest.substr(0, i);
            rest.remove_prefix(i + point.length);
            return line;
        }
        i += point.length;
    }
    return std::exchange(rest, {});
}

std::vector<std::string_view> splitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    for (;;) {
        const char* const end = text.data() + text.size();
        lines.push_back(takeLine(text));
        if (!text.empty()) continue;
        // A newline character at the very end has an empty piece behind it.
        if (lines.back().data() + lines.back().size() != end) lines.push_back({});
        return lines;
    }
}

std::string replacedAll(std::string text, char from, char to) {
    std::replace(text.begin(), text.end(), from, to);
    return text;
}

std::string upperCased(std::string_view text) {
    return mapped(text, utf8proc_toupper);
}
std::string lowerCased(std::string_view text) {
    return mapped(text, utf8proc_tolower);
}

bool isValidUtf8(std::string_view bytes) {
    for (;;) {
        bytes.remove_prefix(asciiPrefix(bytes));
        if (bytes.empty()) return true;
        const CodePoint point = firstCodePoint(bytes);
        if (point.value < 0) return false;
        bytes.remove_prefix(point.length);
    }
}

std::vector<std::string_view> characters(std::string_view text, std::size_t limit) {
    std::vector<std::string_view> result;
    result.reserve(std::min(limit, text.size()));
    // The byte behind the last character tells whether it ends there; CR LF has two.
    const bool ascii = isAscii(text.substr(0, limit < text.size() ? 2 * limit + 1 : text.size()));
    for (std::size_t start = 0; start < text.size() && result.size() < limit;) {
        const std::size_t end =
            ascii ? start + (text.substr(start, 2) == "\r\n" ? 2 : 1) : endOfCharacter(text, start);
        result.push_back(text.substr(start, end - start));
        start = end;
    }
    return result;
}

std::optional<std::int64_t> parseInt64(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    std::int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return value;
}

std::optional<double> parseDouble(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (stop != end) return std::nullopt;
    if (error == std::errc::result_out_of_range && isTiny(text)) {
        return text.starts_with('-') ? -0.0 : 0.0;
    }
    if (error != std::errc{} || !std::isfinite(value)) return std::nullopt;
    return value;
}

std::string shortestText(double value) {
    std::string text = fmt::format("{}", value);
    if (text.find_first_not_of("-0123456789") == std::string::npos) text += ".0";
    return text;
}

}  // namespace veloran
