#include "elements/line_columns.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <optional>

#include "base/text.h"

namespace veloran {

namespace {

constexpr std::array<std::int64_t, 9> kPowersOfTen{
    1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000};

std::int64_t powerOfTen(int exponent) {
    return kPowersOfTen[static_cast<std::size_t>(exponent)];
}

/// Whether a number has at most so many digits, of up to eight.
bool hasDigits(std::int64_t value, int most) {
    return value >= 0 && most >= 1 && most <= 8 && value < powerOfTen(most);
}

/// A number in units of its last decimal, where one multiplication surely rounds as all the digits
/// would: writing those out takes several times as long.
std::optional<std::int64_t> inLastDecimals(double value, int decimals) {
    const double units = value * static_cast<double>(powerOfTen(decimals));
    if (std::signbit(value) || !(units < 0x1p40)) return std::nullopt;
    const auto whole = static_cast<std::int64_t>(units);
    const double rest = units - static_cast<double>(whole);
    // The product is off by 2^-14 at most.
    if (std::abs(rest - 0.5) < 0x1p-12) return std::nullopt;
    return rest < 0.5 ? whole : whole + 1;
}

}  // namespace

void LineColumns::text(std::string_view text) {
    columns_.append(text.data(), text.data() + text.size());
}

void LineColumns::integer(std::int64_t value, int width, char filler) {
    if (!hasDigits(value, width)) {
        const auto* const form = filler == '0' ? "{:0{}d}" : "{:{}d}";
        fmt::format_to(std::back_inserter(columns_), fmt::runtime(form), value, std::max(width, 0));
        return;
    }
    auto rest = static_cast<std::uint32_t>(value);
    columns_.resize(size() + static_cast<std::size_t>(width));
    char* digit = columns_.end();
    for (int i = 0; i < width; ++i, rest /= 10) {
        *--digit = rest > 0 || i == 0 ? static_cast<char>('0' + rest % 10) : filler;
    }
}

void LineColumns::fixed(double value, int width, int decimals, char filler) {
    const auto units = inLastDecimals(value, decimals);
    if (!units) {
        const auto* const form = filler == '0' ? "{:0{}.{}f}" : "{:{}.{}f}";
        fmt::format_to(std::back_inserter(columns_), fmt::runtime(form), value, width, decimals);
        return;
    }
    const std::int64_t one = powerOfTen(decimals);
    integer(*units / one, width - decimals - 1, filler);
    character('.');
    integer(*units % one, decimals, '0');
}

void LineColumns::fit(std::size_t start, std::size_t width) {
    const std::string_view written = view().substr(start);
    std::size_t bytes = std::min(written.size(), width);
    std::size_t present = bytes;
    if (!hasOneByteCharacters(written)) {
        const auto kept = characters(written, width);
        present = kept.size();
        bytes = 0;
        for (const auto character : kept) bytes += character.size();
    }
    columns_.resize(start + bytes);
    for (; present < width; ++present) character(' ');
}

bool hasOneByteCharacters(std::string_view text) {
    // Without an early end, and in bytes, many of them go at a time.
    unsigned char bits = 0, returns = 0;
    for (const char c : text) {
        bits |= static_cast<unsigned char>(c);
        returns |= static_cast<unsigned char>(c == '\r');
    }
    return bits < 0x80 && returns == 0;
}

}  // namespace veloran
