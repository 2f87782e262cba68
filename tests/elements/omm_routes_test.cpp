// The reader that makes no tree of values, and the columns that are no formats, against the plain
// way.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "elements/element_records.h"
#include "elements/omm_parser.h"
#include "elements/plain_omm.h"

namespace veloran {
namespace {

using test::parsePlainly;

std::array<double, 8> numbers(const TLEData& set) {
    return {set.epochDays,    set.bstar,      set.inclination, set.raan,
            set.eccentricity, set.argPerigee, set.meanAnomaly, set.meanMotion};
}

std::array<std::uint64_t, 8> bits(const TLEData& set) {
    return std::bit_cast<std::array<std::uint64_t, 8>>(numbers(set));
}

/// How many sets both routes give.
std::size_t expectSameSets(const std::string& text) {
    const auto sets = OMMParser::parse(text);
    const auto plain = parsePlainly(text);
    EXPECT_EQ(sets.size(), plain.size()) << text.substr(0, 4000);
    for (std::size_t i = 0; i < std::min(sets.size(), plain.size()); ++i) {
        EXPECT_EQ(sets[i].name, plain[i].name);
        EXPECT_EQ(sets[i].noradId, plain[i].noradId);
        EXPECT_EQ(sets[i].line1, plain[i].line1) << text.substr(0, 4000);
        EXPECT_EQ(sets[i].line2, plain[i].line2) << text.substr(0, 4000);
        EXPECT_EQ(sets[i].epochYear, plain[i].epochYear);
        EXPECT_EQ(sets[i].revNumber, plain[i].revNumber);
        EXPECT_EQ(sets[i].source, plain[i].source);
        EXPECT_EQ(bits(sets[i]), bits(plain[i])) << text.substr(0, 4000);
    }
    return sets.size();
}

/// Texts of messages as no service writes them, but for most of their members.
class MessageDice {
  public:
    explicit MessageDice(unsigned seed) : random_(seed) {}

    std::string answer() {
        std::string text = "[";
        const int count = between(0, 3);
        for (int i = 0; i < count; ++i) text += (i ? "," : "") + message();
        text += "]";
        if (oneIn(10)) damage(text);
        return text;
    }

  private:
    int between(int low, int high) { return std::uniform_int_distribution(low, high)(random_); }
    bool oneIn(int count) { return between(1, count) == 1; }
    double real(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random_);
    }
    template <std::size_t n>
    std::string oneOf(const std::array<const char*, n>& texts) {
        return texts[static_cast<std::size_t>(between(0, n - 1))];
    }

    std::string message() {
        std::vector<std::string> members;
        for (const auto* name : {"MEAN_MOTION", "INCLINATION", "RA_OF_ASC_NODE", "MEAN_ANOMALY",
                                 "ARG_OF_PERICENTER", "ECCENTRICITY", "BSTAR"}) {
            add(members, name, number(), 200);
        }
        for (const auto* name : {"MEAN_MOTION_DOT", "MEAN_MOTION_DDOT"}) {
            add(members, name, oneIn(8) ? "null" : number(), 8);
        }
        for (const auto* name : {"ELEMENT_SET_NO", "REV_AT_EPOCH", "EPHEMERIS_TYPE"}) {
            add(members, name, oneIn(8) ? "null" : whole(), 8);
        }
        for (const auto* name : {"CLASSIFICATION_TYPE", "OBJECT_ID"}) {
            add(members, name, oneIn(8) ? "null" : text(), 8);
        }
        add(members, "OBJECT_NAME", text(), 200);
        add(members, "NORAD_CAT_ID", whole(), 200);
        add(members, "EPOCH", epoch(), 200);
        if (oneIn(3)) members.push_back(quoted(oneIn(2) ? "EPOC" : "bstar") + ":" + odd());
        if (oneIn(2)) std::shuffle(members.begin(), members.end(), random_);
        std::string result = "{";
        for (const auto& member : members) result += (result.size() > 1 ? ", " : "") + member;
        return result + "}";
    }
    /// Seldom left out, of another type, or there twice.
    void add(std::vector<std::string>& members, const std::string& name, const std::string& value,
             int leftOutOneIn) {
        const std::string key = quoted(oneIn(100) ? escaped(name) : name) + ":";
        if (oneIn(leftOutOneIn)) return;
        if (oneIn(30)) members.push_back(key + odd());
        members.push_back(key + value);
        if (oneIn(150)) members.push_back(key + odd());
    }

