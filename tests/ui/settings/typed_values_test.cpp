#include "ui/settings/typed_values.h"

#include <gtest/gtest.h>

#include <cmath>

#include "ui/settings/settings_form.h"

namespace veloran::test {
namespace {

TEST(TypedNumber, TakesAPointOrADecimalComma) {
    EXPECT_EQ(typedNumber("300"), 300);
    EXPECT_EQ(typedNumber("12.5"), 12.5);
    EXPECT_EQ(typedNumber("12,5"), 12.5);
    EXPECT_EQ(typedNumber("-12,25"), -12.25);
    EXPECT_EQ(typedNumber("\u221212,25"), -12.25) << "a minus sign from a web page";
    EXPECT_EQ(typedNumber(".5"), 0.5);
    EXPECT_EQ(typedNumber("1e1"), 10);
    EXPECT_EQ(typedNumber("0,500"), 0.5);
    EXPECT_EQ(typedNumber("1234,567"), 1234.567);
}

TEST(TypedNumber, BlanksAroundAreNoPartOfIt) {
    EXPECT_EQ(typedNumber("  300\t"), 300);
    EXPECT_EQ(typedNumber("\u00a012,5\u2009"), 12.5);
    EXPECT_FALSE(typedNumber("3 00"));
}

TEST(TypedNumber, WhatMayBeAThousandSaysNothing) {
    for (const char* text : {"1,500", "-12,000", "+999,999"})
        EXPECT_FALSE(typedNumber(text)) << text;
}

TEST(TypedNumber, OtherTextSaysNothing) {
    for (const char* text : {"", " ", "-", ",", ",5", "5,", "1,5,5", "1.5,5", "1,5.5", "12,x",
                             "abc", "nan", "inf", "1e999", "300 m"}) {
        EXPECT_FALSE(typedNumber(text)) << text;
    }
}

TEST(TypedAngle, TakesWhatPeopleWrite) {
    for (const char* text :
         {"33.87", "33,87", " 33.87 ", "33.87\u00b0", "33,87 \u00b0", "33.87 N", "33.87n",
          "N 33.87", "n33,87", "33.87\u00b0 N", "33.87\u00baN", "N 33.87\u00b0", "+33.87"}) {
        EXPECT_EQ(typedLatitude(text), 33.87) << text;
    }
    for (const char* text : {"-84.34", "-84,34", "\u221284.34\u00b0", "84.34 W", "84,34w", "W84.34",
                             "w 84,34\u00b0", "84.34\u00b0 W"}) {
        EXPECT_EQ(typedLongitude(text), -84.34) << text;
    }
    EXPECT_EQ(typedLatitude("12 s"), -12);
    EXPECT_EQ(typedLongitude("12 e"), 12);
    EXPECT_EQ(typedLatitude("33,870"), 33.87) << "no latitude has thousands";
    EXPECT_EQ(typedLatitude("200"), 200) << "there is no upper end";
    EXPECT_EQ(typedLongitude("1e1"), 10);
}

TEST(TypedAngle, SouthOfNothingIsNothing) {
    const auto equator = typedLatitude("0 S");
    ASSERT_TRUE(equator);
    EXPECT_FALSE(std::signbit(*equator));
}

TEST(TypedAngle, LetterOfTheOtherAngleAndASignBesideALetterSayNothing) {
    for (const char* text : {"33.87 E", "W 33.87", "-33.87 N", "+33.87 N", "N33.87N", "NS 33", "N",
                             "33.87 N N", "33\u00b052", "33\u00b0 52' N", "33 52", "\u00b0", "91-",
                             "-90.1", "90.1 S", "33.87, -84.34", "33,87,5"}) {
        EXPECT_FALSE(typedLatitude(text)) << text;
    }
    for (const char* text : {"84.34 N", "S 84", "-84.34 W", "-180.1", "181 W"}) {
        EXPECT_FALSE(typedLongitude(text)) << text;
    }
}

TEST(TypedPosition, TakesLatitudeAndLongitude) {
    for (const char* text : {"33.87, -84.34",
                             "33.87,-84.34",
                             "33.87 , -84.34",
                             " 33.87,  -84.34 ",
                             "33,87, -84,34",
                             "33,87,-84,34",
                             "33,87; -84,34",
                             "33,87;-84,34",
                             "33.87;-84.34",
                             "33.87 -84.34",
                             "33,87 -84,34",
                             "33.87\u00a0\u221284.34",
                             "33.87\t-84.34",
                             "33.87 N, 84.34 W",
                             "33.87N 84.34W",
                             "N 33.87 W 84.34",
                             "33,87 N; 84,34 W",
                             "84.34 W, 33.87 N",
                             "33.87\u00b0 N, 84.34\u00b0 W",
                             "33.87\u00b0, -84.34\u00b0",
                             "33.87\u00b0 -84.34\u00b0"}) {
        const auto both = typedPosition(text);
        ASSERT_TRUE(both) << text;
        EXPECT_EQ(both->lat, 33.87) << text;
        EXPECT_EQ(both->lon, -84.34) << text;
    }
}

TEST(TypedPosition, TakesWholeDegrees) {
    for (const char* text :
         {"52, 13", "52;13", "52.0 13", "52 +13", "52\u00b0 13\u00b0", "52N 13E"}) {
        const auto both = typedPosition(text);
        ASSERT_TRUE(both) << text;
        EXPECT_EQ(both->lat, 52) << text;
        EXPECT_EQ(both->lon, 13) << text;
    }
}

TEST(TypedPosition, OneNumberIsNone) {
    for (const char* text : {"33,87", "33.87", "33,87 N", "-84,34", "84.34 W", "33,870", ""}) {
        EXPECT_FALSE(typedPosition(text)) << text;
    }
}

TEST(TypedPosition, WhatMayMeanTwoThingsSaysNothing) {
    for (const char* text : {"5 5", "52 31", "52 31.5", "52 31.5 N", "52\u00b0 31.5", "33,87,84",
                             "1,2,3", "33.87 N, 84.34", "33.87, 84.34 W"}) {
        EXPECT_FALSE(typedPosition(text)) << text;
    }
}

TEST(TypedPosition, OtherTextSaysNothing) {
    for (const char* text : {"33.87,", ", -84.34", "33.87;;-84.34", "33.87, -84.34, 300",
                             "33.87 N, 84.34 N", "84.34 W, 33.87 E", "north, west", "-91, 0",
                             "0, -181", "33.87/-84.34", "(33.87, -84.34)", ",,,,", "   "}) {
        EXPECT_FALSE(typedPosition(text)) << text;
    }
    EXPECT_FALSE(typedPosition("33.87" + std::string(200, ' ') + "-84.34")) << "no position";
    EXPECT_FALSE(typedPosition(std::string(1'000'000, ',')));
}

TEST(TypedPlace, TextWithBothGoesBeforeTheOtherField) {
    EXPECT_EQ(typedPlace("33,87", "84.34 W"), (TypedPlace{33.87, -84.34}));
    EXPECT_EQ(typedPlace("33.87, -84.34", "12"), (TypedPlace{33.87, -84.34}));
    EXPECT_EQ(typedPlace("12", "33.87, -84.34"), (TypedPlace{33.87, -84.34}));
    EXPECT_EQ(typedPlace("high", "12"), (TypedPlace{std::nullopt, 12}));
    EXPECT_EQ(typedPlace("", ""), TypedPlace{});
}

TEST(PlainTexts, NumbersTakeTheFormThatIsRead) {
    EXPECT_EQ(plainTexts({.latitude = " 33,87\u00b0 N",
                          .longitude = "84,34 W ",
                          .altitude = " 12,5",
                          .host = " radio ",
                          .port = " 4532 ",
                          .updateRate = "2,5 "}),
              (SettingsTexts{.latitude = "33.87",
                             .longitude = "-84.34",
                             .altitude = "12.5",
                             .host = " radio ",
                             .port = "4532",
                             .updateRate = "2.5"}));
}

TEST(PlainTexts, TextWithBothCoordinatesFillsBoth) {
    SettingsTexts typed;
    typed.latitude = "-12; 34,5";
    typed.longitude = "99";
    const SettingsTexts plain = plainTexts(typed);
    EXPECT_EQ(plain.latitude, "-12.0");
    EXPECT_EQ(plain.longitude, "34.5");
}

TEST(PlainTexts, WhatDoesNotReadStaysAndIsNotTaken) {
    const SettingsTexts typed{.latitude = "5 5",
                              .longitude = "84.34 N",
                              .altitude = "1,500",
                              .host = "",
                              .port = "45 32",
                              .updateRate = "fast"};
    const SettingsTexts plain = plainTexts(typed);
    EXPECT_EQ(plain, typed);
    EXPECT_FALSE(readLatitude(plain.latitude) || readLongitude(plain.longitude) ||
                 readAltitude(plain.altitude) || readPort(plain.port) ||
                 readUpdateRate(plain.updateRate));
}

}  // namespace
}  // namespace veloran::test
