#include "rig/line_framer.h"

#include <gmock/gmock.h>

#include <vector>

#include "base/text.h"

namespace veloran::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string textOf(const FramedLine& line) {
    return line.isLong() ? line.longText.text() : std::string(line.text);
}

std::vector<std::string> push(LineFramer& framer, std::string_view bytes) {
    std::vector<std::string> lines;
    while (const auto line = framer.takeLine(bytes)) lines.push_back(textOf(*line));
    return lines;
}

/// What the bytes of a line read as, told otherwise.
std::string expectedText(std::string_view bytes) {
    return std::string(isValidUtf8(bytes) ? trimmed(bytes, Blanks::withNewlines) : "");
}

TEST(LineFramer, ALineSplitOverReceivesIsPutTogether) {
    LineFramer framer;
    EXPECT_THAT(push(framer, "RP"), IsEmpty());
    EXPECT_THAT(push(framer, "RT 0\n"), ElementsAre("RPRT 0"));
    EXPECT_EQ(framer.buffered(), "");
}

TEST(LineFramer, SeveralLinesOfOneReceiveComeInOrderAndTheRestWaits) {
    LineFramer framer;
    EXPECT_THAT(push(framer, "a\nb\n\nRPR"), ElementsAre("a", "b", ""));
    EXPECT_EQ(framer.buffered(), "RPR");
}

TEST(LineFramer, CarriageReturnAndBlanksAtBothEndsAreTrimmed) {
    LineFramer framer;
    EXPECT_THAT(push(framer, " \tRPRT 0 \r\n"), ElementsAre("RPRT 0"));
}

TEST(LineFramer, ALoneCarriageReturnEndsNoLine) {
    LineFramer framer;
    EXPECT_THAT(push(framer, "RPRT 0\r"), IsEmpty());
}

TEST(LineFramer, BytesThatAreNoUtf8ReadAsAnEmptyLine) {
    LineFramer framer;
    EXPECT_THAT(push(framer, "ok\n\xFF\xFE!\nalso ok\n"), ElementsAre("ok", "", "also ok"));
}

TEST(LineFramer, ACharacterSplitOverReceivesIsWholeInItsLine) {
    LineFramer framer;
    EXPECT_THAT(push(framer, "\xC3"), IsEmpty());
    EXPECT_THAT(push(framer, "\xBC\n"), ElementsAre("ü"));
}

TEST(LineFramer, ClearForgetsHalfALine) {
    LineFramer framer;
    push(framer, "half a li");
    framer.clear();
    EXPECT_THAT(push(framer, "ne\n"), ElementsAre("ne"));
}

TEST(LineFramer, EveryWayToCutTheBytesGivesTheSameLines) {
    const std::string bytes = "SAT_PROTO=1\r\nEND\n\n  x \nRPRT -11\nrest";
    for (std::size_t first = 0; first <= bytes.size(); ++first) {
        for (std::size_t second = first; second <= bytes.size(); ++second) {
            LineFramer framer;
            std::vector<std::string> lines;
            const auto view = std::string_view(bytes);
            for (const auto piece :
                 {view.substr(0, first), view.substr(first, second - first), view.substr(second)}) {
                for (auto& line : push(framer, piece)) lines.push_back(std::move(line));
            }
            EXPECT_THAT(lines, ElementsAre("SAT_PROTO=1", "END", "", "x", "RPRT -11"))
                << "cut at " << first << " and " << second;
            EXPECT_EQ(framer.buffered(), "rest");
        }
    }
}

TEST(LineFramer, BlanksAndCharactersMayBeCutAnywhere) {
    // Two blanks of three bytes each, one of two and one of one, around and amid characters of one
    // to four; and bytes that are none.
    const std::string blanks = "\u2003\u00A0 \u2028";
    const std::vector<std::string> all{
        blanks + "a" + blanks + "\U0001D11Eü" + blanks,
        blanks,
        "ü",
        blanks + "\xF0\x9D\x84",
        "\xF0\x9D\x84" + blanks,
        "a\xC3" + blanks,
        "\x80" + blanks,
        "a\xED\xA0\x80z",
        "\xF8\x88\x80\x80\x80",
        "\xFF",
    };
    for (const auto& bytes : all) {
        for (std::size_t first = 0; first <= bytes.size(); ++first) {
            for (std::size_t second = first; second <= bytes.size(); ++second) {
                LineFramer framer;
                push(framer, std::string_view(bytes).substr(0, first));
                push(framer, std::string_view(bytes).substr(first, second - first));
                EXPECT_THAT(push(framer, bytes.substr(second) + "\n"),
                            ElementsAre(expectedText(bytes)))
                    << "cut at " << first << " and " << second;
            }
        }
    }
}

TEST(LineFramer, ALongLineIsTrimmedAndNoUtf8IsEmptyLikeAShortOne) {
    const std::string blanks(100'000, ' ');
    for (const auto& text : {std::string(300'000, 'x'), "x" + blanks + "\u00FC", std::string("x"),
                             std::string(), "x" + blanks + "\xFF" + blanks + "x"}) {
        for (const auto& bytes : {text, blanks + text, text + blanks, blanks + text + blanks}) {
            LineFramer framer;
            std::string_view rest = bytes;
            for (; rest.size() > 4096; rest.remove_prefix(4096)) {
                ASSERT_THAT(push(framer, rest.substr(0, 4096)), IsEmpty());
            }
            const auto lines = push(framer, std::string(rest) + "\nnext\n");
            ASSERT_EQ(lines.size(), 2U);
            EXPECT_EQ(lines[0] == expectedText(bytes), true) << bytes.size() << " bytes";
            EXPECT_EQ(lines[1], "next");
        }
    }
}

}  // namespace
}  // namespace veloran::test
