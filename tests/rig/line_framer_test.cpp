#include "rig/line_framer.h"

#include <gmock/gmock.h>

#include <chrono>

namespace veloran::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(LineFramer, ALineSplitOverReceivesIsPutTogether) {
    LineFramer framer;
    EXPECT_THAT(framer.push("RP"), IsEmpty());
    EXPECT_THAT(framer.push("RT 0\n"), ElementsAre("RPRT 0"));
    EXPECT_EQ(framer.buffered(), "");
}

TEST(LineFramer, SeveralLinesOfOneReceiveComeInOrderAndTheRestWaits) {
    LineFramer framer;
    EXPECT_THAT(framer.push("a\nb\n\nRPR"), ElementsAre("a", "b", ""));
    EXPECT_EQ(framer.buffered(), "RPR");
}

TEST(LineFramer, CarriageReturnAndBlanksAtBothEndsAreTrimmed) {
    LineFramer framer;
    EXPECT_THAT(framer.push(" \tRPRT 0 \r\n"), ElementsAre("RPRT 0"));
}

TEST(LineFramer, ALoneCarriageReturnEndsNoLine) {
    LineFramer framer;
    EXPECT_THAT(framer.push("RPRT 0\r"), IsEmpty());
}

TEST(LineFramer, BytesThatAreNoUtf8ReadAsAnEmptyLine) {
    LineFramer framer;
    EXPECT_THAT(framer.push("ok\n\xFF\xFE!\nalso ok\n"), ElementsAre("ok", "", "also ok"));
}

TEST(LineFramer, ACharacterSplitOverReceivesIsWholeInItsLine) {
    LineFramer framer;
    EXPECT_THAT(framer.push("\xC3"), IsEmpty());
    EXPECT_THAT(framer.push("\xBC\n"), ElementsAre("ü"));
}

TEST(LineFramer, ClearForgetsHalfALine) {
    LineFramer framer;
    framer.push("half a li");
    framer.clear();
    EXPECT_THAT(framer.push("ne\n"), ElementsAre("ne"));
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
                for (auto& line : framer.push(piece)) lines.push_back(std::move(line));
            }
            EXPECT_THAT(lines, ElementsAre("SAT_PROTO=1", "END", "", "x", "RPRT -11"))
                << "cut at " << first << " and " << second;
            EXPECT_EQ(framer.buffered(), "rest");
        }
    }
}

TEST(LineFramer, AnEndlessLineCostsNoMoreThanItsBytes) {
    // 64 MiB in receives of 4 KiB: looking again through what has been searched before would touch
    // half a terabyte, minutes instead of well under a second.
    const std::string piece(4096, 'x');
    LineFramer framer;
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < 16384; ++i) ASSERT_THAT(framer.push(piece), IsEmpty());
    const auto lines = framer.push("\n");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines.front().size(), 4096U * 16384U);
}

}  // namespace
}  // namespace veloran::test
