#include "elements/omm_parser.h"

#include <gtest/gtest.h>

#include "elements/element_records.h"
#include "elements/tle_parser.h"

namespace veloran {
namespace {

using test::messages;
using test::stationMessage;

boost::json::object with(const char* key, boost::json::value value) {
    auto message = stationMessage();
    message[key] = std::move(value);
    return message;
}

boost::json::object without(const char* key) {
    auto message = stationMessage();
    message.erase(key);
    return message;
}

std::size_t countBesideAGoodOne(const boost::json::object& message) {
    return OMMParser::parse(messages({stationMessage(), message})).size();
}

TEST(OMMParserParse, AnEmptyArrayGivesNothing) {
    EXPECT_TRUE(OMMParser::parse("[]").empty());
}

TEST(OMMParserParse, AnObjectAtTheTopGivesNothing) {
    EXPECT_TRUE(OMMParser::parse(boost::json::serialize(stationMessage())).empty());
}

TEST(OMMParserParse, ARecordWithoutDragTermEmptiesTheWholeAnswer) {
    EXPECT_EQ(countBesideAGoodOne(stationMessage()), 2u);
    EXPECT_EQ(countBesideAGoodOne(without("BSTAR")), 0u);
    EXPECT_EQ(countBesideAGoodOne(with("BSTAR", nullptr)), 0u);
    EXPECT_EQ(countBesideAGoodOne(with("BSTAR", "0.1")), 0u);
}

TEST(OMMParserParse, OptionalKeysMayBeAbsentOrNullButNotOfAnotherType) {
    for (const char* key : {"CLASSIFICATION_TYPE", "ELEMENT_SET_NO", "REV_AT_EPOCH",
                            "MEAN_MOTION_DOT", "MEAN_MOTION_DDOT", "OBJECT_ID", "EPHEMERIS_TYPE"}) {
        EXPECT_EQ(countBesideAGoodOne(without(key)), 2u) << key;
        EXPECT_EQ(countBesideAGoodOne(with(key, nullptr)), 2u) << key;
        EXPECT_EQ(countBesideAGoodOne(with(key, true)), 0u) << key;
    }
}

TEST(OMMParserParse, WhatARecordLeavesOutItDoesNotTakeFromTheOneBefore) {
    const auto bare = [](const char* key) { return OMMParser::parse(messages({without(key)})); };
    for (const char* key : {"CLASSIFICATION_TYPE", "ELEMENT_SET_NO", "REV_AT_EPOCH",
                            "MEAN_MOTION_DOT", "MEAN_MOTION_DDOT", "OBJECT_ID", "EPHEMERIS_TYPE"}) {
        auto before = stationMessage();
        before["CLASSIFICATION_TYPE"] = "S";
        before["EPHEMERIS_TYPE"] = 4;
        before["MEAN_MOTION_DDOT"] = 1e-5;
        const auto sets = OMMParser::parse(messages({before, without(key)}));
        ASSERT_EQ(sets.size(), 2u);
        EXPECT_EQ(sets[1].line1, bare(key).at(0).line1) << key;
        EXPECT_EQ(sets[1].line2, bare(key).at(0).line2) << key;
        EXPECT_EQ(sets[1].revNumber, bare(key).at(0).revNumber) << key;
    }
}

TEST(OMMParserParse, ANullDesignatorLeavesItsColumnsBlank) {
    const auto sets = OMMParser::parse(messages({with("OBJECT_ID", nullptr)}));
    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0].line1.substr(9, 8), "        ");
}

TEST(OMMParserParse, AZoneMarkInTheEpochDropsThatRecordAlone) {
    EXPECT_EQ(countBesideAGoodOne(with("EPOCH", "2026-04-05T13:09:00Z")), 1u);
}

TEST(OMMParserParse, ATimeOfDayThatNoCalendarHasDropsThatRecordAlone) {
    EXPECT_EQ(countBesideAGoodOne(with("EPOCH", "2026-04-05T00:00:1e300")), 1u);
    EXPECT_EQ(countBesideAGoodOne(with("EPOCH", "2026-04-05T9223372036854775807:00:00")), 1u);
}