    static std::string quoted(const std::string& text) { return '"' + text + '"'; }
    static std::string escaped(const std::string& name) {
        return fmt::format("\\u{:04x}{}", static_cast<unsigned>(name[0]), name.substr(1));
    }
    std::string number() {
        switch (between(0, 9)) {
            case 0:
                return whole();
            case 1:
                return fmt::format("{}", std::bit_cast<double>(finiteBits()));
            case 2:  // halves of the last decimal of a column
                return fmt::format("{}.{:04}5", between(0, 360), between(0, 9999));
            case 3:
                return fmt::format("{}", between(-64000, 64000) / 32.0 * 1e-3);
            case 4:
                return fmt::format("{}", std::ldexp(between(-4000, 4000), between(-40, 4)));
            case 5:
                return oneOf<6>({"0", "-0", "-0.0", "0.999999995", "9.99999999999e-5", "1e-320"});
            default:
                return fmt::format("{:.{}f}", real(-0.1, 1) * std::pow(10, between(-5, 3)),
                                   between(1, 20));
        }
    }
    std::uint64_t finiteBits() {
        const std::uint64_t bits = random_();
        return std::isfinite(std::bit_cast<double>(bits)) && oneIn(2)
                   ? bits
                   : bits >> 12 | std::uint64_t(1023 + between(-60, 60)) << 52;
    }
    std::string whole() {
        if (oneIn(6)) {
            return oneOf<8>({"25544.0", "0", "-7", "-0.0", "9223372036854775807", "1e5", "123456",
                             "-9223372036854775808"});
        }
        return std::to_string(between(0, oneIn(4) ? 2'000'000 : 99999));
    }
    std::string text() {
        return quoted(
            oneOf<14>({"U", "", "ISS (ZARYA)", "1998-067A", "2020-001ABC", "98067A", "-", "+5-1",
                       "\\u00e9t\\u00e9", "e\xcc\x81 1-2", "\\r\\n\\r", "99-\\ud83d\\ude80",
                       "A NAME THAT IS LONGER THAN ITS COLUMNS", "2020-1\xc3\xa9"}));
    }
    std::string epoch() {
        if (oneIn(12)) {
            return quoted(
                oneOf<8>({"", "T", "2026-04-05", "2026-04-05T1:2:3Z", "2026-04-05T0:0:1e300",
                          "-5-1-1T0:0:0", "999-13-40T30:70:-5.5", "123456-1-1T0:0:0"}));
        }
        return quoted(fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:09.6f}", between(1950, 2060),
                                  between(1, 12), between(1, 31), between(0, 23), between(0, 59),
                                  real(0, 60)));
    }
    /// Nothing that any member may hold for sure.
    std::string odd() {
        return oneOf<16>({"null", "true", "false", "\"\"", "\"0.5\"", "[]", "{}", "[1,[2],{}]",
                          R"({"BSTAR":1,"EPOCH":{"a":[null]}})", "1e400", "-1e400", "1e300",
                          "18446744073709551615", "18446744073709551616", "2.5", "3"});
    }
    void damage(std::string& text) {
        const auto at = static_cast<std::size_t>(between(0, static_cast<int>(text.size()) - 1));
        if (oneIn(3)) {
            text.resize(at);
        } else if (oneIn(2)) {
            text.erase(at, 1);
        } else {
            text[at] = oneOf<8>({"\"", ",", "{", "]", "\xff", "\\", "0", " "})[0];
        }
    }

    std::mt19937_64 random_;
};

