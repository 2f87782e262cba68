#include <gtest/gtest.h>

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

TEST(Repository, OnlyWholeWordsCount) {
    EXPECT_TRUE(holdsWord("// " + kUnfinished[0] + ": later", kUnfinished[0]));
    EXPECT_TRUE(holdsWord("a" + kUnfinished[0] + " " + kUnfinished[0], kUnfinished[0]));
    EXPECT_FALSE(holdsWord(kUnfinished[0] + "S", kUnfinished[0]));
}

}  // namespace
}  // namespace veloran::test
