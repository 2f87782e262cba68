#include "elements/tle_parser.h"

#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

#include "base/text.h"

namespace veloran::TLEParser {

namespace {

constexpr std::size_t kLineLength = 69;

/// The lines of a text, trimmed, blank ones left out, with a look at the next three. Lines are cut
/// as they are needed, so that a text of nothing but line ends costs no memory.
class LineWalker {
  public:
    explicit LineWalker(std::string_view text) : rest_(text) {
        for (auto& line : ahead_) line = nextLine();
    }

    /// Empty behind the end.
    std::string_view line(std::size_t i) const { return ahead_[i]; }

    void advance(std::size_t count) {
        for (; count > 0; --count) {
            ahead_[0] = ahead_[1];
            ahead_[1] = ahead_[2];
            ahead_[2] = nextLine();
        }
    }

  private:
    std::string_view nextLine() {
        while (!rest_.empty()) {
            const auto line = trimmed(takeLine(rest_), Blanks::horizontal);
            if (!line.empty()) return line;
        }
        return {};
    }

    std::string_view rest_;
    std::string_view ahead_[3];
};

/// One of the two lines, cut by columns.
class Columns {
  public:
    explicit Columns(std::string_view line) : characters_(characters(line, kLineLength)) {}

    bool isComplete() const { return characters_.size() == kLineLength; }

    /// Zero-based and inclusive, without blanks around. Only of a complete line.
    std::string_view field(std::size_t first, std::size_t last) const {
        const char* const begin = characters_[first].data();
        const char* const end = characters_[last].data() + characters_[last].size();
        return trimmed({begin, static_cast<std::size_t>(end - begin)}, Blanks::horizontal);
    }

  private:
    std::vector<std::string_view> characters_;
};

bool isLine1(std::string_view line) {
    return line.starts_with("1 ");
}

bool isLine2(std::string_view line) {
    return line.starts_with("2 ");
}

std::optional<double> parseDecimals(std::string_view digits) {
    return parseDouble(std::string("0.").append(digits));
}

/// Two digits mean 1957 to 2056: no satellite is older than the first one.
std::int64_t fourDigitYear(std::int64_t year) {
    return year < 57 ? 2000 + year : 1900 + year;
}

/// Mantissa and exponent of "12345-3", where a second sign tells them apart.
std::optional<double> parseWithExponent(std::string_view text) {
    const auto mark = text.find_last_of("+-");
    if (mark == std::string_view::npos) return std::nullopt;
    const auto mantissa = parseDecimals(text.substr(0, mark));
    const auto exponent = parseDouble(text.substr(mark));
    if (!mantissa || !exponent) return std::nullopt;
    return *mantissa * std::pow(10.0, *exponent);
}

}  // namespace

std::vector<TLEData> parse(std::string_view text) {
    std::vector<TLEData> sets;
    const auto append = [&sets](std::string_view name, std::string_view line1,
                                std::string_view line2) {
        if (auto set = parseTwoLines(name, line1, line2)) sets.push_back(std::move(*set));
    };
    LineWalker walker(text);
    while (!walker.line(0).empty()) {
        const auto first = walker.line(0), second = walker.line(1), third = walker.line(2);
        if (isLine1(first) && isLine2(second)) {
            append("Unknown", first, second);
            walker.advance(2);
        } else if (!isLine1(first) && !isLine2(first) && isLine1(second) && isLine2(third)) {
            append(first, second, third);
            walker.advance(3);
        } else {
            walker.advance(1);
        }
    }
    return sets;
}

std::optional<TLEData> parseTwoLines(std::string_view name, std::string_view line1,
                                     std::string_view line2) {
    const Columns columns1(line1), columns2(line2);
    if (!columns1.isComplete() || !columns2.isComplete()) return std::nullopt;

    const auto noradId = parseInt64(columns1.field(2, 6));
    const auto year = parseInt64(columns1.field(18, 19));
    const auto epochDays = parseDouble(columns1.field(20, 31));
    const auto inclination = parseDouble(columns2.field(8, 15));
    const auto raan = parseDouble(columns2.field(17, 24));
    const auto eccentricity = parseDecimals(columns2.field(26, 32));
    const auto argPerigee = parseDouble(columns2.field(34, 41));
    const auto meanAnomaly = parseDouble(columns2.field(43, 50));
    const auto meanMotion = parseDouble(columns2.field(52, 62));
    if (!noradId || !year || !epochDays || !inclination || !raan || !eccentricity || !argPerigee ||
        !meanAnomaly || !meanMotion) {
        return std::nullopt;
    }

    TLEData set;
    set.name = name;
    set.noradId = *noradId;
    set.line1 = line1;
    set.line2 = line2;
    set.epochYear = fourDigitYear(*year);
    set.epochDays = *epochDays;
    set.bstar = parseExponentNotation(columns1.field(53, 60));
    set.inclination = *inclination;
    set.raan = *raan;
    set.eccentricity = *eccentricity;
    set.argPerigee = *argPerigee;
    set.meanAnomaly = *meanAnomaly;
    set.meanMotion = *meanMotion;
    set.revNumber = parseInt64(columns2.field(63, 67)).value_or(0);
    // "1E300" reads as a number, but no calendar has that day.
    if (!set.epochDate()) return std::nullopt;
    return set;
}

double parseExponentNotation(std::string_view text) {
    text = trimmed(text, Blanks::horizontal);
    double sign = 1;
    if (text.starts_with('-') || text.starts_with('+')) {
        sign = text.front() == '-' ? -1 : 1;
        text.remove_prefix(1);
    }
    if (text.empty()) return 0;
    auto magnitude = parseWithExponent(text);
    if (!magnitude) magnitude = parseDecimals(text);
    // An exponent such as +999 leaves the range of a double: no drag term anybody meant.
    return magnitude && std::isfinite(*magnitude) ? sign * *magnitude : 0;
}

}  // namespace veloran::TLEParser
