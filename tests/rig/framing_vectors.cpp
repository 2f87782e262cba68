#include <gtest/gtest.h>

#include "rig/line_framer.h"
#include "rig/reply_queue.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

namespace json = boost::json;

/// Framer and queue joined as the client joins them; answers as the golden file writes them.
class Lines {
  public:
    json::array step(const json::object& step) {
        expectKnownMembers(step, {"pend", "recv", "flush"}, "step");
        answers_ = {};
        if (const auto* tag = step.if_contains("pend")) {
            queue_.expect([this, name = std::string(tag->as_string())](std::int64_t code,
                                                                       const ReplyLines& lines) {
                const auto all = lines.all();
                json::array texts(all.begin(), all.end());
                answers_.push_back(
                    json::object{{"tag", name}, {"code", code}, {"lines", std::move(texts)}});
            });
        } else if (const auto* hex = step.if_contains("recv")) {
            const auto bytes = fromHex(hex->as_string());
            std::string_view rest = bytes;
            while (auto line = framer_.takeLine(rest)) {
                if (auto answer = queue_.dispatch(*line)) run(*answer);
            }
        } else {
            EXPECT_TRUE(step.contains("flush"));
            flush();
        }
        return answers_;
    }

    /// Tags that still wait, by flushing them; ends the use of the queue.
    json::array stillPending() {
        answers_ = {};
        flush();
        json::array tags;
        for (const auto& answer : answers_) tags.push_back(answer.at("tag"));
        return tags;
    }

    std::string buffered() const { return framer_.buffered(); }

  private:
    static void run(const ReplyQueue::Answer& answer) {
        answer.completion(answer.code, answer.lines);
    }
    void flush() {
        framer_.clear();
        for (const auto& waiting : queue_.flush()) waiting(ReplyQueue::kConnectionGone, {});
    }

    LineFramer framer_;
    ReplyQueue queue_;
    json::array answers_;
};

void checkCase(const json::object& testCase) {
    expectKnownMembers(testCase, {"id", "note", "script", "expected", "stillPending", "bufferHex"},
                       "case");
    Lines lines;
    const auto& script = testCase.at("script").as_array();
    const auto& expected = testCase.at("expected").as_array();
    ASSERT_EQ(script.size(), expected.size());
    for (std::size_t i = 0; i < script.size(); ++i) {
        EXPECT_EQ(lines.step(script[i].as_object()), expected[i].as_array()) << "expected " << i;
    }
    EXPECT_EQ(lines.buffered(), fromHex(testCase.at("bufferHex").as_string())) << "bufferHex";
    EXPECT_EQ(lines.stillPending(), testCase.at("stillPending").as_array()) << "stillPending";
}

TEST(FramingVectors, AllCases) {
    forEachCase(loadVectors("data/framing.json"), "data/framing.json", "cases", checkCase);
}

}  // namespace
}  // namespace veloran::test
