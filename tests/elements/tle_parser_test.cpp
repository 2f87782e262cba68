#include "elements/tle_parser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "elements/element_records.h"

namespace veloran {
namespace {

using test::kLine1;
using test::kLine2;
using test::withColumns;

const std::string kBlock = std::string(kLine1) + "\n" + kLine2 + "\n";

std::optional<TLEData> parseLines(const std::string& line1, const std::string& line2 = kLine2) {
    return TLEParser::parseTwoLines("X", line1, line2);
}

TEST(TLEParserParse, EmptyTextAndBlankLinesGiveNothing) {
    EXPECT_TRUE(TLEParser::parse("").empty());
    EXPECT_TRUE(TLEParser::parse("\n \r\n\t\n\u2028").empty());
}

TEST(TLEParserParse, CarriageReturnLineFeedReadsAsLineFeed) {
    std::string text = "ISS\n" + kBlock + "AO-91\n" + kBlock;
    const auto plain = TLEParser::parse(text);
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2) {
        text.replace(at, 1, "\r\n");
    }
    const auto other = TLEParser::parse(text);
    ASSERT_EQ(plain.size(), 2u);
    ASSERT_EQ(other.size(), 2u);
    EXPECT_EQ(other[1].name, "AO-91");
    EXPECT_EQ(other[1].line1, plain[1].line1);
    EXPECT_EQ(other[1].line2, plain[1].line2);
}

TEST(TLEParserParse, SixtyEightCharactersAreTooFewAndAWrongChecksumIsAccepted) {
    const std::string line1 = kLine1;
    const std::string shortLine = line1.substr(0, 68);
    EXPECT_TRUE(TLEParser::parse(shortLine + "\n" + kLine2).empty());
    EXPECT_EQ(TLEParser::parse(shortLine + "0\n" + kLine2).size(), 1u);
}

TEST(TLEParserParse, AShortBlockConsumesItsLines) {
    const std::string shortLine = std::string(kLine1).substr(0, 68);
    const auto sets = TLEParser::parse("A\n" + shortLine + "\n" + kLine2 + "\nB\n" + kBlock);
    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0].name, "B");
}

TEST(TLEParserParse, TwoLinesWithoutANameAreUnknown) {
    const auto sets = TLEParser::parse(kBlock);
    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0].name, "Unknown");
    EXPECT_EQ(sets[0].source, "");
}

TEST(TLEParserParse, SetsWithoutANameMayFollowEachOther) {
    const auto sets = TLEParser::parse(kBlock + "\n" + kBlock + "\nISS\n" + kBlock + "\n" + kBlock);
    ASSERT_EQ(sets.size(), 4u);
    EXPECT_EQ(sets[1].name, "Unknown");
    EXPECT_EQ(sets[2].name, "ISS");
    EXPECT_EQ(sets[3].name, "Unknown");
}

TEST(TLEParserParse, ANameBeforeADoubledLine1IsSkipped) {
    const auto sets = TLEParser::parse("ISS\n" + std::string(kLine1) + "\n" + kBlock);
    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0].name, "Unknown");
}

TEST(TLEParserParse, ANameThatBeginsWithZeroKeepsIt) {
    const auto sets = TLEParser::parse("0 ISS (ZARYA)\n" + kBlock);
    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0].name, "0 ISS (ZARYA)");
}

TEST(TLEParserParse, ANameThatBeginsWithOneAndABlankIsAStrayLine1) {
    const auto sets = TLEParser::parse("1 HOPE\n" + kBlock);
    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0].name, "Unknown");
}

TEST(TLEParserParse, LinesKeepWhatStandsBehindColumn69) {
    const auto sets = TLEParser::parse(std::string(kLine1) + " more\n" + kLine2);
    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0].line1, std::string(kLine1) + " more");
}

TEST(ParseTwoLines, TheYearTurnsAt57) {
    EXPECT_EQ(parseLines(withColumns(kLine1, 18, "56"))->epochYear, 2056);
    EXPECT_EQ(parseLines(withColumns(kLine1, 18, "57"))->epochYear, 1957);
}

TEST(ParseTwoLines, EccentricityHasAnImpliedPoint) {
    EXPECT_EQ(parseLines(kLine1)->eccentricity, 6703e-7);
    EXPECT_EQ(parseLines(kLine1, withColumns(kLine2, 26, "   6703"))->eccentricity, 0.6703);
}

