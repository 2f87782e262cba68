#include "base/json.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <random>
#include <string>

namespace veloran {
namespace {

TEST(ParseJson, ReadsEveryNumberAsTheNearestDouble) {
    std::mt19937_64 random(20261121);
    std::uniform_real_distribution<double> mantissa(-1, 1);
    std::uniform_int_distribution<int> exponent(-300, 300);
    for (int i = 0; i < 20000; ++i) {
        const double expected = mantissa(random) * std::pow(10.0, exponent(random));
        char digits[64];
        const auto end = std::to_chars(digits, digits + sizeof digits, expected).ptr;
        const auto value = parseJson(std::string(digits, end));
        ASSERT_TRUE(value) << std::string(digits, end);
        ASSERT_EQ(value->to_number<double>(), expected) << std::string(digits, end);
    }
}

TEST(ParseJson, TellsWholeNumbersFromOthers) {
    EXPECT_TRUE(parseJson("25544")->is_int64());
    EXPECT_TRUE(parseJson("25544.0")->is_double());
    EXPECT_TRUE(parseJson("18446744073709551615")->is_uint64());
}

TEST(ParseJson, ReadsNumbersBeyondADoubleAsInfinityOrZero) {
    EXPECT_EQ(parseJson("1e400")->get_double(), HUGE_VAL);
    EXPECT_EQ(parseJson("-1e400")->get_double(), -HUGE_VAL);
    EXPECT_EQ(parseJson("1e-400")->get_double(), 0.0);
}

TEST(ParseJson, RefusesWhatIsNotOneWholeValue) {
    for (const char* text : {"", " ", "[", "[1,]", "{\"a\":}", "1 2", "nan", "\"\xff\"", "[1]x"}) {
        EXPECT_FALSE(parseJson(text)) << text;
    }
}

TEST(ParseJson, RefusesDeepNestingWithoutHarm) {
    EXPECT_FALSE(parseJson(std::string(5'000'000, '[')));
    EXPECT_TRUE(parseJson(std::string(20, '[') + std::string(20, ']')));
}

TEST(ParseJson, RefusesObjectsOfTooManyMembers) {
    const auto objectOf = [](int members) {
        std::string text = "{";
        for (int i = 0; i < members; ++i) {
            text += (i ? ",\"k" : "\"k") + std::to_string(i) + "\":{\"a\":1,\"b\":2}";
        }
        return text + "}";
    };
    EXPECT_TRUE(parseJson(objectOf(1024)));
    EXPECT_FALSE(parseJson(objectOf(1025)));
    EXPECT_TRUE(parseJson(objectOf(1025), 2000));
}

TEST(ParseJson, RefusesMillionsOfValuesBeforeTheyFillTheMemory) {
    std::string text = "[0";
    for (int i = 0; i < 5'000'000; ++i) text += ",0";
    EXPECT_FALSE(parseJson(text + "]"));
}

}  // namespace
}  // namespace veloran
