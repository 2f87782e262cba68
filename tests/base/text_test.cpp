#include "base/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace veloran {
namespace {

using ::testing::ElementsAre;

TEST(Trimmed, HorizontalTakesSpacesOfEveryKindButNoLineEnds) {
    EXPECT_EQ(trimmed(" \t a b \u00a0\u2003\u3000", Blanks::horizontal), "a b");
    EXPECT_EQ(trimmed(" \n a \r ", Blanks::horizontal), "\n a \r");
    EXPECT_EQ(trimmed(" \t ", Blanks::horizontal), "");
    EXPECT_EQ(trimmed("", Blanks::horizontal), "");
}

TEST(Trimmed, WithNewlinesTakesTheUnicodeNewlineSet) {
    EXPECT_EQ(trimmed("\r\n\v\f\u0085\u2028x\u2029 \n", Blanks::withNewlines), "x");
}

TEST(Trimmed, StrayBytesStay) {
    EXPECT_EQ(trimmed(" \xff ", Blanks::withNewlines), "\xff");
    EXPECT_EQ(trimmed("\x80\x80\x80\x80\x80", Blanks::withNewlines), "\x80\x80\x80\x80\x80");
    EXPECT_EQ(trimmed("a\xa0", Blanks::withNewlines), "a\xa0");
}

TEST(Split, KeepsEmptyPieces) {
    EXPECT_THAT(split("a,,b,", ','), ElementsAre("a", "", "b", ""));
    EXPECT_THAT(split("", ','), ElementsAre(""));
}

TEST(SplitLines, EveryNewlineCharacterSplitsByItself) {
    EXPECT_THAT(splitLines("a\r\nb\u2028c\u0085d\ve"), ElementsAre("a", "", "b", "c", "d", "e"));
    EXPECT_THAT(splitLines("a\n"), ElementsAre("a", ""));
}

TEST(SplitLines, KeepsEmptyLinesAtBothEnds) {
    EXPECT_THAT(splitLines(""), ElementsAre(""));
    EXPECT_THAT(splitLines("\n"), ElementsAre("", ""));
    EXPECT_THAT(splitLines("\n\na\u2029"), ElementsAre("", "", "a", ""));
}

TEST(TakeLine, CutsOneLineAndItsNewlineCharacter) {
    std::string_view rest = "a\u2028\nb";
    EXPECT_EQ(takeLine(rest), "a");
    EXPECT_EQ(takeLine(rest), "");
    EXPECT_EQ(takeLine(rest), "b");
    EXPECT_EQ(rest, "");
}

TEST(ReplacedAll, ReplacesEveryOccurrence) {
    EXPECT_EQ(replacedAll("a:b::", ':', '-'), "a-b--");
}

TEST(Cased, MapsLettersOfOtherScriptsAndKeepsStrayBytes) {
    EXPECT_EQ(upperCased("iss \u00e4\u03c3\xff"), "ISS \u00c4\u03a3\xff");
    EXPECT_EQ(lowerCased("ISS \u00c4\u03a3"), "iss \u00e4\u03c3");
    EXPECT_EQ(upperCased("\u00df"), "\u1e9e");
}

TEST(IsValidUtf8, RefusesWhatNoEncoderWrites) {
    EXPECT_TRUE(isValidUtf8(""));
    EXPECT_TRUE(isValidUtf8("a\u00e4\u20ac\U0001f6f0"));
    EXPECT_FALSE(isValidUtf8("\xc0\x80"));
    EXPECT_FALSE(isValidUtf8("\xed\xa0\x80"));
    EXPECT_FALSE(isValidUtf8("\xf4\x90\x80\x80"));
    EXPECT_FALSE(isValidUtf8("a\xe2\x82"));
}

TEST(IsValidUtf8, SeesEachByteOfALongText) {
    const std::string plain(40, 'a');
    for (std::size_t at = 0; at < plain.size(); ++at) {
        EXPECT_FALSE(isValidUtf8(std::string(plain).replace(at, 1, "\xff"))) << at;
        EXPECT_FALSE(isValidUtf8(std::string(plain).replace(at, 1, "\xe2\x82"))) << at;
        EXPECT_TRUE(isValidUtf8(std::string(plain).replace(at, 1, "\xe2\x82\xac"))) << at;
    }
}

TEST(Characters, AsciiIsOneByteEachButCarriageReturnLineFeedIsOne) {
    EXPECT_THAT(characters("a\r\nb"), ElementsAre("a", "\r\n", "b"));
}

TEST(Characters, CombiningMarksAndEmojiSequencesAreOne) {
    EXPECT_THAT(characters("e\u0301x\U0001f468\u200d\U0001f469y"),
                ElementsAre("e\u0301", "x", "\U0001f468\u200d\U0001f469", "y"));
    EXPECT_THAT(characters("\U0001f1e9\U0001f1ea\U0001f1eb\U0001f1f7"),
                ElementsAre("\U0001f1e9\U0001f1ea", "\U0001f1eb\U0001f1f7"));
}

TEST(Characters, LimitCutsWholeCharacters) {
    EXPECT_THAT(characters("abcd", 2), ElementsAre("a", "b"));
    EXPECT_THAT(characters("ab", 9), ElementsAre("a", "b"));
    EXPECT_THAT(characters("abc", 0), ElementsAre());
    EXPECT_THAT(characters("ae\u0301x", 2), ElementsAre("a", "e\u0301"));
    EXPECT_THAT(characters("\r\n\r\nx", 2), ElementsAre("\r\n", "\r\n"));
}

TEST(Characters, StrayBytesCountOneEach) {
    EXPECT_THAT(characters("\u00e4\xff\xfe"), ElementsAre("\u00e4", "\xff", "\xfe"));
}

TEST(ParseInt64, TakesOneSignAndDigitsOnly) {
    EXPECT_EQ(parseInt64("+7"), 7);
    EXPECT_EQ(parseInt64("-007"), -7);
    EXPECT_EQ(parseInt64("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(parseInt64("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    for (const char* text : {"", "+", "-", "+-7", "--7", " 7", "7 ", "1 2", "1.0", "0x10", "1_0",
                             "9223372036854775808", "\u0667"}) {
        EXPECT_EQ(parseInt64(text), std::nullopt) << text;
    }
}

TEST(ParseDouble, TakesPlainAndExponentNotation) {
    EXPECT_EQ(parseDouble("1.5"), 1.5);
    EXPECT_EQ(parseDouble("+1.5e3"), 1500.0);
    EXPECT_EQ(parseDouble("-.5"), -0.5);
    EXPECT_EQ(parseDouble("1."), 1.0);
    EXPECT_EQ(parseDouble("1E+2"), 100.0);
    for (const char* text : {"", ".", "+", "+-1", "1,5", " 1", "1 ", "1e", "0x10", "inf", "nan",
                             "-infinity", "1_0", "1.5.2", "e5"}) {
        EXPECT_EQ(parseDouble(text), std::nullopt) << text;
    }
}

TEST(ParseDouble, TooBigIsAbsentAndTooSmallIsZero) {
    const std::string zeros(400, '0');
    EXPECT_EQ(parseDouble("1e400"), std::nullopt);
    EXPECT_EQ(parseDouble("-1e99999999999999999999"), std::nullopt);
    EXPECT_EQ(parseDouble("1" + zeros), std::nullopt);
    EXPECT_EQ(parseDouble("1" + zeros + "e-1"), std::nullopt);
    EXPECT_EQ(parseDouble("1e-400"), 0.0);
    EXPECT_EQ(parseDouble("1e-99999999999999999999"), 0.0);
    EXPECT_EQ(parseDouble("0." + zeros + "1"), 0.0);
    EXPECT_EQ(parseDouble("0." + zeros + "1e1"), 0.0);
    EXPECT_EQ(parseDouble("0." + zeros + "1e401"), 1.0);
    EXPECT_EQ(parseDouble("0e99999999999999999999"), 0.0);
    EXPECT_TRUE(std::signbit(*parseDouble("-1e-400")));
    EXPECT_EQ(parseDouble("4.9406564584124654e-324"), std::numeric_limits<double>::denorm_min());
}

TEST(ShortestText, ReadsBackAndAlwaysShowsThatItIsNoInteger) {
    EXPECT_EQ(shortestText(1), "1.0");
    EXPECT_EQ(shortestText(-0.0), "-0.0");
    EXPECT_EQ(shortestText(0.1), "0.1");
    EXPECT_EQ(shortestText(1795307200.25), "1795307200.25");
    EXPECT_EQ(shortestText(1e20), "1e+20");
    EXPECT_EQ(shortestText(1e-5), "1e-05");
}

}  // namespace
}  // namespace veloran