TEST(OMMParserParse, ALargeCatalogueNumberIsClampedInTheLinesOnly) {
    const auto sets = OMMParser::parse(messages({with("NORAD_CAT_ID", 270001)}));
    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0].noradId, 270001);
    EXPECT_EQ(sets[0].line1.substr(0, 8), "1 99999U");
    EXPECT_EQ(sets[0].line2.substr(0, 8), "2 99999 ");
    const auto reparsed = TLEParser::parseTwoLines("", sets[0].line1, sets[0].line2);
    ASSERT_TRUE(reparsed);
    EXPECT_EQ(reparsed->noradId, 99999);
}

TEST(OMMParserParse, BothLinesPassTheLineParser) {
    const auto sets = OMMParser::parse(messages({stationMessage()}));
    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0].line1.size(), 69u);
    EXPECT_EQ(sets[0].line2.size(), 69u);
    const auto reparsed = TLEParser::parseTwoLines("", sets[0].line1, sets[0].line2);
    ASSERT_TRUE(reparsed);
    EXPECT_EQ(reparsed->meanMotion, sets[0].meanMotion);
    EXPECT_EQ(reparsed->revNumber, sets[0].revNumber);
}

TEST(OMMParserParse, WholeNumbersMayBeWrittenWithAPoint) {
    EXPECT_EQ(countBesideAGoodOne(with("NORAD_CAT_ID", 25544.0)), 2u);
    EXPECT_EQ(countBesideAGoodOne(with("NORAD_CAT_ID", 25544.5)), 0u);
    EXPECT_EQ(countBesideAGoodOne(with("NORAD_CAT_ID", 1e300)), 0u);
    EXPECT_EQ(countBesideAGoodOne(with("NORAD_CAT_ID", ~std::uint64_t{0})), 0u);
}

TEST(OMMParserParse, NumbersBeyondTheirRangeCountAsUnreadable) {
    EXPECT_EQ(countBesideAGoodOne(with("ECCENTRICITY", 1e300)), 0u);
    std::string text = messages({with("MEAN_MOTION", 77777)});
    text.replace(text.find("77777"), 5, "1e400");
    EXPECT_TRUE(OMMParser::parse(text).empty());
}

TEST(OMMParserParse, GarbageOfManyMegabytesGivesNothing) {
    EXPECT_TRUE(OMMParser::parse(std::string(20'000'000, '[')).empty());
    EXPECT_TRUE(OMMParser::parse("[" + std::string(20'000'000, ' ')).empty());
    EXPECT_TRUE(OMMParser::parse("[\"" + std::string(20'000'000, 'x')).empty());
    std::string numbers = "[0";
    while (numbers.size() < 10'000'000) numbers += ",0";
    EXPECT_TRUE(OMMParser::parse(numbers + "]").empty());
    for (const auto& epoch : {std::string(20'000'000, '-') + "T13:09:00",
                              "2026-04-05T" + std::string(20'000'000, ':')}) {
        EXPECT_EQ(countBesideAGoodOne(with("EPOCH", boost::json::string(epoch))), 1u);
    }
}

TEST(OMMParserParse, BrokenTextInsideAStringGivesNothing) {
    auto text = messages({with("OBJECT_NAME", "MARK")});
    const auto at = text.find("MARK");
    EXPECT_TRUE(OMMParser::parse(std::string(text).replace(at, 4, "\xff\xfe")).empty());
    EXPECT_TRUE(OMMParser::parse(std::string(text).replace(at, 4, "\\ud800")).empty());
    EXPECT_TRUE(OMMParser::parse("\xef\xbb\xbf" + text).empty());
}

TEST(LooksLikeJSON, BlanksAloneAreNone) {
    EXPECT_FALSE(OMMParser::looksLikeJSON(" \n\t "));
    EXPECT_TRUE(OMMParser::looksLikeJSON(" \n["));
}

}  // namespace
}  // namespace veloran