TEST(ParseTwoLines, ALetterInTheCatalogueNumberMakesTheSetAbsent) {
    EXPECT_EQ(parseLines(withColumns(kLine1, 2, "A5544")), std::nullopt);
}

TEST(ParseTwoLines, AnUnreadableRevolutionNumberIsZero) {
    EXPECT_EQ(parseLines(kLine1)->revNumber, 56012);
    EXPECT_EQ(parseLines(kLine1, withColumns(kLine2, 63, "  9.5"))->revNumber, 0);
}

TEST(ParseTwoLines, NumbersThatAreNoneMakeTheSetAbsent) {
    for (const char* angle : {"     inf", "     nan", "1E999999", "0x1.0000", "51,64120"}) {
        EXPECT_EQ(parseLines(kLine1, withColumns(kLine2, 8, angle)), std::nullopt) << angle;
    }
}

TEST(ParseTwoLines, AnEpochThatNoCalendarHasMakesTheSetAbsent) {
    EXPECT_EQ(parseLines(withColumns(kLine1, 20, "       1E300")), std::nullopt);
    EXPECT_EQ(parseLines(withColumns(kLine1, 20, "       9.E18")), std::nullopt);
    EXPECT_EQ(parseLines(withColumns(kLine1, 20, "      -9.E18")), std::nullopt);
    EXPECT_TRUE(parseLines(withColumns(kLine1, 20, "       1.5E2")));
}

TEST(ParseTwoLines, ColumnsAreCountedInCharacters) {
    const std::string accented = "1 25544U e\u0301" + std::string(kLine1).substr(10);
    const auto set = parseLines(accented);
    ASSERT_TRUE(set);
    EXPECT_EQ(set->epochDays, 95.54791667);
    EXPECT_EQ(set->line1, accented);
}

TEST(ParseExponentNotation, ScalesByTheImpliedPointAndTheSign) {
    EXPECT_DOUBLE_EQ(TLEParser::parseExponentNotation("13844-3"), 13844e-8);
    EXPECT_DOUBLE_EQ(TLEParser::parseExponentNotation("-13844-3"), -13844e-8);
    EXPECT_EQ(TLEParser::parseExponentNotation("00000-0"), 0);
    EXPECT_EQ(TLEParser::parseExponentNotation("garbage!"), 0);
}

TEST(ParseExponentNotation, BeyondADoubleIsZero) {
    EXPECT_EQ(TLEParser::parseExponentNotation("1+999"), 0);
    EXPECT_EQ(TLEParser::parseExponentNotation("0+999"), 0);
    EXPECT_EQ(TLEParser::parseExponentNotation("1-999"), 0);
}

TEST(TLEParserParse, GarbageOfManyMegabytesTakesLinearTime) {
    const std::string megabytes(40'000'000, '\n');
    EXPECT_TRUE(TLEParser::parse(megabytes).empty());
    EXPECT_TRUE(TLEParser::parse("1 " + std::string(20'000'000, 'x') + "\n2 ").empty());
    std::string strays;
    while (strays.size() < 20'000'000) strays += "1 \u00e9\nname\n2 x\n";
    EXPECT_TRUE(TLEParser::parse(strays).empty());
    std::string oneCharacter = "1 a";
    while (oneCharacter.size() < 10'000'000) oneCharacter += "\u0301";
    EXPECT_TRUE(TLEParser::parse(oneCharacter + "\n2 b").empty());
}

TEST(TLEParserParse, RandomBytesNeverDoHarm) {
    constexpr unsigned kSeed = 3401;
    std::mt19937 random(kSeed);
    std::uniform_int_distribution<int> byte(0, 255), position(0, 69), count(1, 4);
    for (int round = 0; round < 20000; ++round) {
        std::string line1 = kLine1, line2 = kLine2;
        for (int i = count(random); i > 0; --i) {
            std::string& line = i % 2 ? line1 : line2;
            line[static_cast<std::size_t>(position(random)) % line.size()] =
                static_cast<char>(byte(random));
        }
        for (const auto& set : TLEParser::parse("N\n" + line1 + "\n" + line2)) {
            ASSERT_TRUE(std::isfinite(set.bstar) && std::isfinite(set.meanMotion) &&
                        set.epochDate())
                << "seed " << kSeed << ", round " << round << ": " << line1 << "\n"
                << line2;
        }
    }
}

}  // namespace
}  // namespace veloran
