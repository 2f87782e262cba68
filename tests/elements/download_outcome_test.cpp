#include "elements/download_outcome.h"

#include <gtest/gtest.h>

#include <vector>

namespace veloran {
namespace {

TEST(DownloadOutcome, SaysWhatADownloadGave) {
    using Body = std::optional<std::string>;
    struct Case {
        HttpResult answer;
        std::size_t sets;
        std::string words;
        bool hasElements;
    };
    const std::vector<Case> cases{
        {{"list", 200}, 98, "98 records", true},
        {{"list", 200}, 1, "1 record", true},
        {{"list", 404}, 98, "98 records", true},  // read whatever the status
        {{Body(), 304}, 0, "not modified", true},
        {{"<html>", 404}, 0, "HTTP 404", false},
        {{"", 503}, 0, "HTTP 503", false},
        {{"", 300}, 0, "HTTP 300", false},
        {{"<html>", 200}, 0, "no elements in it", false},
        {{"", 299}, 0, "no elements in it", false},
        {{Body(), std::nullopt}, 0, "no answer", false},
    };
    const Instant when{12345};
    for (const auto& testCase : cases) {
        const auto outcome = downloadOutcome(testCase.answer, testCase.sets, when);
        EXPECT_EQ(outcomeWords(outcome), testCase.words);
        EXPECT_EQ(outcome.hasElements(), testCase.hasElements) << testCase.words;
        EXPECT_EQ(outcome.when, when);
    }
    EXPECT_EQ(outcomeWords({DownloadOutcome::Kind::noAddress, 0, when}), "no web address");
}

}  // namespace
}  // namespace veloran
