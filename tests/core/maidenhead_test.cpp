#include "core/maidenhead.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace veloran {
namespace {

TEST(Maidenhead, DefaultObserverIsInEm73) {
    EXPECT_EQ(toMaidenhead(33.87, -84.34).substr(0, 4), "EM73");
}

TEST(Maidenhead, OriginIsFirstCellOfJj) {
    EXPECT_EQ(toMaidenhead(0, 0), "JJ00aa");
}

TEST(Maidenhead, PoleOnTheDateLineCapsOnlyTheLetters) {
    EXPECT_EQ(toMaidenhead(90, 180), "RR00aa");
}

TEST(Maidenhead, SouthPoleOnTheDateLineIsFirstCellOfAll) {
    EXPECT_EQ(toMaidenhead(-90, -180), "AA00aa");
}

TEST(Maidenhead, PositionsBelowTheRangeCannotHaveOne) {
    EXPECT_TRUE(canHaveLocator(-90, -180));
    EXPECT_TRUE(canHaveLocator(95, 400));
    EXPECT_FALSE(canHaveLocator(-90.001, 0));
    EXPECT_FALSE(canHaveLocator(0, -180.001));
    EXPECT_FALSE(canHaveLocator(std::nan(""), 0));
    EXPECT_FALSE(canHaveLocator(0, std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(canHaveLocator(1e300, 0));
}

TEST(MaidenheadDeathTest, PositionsBelowTheRangeStopTheProgram) {
    EXPECT_DEATH(toMaidenhead(-91, 0), "veloran: ");
    EXPECT_DEATH(toMaidenhead(0, -181), "veloran: ");
    EXPECT_DEATH(toMaidenhead(std::nan(""), 0), "veloran: ");
}

// ---- fromMaidenhead

TEST(Maidenhead, FourCharactersGiveTheCentreOfTheSquareSixOfTheSubsquare) {
    const auto square = fromMaidenhead("EM73");
    ASSERT_TRUE(square);
    EXPECT_EQ(square->lat, 33.5);
    EXPECT_EQ(square->lon, -85);
    const auto subsquare = fromMaidenhead("EM73aa");
    ASSERT_TRUE(subsquare);
    EXPECT_DOUBLE_EQ(subsquare->lat, 33 + 1.0 / 48);
    EXPECT_DOUBLE_EQ(subsquare->lon, -86 + 1.0 / 24);
}

TEST(Maidenhead, SmallLettersReadLikeCapitals) {
    const auto small = fromMaidenhead("em73tu");
    const auto capital = fromMaidenhead("EM73TU");
    ASSERT_TRUE(small && capital);
    EXPECT_EQ(small->lat, capital->lat);
    EXPECT_EQ(small->lon, capital->lon);
}

TEST(Maidenhead, UnderFourCharactersThereIsNoPosition) {
    EXPECT_FALSE(fromMaidenhead(""));
    EXPECT_FALSE(fromMaidenhead("EMA"));
    EXPECT_FALSE(fromMaidenhead("\xC3\xA4\xC3\xA4"));  // two characters of two bytes
}

TEST(Maidenhead, LetterInPlaceOfADigitGivesNoPosition) {
    EXPECT_FALSE(fromMaidenhead("EMA3"));
    EXPECT_FALSE(fromMaidenhead("EM7A"));
    EXPECT_FALSE(fromMaidenhead("EM7\xC3\xA4"));
    EXPECT_FALSE(fromMaidenhead("EM+3"));
}

TEST(Maidenhead, FifthCharacterAloneAndWhatFollowsTheSixthAreIgnored) {
    EXPECT_EQ(fromMaidenhead("EM73!")->lat, 33.5);
    EXPECT_EQ(fromMaidenhead("EM73tu!\xFF")->lat, fromMaidenhead("EM73tu")->lat);
}

TEST(Maidenhead, LettersBehindTheLastCellGivePositionsOffTheMap) {
    EXPECT_EQ(fromMaidenhead("ZZ99")->lon, 25 * 20 + 18 - 180 + 1);
    EXPECT_EQ(fromMaidenhead("ZZ99")->lat, 25 * 10 + 9 - 90 + 0.5);
    EXPECT_DOUBLE_EQ(fromMaidenhead("AA00zz")->lat, 25.0 / 24 - 90 + 1.0 / 48);
}

TEST(Maidenhead, EveryLocatorLeadsBackToItself) {
    for (double lat = -89.99; lat < 90; lat += 7.3) {
        for (double lon = -179.99; lon < 180; lon += 11.7) {
            const auto locator = toMaidenhead(lat, lon);
            const auto centre = fromMaidenhead(locator);
            ASSERT_TRUE(centre && readsAsLocator(locator));
            EXPECT_EQ(toMaidenhead(centre->lat, centre->lon), locator);
            EXPECT_NEAR(centre->lat, lat, 1.0 / 48 + 1e-9);
            EXPECT_NEAR(centre->lon, lon, 1.0 / 24 + 1e-9);
        }
    }
}

TEST(MaidenheadDeathTest, WhatDoesNotReadAsALocatorStopsTheProgram) {
    for (const char* const text : {"1M73", "E173", "\xC3\xA4M73", "EM7311", "EM73t\xC3\xBC"}) {
        EXPECT_FALSE(readsAsLocator(text)) << text;
        EXPECT_DEATH(fromMaidenhead(text), "veloran: ") << text;
    }
}

TEST(Maidenhead, WhatIsNoLetterStandsForNone) {
    for (const char* const text : {"__12", "[M73", "E`73", "EM73_a", "EM73a|", "EM73{}"}) {
        EXPECT_FALSE(readsAsLocator(text)) << text;
    }
}

TEST(Maidenhead, EveryShortTextThatReadsAsALocatorCanBeTaken) {
    const std::string alphabet = "\n 0@A[z~\x7F\xC3\xA4";
    for (const char a : alphabet) {
        for (const char b : alphabet) {
            for (const char c : alphabet) {
                for (const std::string& text :
                     {std::string{a, b, c}, std::string{a, b, '7', c}, std::string{a, b, '7', '3'},
                      std::string{'E', 'M', '7', '3', a, b, c}}) {
                    if (!readsAsLocator(text)) continue;
                    const auto position = fromMaidenhead(text);
                    EXPECT_TRUE(!position || std::isfinite(position->lat + position->lon));
                }
            }
        }
    }
}

}  // namespace
}  // namespace veloran
