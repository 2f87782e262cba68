#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

// The list of wrong programs (tests/wrong_programs/README.md) fits the sources.

namespace veloran::test {
namespace {

const std::filesystem::path kRoot = VELORAN_SOURCE_DIR;

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct WrongProgram {
    std::string name, file, right, wrong;
    std::vector<std::string> tests;  // test programs
};

/// The text of a line behind its first word, if that is `word`.
bool take(const std::string& line, const std::string& word, std::string& rest) {
    if (!line.starts_with(word)) return false;
    rest = line.substr(word.size());
    return true;
}

std::vector<WrongProgram> entriesOf(const std::filesystem::path& list) {
    std::vector<WrongProgram> entries;
    std::string* text = nullptr;  // the right or the wrong one, while it is read
    std::ifstream file(list);
    for (std::string line, rest; std::getline(file, line);) {
        if (line.starts_with("# ")) continue;
        if (take(line, "== ", rest)) {
            entries.push_back({.name = rest, .file = {}, .right = {}, .wrong = {}, .tests = {}});
            text = nullptr;
        } else if (entries.empty()) {
            continue;
        } else if (line == "--- right") {
            text = &entries.back().right;
        } else if (line == "+++ wrong") {
            text = &entries.back().wrong;
        } else if (text) {
            *text += line + "\n";
        } else if (take(line, "tests: ", rest)) {
            entries.back().tests.push_back(rest.substr(0, rest.find(' ')));
        } else {
            take(line, "file: ", entries.back().file);
        }
    }
    for (auto& entry : entries) {
        for (auto* part : {&entry.right, &entry.wrong}) {
            while (part->ends_with('\n')) part->pop_back();
        }
    }
    return entries;
}

std::vector<std::filesystem::path> lists() {
    std::vector<std::filesystem::path> found;
    for (const auto& entry : std::filesystem::directory_iterator(kRoot / "tests/wrong_programs")) {
        if (entry.path().extension() == ".txt") found.push_back(entry.path());
    }
    return found;
}

std::size_t timesIn(const std::string& text, const std::string& part) {
    std::size_t times = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++times;
    return times;
}

TEST(WrongPrograms, EachFitsTheSources) {
    std::set<std::string> names;
    for (const auto& list : lists()) {
        for (const auto& entry : entriesOf(list)) {
            SCOPED_TRACE(list.filename().string() + ": " + entry.name);
            EXPECT_TRUE(names.insert(entry.name).second) << "stands twice";
            ASSERT_TRUE(std::filesystem::exists(kRoot / entry.file)) << entry.file;
            ASSERT_FALSE(entry.right.empty());
            EXPECT_NE(entry.right, entry.wrong);
            EXPECT_EQ(timesIn(contentOf(kRoot / entry.file), entry.right), 1u)
                << entry.file << " has changed: change the entry as well";
        }
    }
    EXPECT_GE(names.size(), 120u);
}

TEST(WrongPrograms, EachNamesTestsThatExist) {
    for (const auto& list : lists()) {
        for (const auto& entry : entriesOf(list)) {
            SCOPED_TRACE(list.filename().string() + ": " + entry.name);
            EXPECT_FALSE(entry.tests.empty());
            for (const auto& program : entry.tests) {
                const auto mark = program.rfind('_');
                ASSERT_NE(mark, std::string::npos) << program;
                EXPECT_TRUE(std::filesystem::exists(kRoot / "tests" / program.substr(0, mark)))
                    << program;
            }
        }
    }
}

}  // namespace
}  // namespace veloran::test
