#include "elements/line_columns.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <optional>

#include "base/text.h"

namespace veloran {

namespace {

constexpr std::array<double, 9> kPowersOfTen{1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};

/// A number in units of its last decimal, where one multiplication surely rounds as all the digits
/// would: writing those out takes several times as long.
std::optional<std::uint64_t> inLastDecimals(double value, int decimals) {
    const double units = value * kPowersOfTen[static_cast<std::size_t>(decimals)];
    if (std::signbit(value) || !(units < 0x1p40)) return std::nullopt;
    const auto whole = static_cast<std::uint64_t>(units);
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
    if (value < 0) {
        const auto* const form = filler == '0' ? "{:0{}d}" : "{:{}d}";
        fmt::format_to(std::back_inserter(columns_), fmt::runtime(form), value, width);
        return;
    }
    const fmt::format_int digits(value);
    const auto missing = width - static_cast<int>(digits.size());
    if (missing > 0) fill(static_cast<std::size_t>(missing), filler);
    text({digits.data(), digits.size()});
}

void LineColumns::fill(std::size_t count, char filler) {
    const std::size_t start = size();
    columns_.resize(start + count);
    std::fill_n(columns_.data() + start, count, filler);
}

void LineColumns::fixed(double value, int width, int decimals, char filler) {
    const auto units = inLastDecimals(value, decimals);
    if (!units) {
        const auto* const form = filler == '0' ? "{:0{}.{}f}" : "{:{}.{}f}";
        fmt::format_to(std::back_inserter(columns_), fmt::runtime(form), value, width, decimals);
        return;
    }
    const auto scale = static_cast<std::uint64_t>(kPowersOfTen[static_cast<std::size_t>(decimals)]);
    integer(static_cast<std::int64_t>(*units / scale), width - decimals - 1, filler);
    character('.');
    integer(static_cast<std::int64_t>(*units % scale), decimals, '0');
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
    fill(width - present, ' ');
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