TEST(OmmRoutes, OddMessagesGiveTheSameEitherWay) {
    std::size_t sets = 0;
    for (unsigned seed = 0; seed < 20000 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(fmt::format("seed {}", seed));
        sets += expectSameSets(MessageDice(seed).answer());
    }
    EXPECT_GT(sets, 5000u);
}

TEST(OmmRoutes, SeedsOfHostileInputGiveTheSameEitherWay) {
    const auto directory = std::filesystem::path(VELORAN_SOURCE_DIR) / "fuzz/corpus/omm_json";
    std::size_t sets = 0;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        std::ifstream file(entry.path(), std::ios::binary);
        sets += expectSameSets({std::istreambuf_iterator<char>(file), {}});
    }
    EXPECT_GT(sets, 0u);
}

std::string withUnknownMember(const std::string& value) {
    const auto message = test::messages({test::stationMessage()});
    return "[{\"UNKNOWN\":" + value + "," + message.substr(2);
}

std::string objectOf(int members) {
    std::string text = "{";
    for (int i = 0; i < members; ++i) text += fmt::format("{}\"k{}\":0", i ? "," : "", i);
    return text + "}";
}

std::string listOf(std::size_t values) {
    std::string text = "[0";
    while (text.size() < 2 * values) text += ",0";
    return text + "]";
}

TEST(OmmRoutes, UnknownMembersHaveTheSameLimitsEitherWay) {
    const auto nested = [](std::size_t depth) {
        return withUnknownMember(std::string(depth, '[') + std::string(depth, ']'));
    };
    EXPECT_EQ(expectSameSets(nested(30)), 1u);
    EXPECT_EQ(expectSameSets(nested(31)), 0u);
    EXPECT_EQ(expectSameSets(withUnknownMember(objectOf(1024))), 1u);
    EXPECT_EQ(expectSameSets(withUnknownMember(objectOf(1025))), 0u);
    EXPECT_EQ(expectSameSets(withUnknownMember(listOf(3'999'980))), 1u);
    EXPECT_EQ(expectSameSets(withUnknownMember(listOf(3'999'981))), 0u);
    EXPECT_EQ(expectSameSets(withUnknownMember("\"\xff\"")), 0u);
    EXPECT_EQ(expectSameSets(withUnknownMember("\"\\ud800\"")), 0u);
    EXPECT_EQ(expectSameSets(withUnknownMember("1e400")), 1u);
    EXPECT_EQ(expectSameSets(withUnknownMember("{\"EPOCH\":1,\"EPOCH\":{}}")), 1u);
}

TEST(OmmRoutes, WhatIsNoListOfMessagesGivesNothingEitherWay) {
    const auto message = boost::json::serialize(test::stationMessage());
    for (const auto& text :
         {std::string("null"), std::string("1"), std::string("\"[]\""), message,
          "[" + message + ",1]", "[" + message + ",[]]", "[[" + message + "]]",
          "[" + message + "] ]", "{\"a\":[" + message + "]}", std::string("[null]")}) {
        EXPECT_EQ(expectSameSets(text), 0u) << text;
    }
    EXPECT_EQ(expectSameSets(" [" + message + "]\n"), 1u);
}

TEST(OmmRoutes, OfEqualNamesTheLastOneCounts) {
    const auto twice = [](const std::string& first, const std::string& second) {
        auto text = test::messages({test::stationMessage()});
        text.replace(text.find("\"BSTAR\""), 8,
                     "\"BSTAR\":" + first + ",\"BSTAR\":" + second + ",\"x\":");
        return expectSameSets(text);
    };
    EXPECT_EQ(twice("null", "1"), 1u);
    EXPECT_EQ(twice("[1,{}]", "2"), 1u);
    EXPECT_EQ(twice("1", "null"), 0u);
    EXPECT_EQ(twice("1", "\"1\""), 0u);
    EXPECT_EQ(twice("1", "{}"), 0u);
}

}  // namespace
}  // namespace veloran
