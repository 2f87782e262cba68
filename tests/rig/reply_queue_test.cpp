#include "rig/reply_queue.h"

#include <gmock/gmock.h>

namespace veloran::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What a completion was called with.
struct Call {
    std::string tag;
    std::int64_t code;
    std::vector<std::string> lines;
    bool operator==(const Call&) const = default;
};

class ReplyQueueTest : public testing::Test {
  protected:
    void expectReply(const std::string& tag) {
        queue.expect([this, tag](std::int64_t code, const ReplyLines& lines) {
            calls.push_back({tag, code, lines.all()});
        });
    }
    void receive(const std::string& text) {
        FramedLine line{.text = text, .longText = {}};
        dispatch(line);
    }
    /// The long line as the queue leaves it.
    FramedLine receiveLong(const std::string& text) {
        FramedLine line;
        line.longText.append(text);
        dispatch(line);
        return line;
    }
    void dispatch(FramedLine& line) {
        if (const auto answer = queue.dispatch(line)) {
            answer->completion(answer->code, answer->lines);
        }
    }

    ReplyQueue queue;
    std::vector<Call> calls;
};

TEST_F(ReplyQueueTest, RepliesBelongToTheOldestCommand) {
    expectReply("a");
    expectReply("b");
    receive("RPRT 0");
    receive("RPRT -11");
    EXPECT_THAT(calls, ElementsAre(Call{"a", 0, {}}, Call{"b", -11, {}}));
}

TEST_F(ReplyQueueTest, WithNothingPendingEveryLineIsDropped) {
    receive("RPRT 0");
    receive("text");
    expectReply("a");
    receive("RPRT 5");
    EXPECT_THAT(calls, ElementsAre(Call{"a", 5, {}}));
}

TEST_F(ReplyQueueTest, AForeignReplyShiftsTheAnswersUntilTheListRunsEmpty) {
    expectReply("sat_dl");
    receive("RPRT -1");   // of a mode command, which waits for nothing
    receive("RPRT -11");  // its own
    expectReply("next");
    receive("RPRT 0");
    EXPECT_THAT(calls, ElementsAre(Call{"sat_dl", -1, {}}, Call{"next", 0, {}}));
}

TEST_F(ReplyQueueTest, ACodeThatIsNoNumberReadsAsMinus999) {
    for (const auto* line : {"RPRT abc", "RPRT 0 extra", "RPRT  0", "RPRT 1.0", "RPRT 0x1",
                             "RPRT 9223372036854775808"}) {
        expectReply(line);
        receive(line);
        EXPECT_EQ(calls.back(), (Call{line, -999, {}}));
    }
}

TEST_F(ReplyQueueTest, AReportWithoutBlankAndNumberIsData) {
    expectReply("a");
    for (const auto* line : {"RPRT", "RPRT0", "rprt 0", "XRPRT 0"}) receive(line);
    receive("RPRT 0");
    EXPECT_THAT(calls, ElementsAre(Call{"a", 0, {"RPRT", "RPRT0", "rprt 0", "XRPRT 0"}}));
}

TEST_F(ReplyQueueTest, EndIsLeftOutAndEndsNothing) {
    expectReply("a");
    for (const auto* line : {"X=1", "END", "Y=2", "END ", "end", "RPRT 0"}) receive(line);
    EXPECT_THAT(calls, ElementsAre(Call{"a", 0, {"X=1", "Y=2", "END ", "end"}}));
}

TEST_F(ReplyQueueTest, EmptyLinesAreKept) {
    expectReply("a");
    for (const auto* line : {"", "x", "", "RPRT 0"}) receive(line);
    EXPECT_THAT(calls, ElementsAre(Call{"a", 0, {"", "x", ""}}));
}

TEST_F(ReplyQueueTest, AFlushTakesOutEveryCommandInOrderOfAge) {
    for (const auto* tag : {"a", "b", "c"}) expectReply(tag);
    receive("half an answer");
    for (const auto& waiting : queue.flush()) waiting(ReplyQueue::kConnectionGone, {});
    EXPECT_THAT(calls, ElementsAre(Call{"a", -1, {}}, Call{"b", -1, {}}, Call{"c", -1, {}}));
    EXPECT_EQ(queue.size(), 0U);
    EXPECT_THAT(queue.flush(), IsEmpty());
    expectReply("d");
    receive("RPRT 0");
    EXPECT_EQ(calls.back(), (Call{"d", 0, {}}));
}

TEST_F(ReplyQueueTest, ALongLineIsContentLikeAnyOther) {
    const std::string text(200'000, 'x');
    expectReply("a");
    receive("before");
    EXPECT_TRUE(receiveLong(text).longText.isReleased()) << "taken over, not copied";
    receive("behind");
    receive("RPRT 0");
    EXPECT_THAT(calls, ElementsAre(Call{"a", 0, {"before", text, "behind"}}));
}

TEST_F(ReplyQueueTest, ALongLineThatIsNotKeptIsLeftToTheCaller) {
    const std::string text(200'000, 'x');
    EXPECT_EQ(receiveLong(text).longText.size(), text.size()) << "nobody waits";
    expectReply("a");
    EXPECT_EQ(receiveLong("RPRT " + text).longText.size(), text.size() + 5);
    EXPECT_THAT(calls, ElementsAre(Call{"a", -999, {}}));
}

TEST_F(ReplyQueueTest, TheFirstAnnouncementIsNotedWhereverItStands) {
    std::vector<std::optional<std::string>> announcements;
    const auto expectAnnouncement = [&] {
        queue.expect([&](std::int64_t, const ReplyLines& lines) {
            announcements.push_back(lines.announcement());
        });
    };
    expectAnnouncement();
    for (const auto* line : {"", "X=SAT_PROTO=3", "SAT_PROTO=1", "SAT_PROTO=2", "RPRT 0"}) {
        receive(line);
    }
    expectAnnouncement();
    receive("RPRT 0");
    expectAnnouncement();
    receiveLong("SAT_PROTO=1" + std::string(200'000, ' ') + "x");
    for (const auto* line : {"SAT_PROTO=2", "RPRT 0"}) receive(line);
    EXPECT_THAT(announcements, ElementsAre("1", std::nullopt, ""));
}

}  // namespace
}  // namespace veloran::test
