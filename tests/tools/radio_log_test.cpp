#include "servers/radio_log.h"

#include <gmock/gmock.h>

namespace veloran {
namespace {

using ::testing::ElementsAre;
using ::testing::Field;

RadioLogLine line(const std::string& text) {
    return {Instant::fromUnixSeconds(1772366400.1234), RadioLogLine::Kind::received, 7, text};
}

auto says(const std::string& text) {
    return Field(&RadioLogLine::text, text);
}

TEST(RadioLog, ALineTellsUtcClientAndDirection) {
    EXPECT_EQ(logText(line("\\sat_caps")), "2026-03-01T12:00:00.123Z #7 < \\sat_caps");
    auto sent = line("RPRT 0");
    sent.kind = RadioLogLine::Kind::sent;
    EXPECT_EQ(logText(sent), "2026-03-01T12:00:00.123Z #7 > RPRT 0");
    auto note = line("connected");
    note.kind = RadioLogLine::Kind::note;
    EXPECT_EQ(logText(note), "2026-03-01T12:00:00.123Z #7 . connected");
}

TEST(RadioLog, KeepsWhatFitsAndForgetsTheOldest) {
    RadioLog log(2 * RadioLog::bytesOf(line("aaaa")));
    log.add(line("aaaa"));
    log.add(line("bbbb"));
    EXPECT_THAT(log.lines(), ElementsAre(says("aaaa"), says("bbbb")));
    log.add(line("c"));
    EXPECT_THAT(log.lines(), ElementsAre(says("bbbb"), says("c")));
    log.add(line("ddddddd"));
    EXPECT_THAT(log.lines(), ElementsAre(says("c"), says("ddddddd")));
    log.add(line("eeeee"));
    EXPECT_THAT(log.lines(), ElementsAre(says("eeeee"))) << "seven and five bytes are too many";
}

TEST(RadioLog, TheLatestLineStaysHoweverLongItIs) {
    RadioLog log(100);
    log.add(line("before"));
    EXPECT_EQ(log.add(line(std::string(1000, 'x'))).text.size(), 1000U);
    EXPECT_EQ(log.lines().size(), 1U);
    log.add(line("behind"));
    EXPECT_THAT(log.lines(), ElementsAre(says("behind")));
}

TEST(RadioLog, LongLinesWithoutEndStayWithinTheirBytes) {
    RadioLog log;
    for (int i = 0; i < 20'000; ++i) log.add(line(std::string(4096, 'x')));
    const std::size_t each = RadioLog::bytesOf(line(std::string(4096, 'x')));
    EXPECT_EQ(log.lines().size(), RadioLog::kMostBytes / each);
}

}  // namespace
}  // namespace veloran
