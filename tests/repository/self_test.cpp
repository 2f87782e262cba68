#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "repository/source_lines.h"

namespace veloran::test {
namespace {

/// Marks of unfinished work, put together here so that this file does not hold them itself.
const std::vector<std::string> kUnfinished{std::string("TO") + "DO", std::string("FIX") + "ME",
                                           std::string("XX") + "X", std::string("HA") + "CK"};

bool isLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool holdsWord(const std::string& text, const std::string& word) {
    for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        const auto end = at + word.size();
        const bool begins = at == 0 || !isLetter(text[at - 1]);
        const bool ends = end == text.size() || !isLetter(text[end]);
        if (begins && ends) return true;
    }
    return false;
}

TEST(Repository, NothingIsMarkedAsUnfinished) {
    std::size_t lines = 0;
    for (const auto* folder : {"src", "tests", "tools", "docs"}) {
        forEachSourceLine(folder, [&](const SourceLine& line) {
            ++lines;
            for (const auto& word : kUnfinished) {
                EXPECT_FALSE(holdsWord(line.text, word)) << line << ": " << word;
            }
        });
    }
    EXPECT_GT(lines, 1000U) << "the sources were not found";
}

// Where time passes by the ports alone, it stands still in a test.
TEST(Repository, NoClockButThePortsIsReadAboveTheAdapters) {
    const std::set<std::string> clocks{"QTimer",       "QElapsedTimer",   "QBasicTimer",
                                       "startTimer",   "currentDateTime", "steady_clock",
                                       "system_clock", "QDeadlineTimer"};
    std::size_t adapters = 0;
    forEachSourceLine("src", [&](const SourceLine& line) {
        const bool isAdapter = line.file.string().starts_with("src/qt/");
        for (const auto& clock : clocks) {
            if (line.text.find("#include") == 0 || !holdsWord(line.text, clock)) continue;
            if (isAdapter) ++adapters;
            EXPECT_TRUE(isAdapter) << line << ": " << clock;
        }
    });
    EXPECT_GT(adapters, 0U) << "the clocks of the adapters were not found";
}

TEST(Repository, OnlyWholeWordsCount) {
    EXPECT_TRUE(holdsWord("// " + kUnfinished[0] + ": later", kUnfinished[0]));
    EXPECT_TRUE(holdsWord("a" + kUnfinished[0] + " " + kUnfinished[0], kUnfinished[0]));
    EXPECT_FALSE(holdsWord(kUnfinished[0] + "S", kUnfinished[0]));
}

}  // namespace
}  // namespace veloran::test
