#include "elements/line_columns.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

namespace veloran {
namespace {

void expectFixed(double value, int width, int decimals) {
    LineColumns blanks, zeros;
    blanks.fixed(value, width, decimals, ' ');
    zeros.fixed(value, width, decimals, '0');
    ASSERT_EQ(blanks.view(), fmt::format("{:{}.{}f}", value, width, decimals));
    ASSERT_EQ(zeros.view(), fmt::format("{:0{}.{}f}", value, width, decimals));
}

void expectInteger(std::int64_t value, int width) {
    LineColumns blanks, zeros;
    blanks.integer(value, width, ' ');
    zeros.integer(value, width, '0');
    ASSERT_EQ(blanks.view(), fmt::format("{:{}d}", value, width));
    ASSERT_EQ(zeros.view(), fmt::format("{:0{}d}", value, width));
}

TEST(LineColumns, DecimalsAreThoseOfAllDigits) {
    std::mt19937_64 random(20261121);
    std::uniform_real_distribution<double> mantissa(-0.2, 1);
    for (int i = 0; i < 100000; ++i) {
        expectFixed(mantissa(random) * std::pow(10, i % 20 - 9), 8 + i % 5, 1 + i % 8);
    }
}

TEST(LineColumns, HalvesOfTheLastDecimalRoundAsAllDigitsDo) {
    std::mt19937_64 random(20261121);
    for (int i = 0; i < 100000; ++i) {
        const int decimals = 1 + i % 8;
        const double half =
            (static_cast<double>(random() % 100'000'000) + 0.5) / std::pow(10, decimals);
        expectFixed(half, 8, decimals);
        expectFixed(std::nextafter(half, 0), 8, decimals);
        expectFixed(std::nextafter(half, 1e300), 8, decimals);
    }
}

TEST(LineColumns, NumbersOfAnySizeTakeTheColumnsTheyNeed) {
    for (const double value : {0.0, -0.0, -1e-9, 0.999999999, 9999.99995, 1e15, -1e300, 5e-324}) {
        expectFixed(value, 8, 4);
        expectFixed(value, 11, 8);
    }
    for (const std::int64_t value :
         {std::int64_t{0}, std::int64_t{-7}, std::int64_t{123456}, INT64_MAX, INT64_MIN}) {
        expectInteger(value, 1);
        expectInteger(value, 5);
    }
}

TEST(LineColumns, FitCountsCharactersBehindItsStart) {
    LineColumns columns;
    columns.text("1 \xc3\xa9");
    columns.fit(2, 3);
    columns.text(
        "e\xcc\x81"
        "bcd");
    columns.fit(6, 2);
    EXPECT_EQ(columns.view(),
              "1 \xc3\xa9  e\xcc\x81"
              "b");
}

}  // namespace
}  // namespace veloran
