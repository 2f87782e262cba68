// Every seed and every input that ever failed, through its check. A check that does not hold ends
// the program; the input stands in the line before.

#include <gmock/gmock.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "checks.h"
#include "require.h"
#include "support/running_case.h"

namespace veloran::fuzz {

void PrintTo(const Check& check, std::ostream* out) {
    *out << check.name;
}

namespace {

namespace fs = std::filesystem;
using ::testing::IsSubsetOf;
using ::testing::UnorderedElementsAreArray;

const fs::path kRoot = fs::path(VELORAN_SOURCE_DIR) / "fuzz";

constexpr unsigned kMostSeconds = 10;  // as tools/fuzz lets an input last

std::vector<fs::path> inputsIn(const fs::path& directory) {
    std::vector<fs::path> paths;
    if (!fs::exists(directory)) return paths;
    for (const auto& entry : fs::directory_iterator(directory)) paths.push_back(entry.path());
    std::ranges::sort(paths);
    return paths;
}

std::string content(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Of what lies in a directory of fuzz/, a check each.
std::vector<std::string> checksIn(const fs::path& directory) {
    std::vector<std::string> names;
    for (const auto& path : inputsIn(directory)) names.push_back(path.stem().string());
    return names;
}

void replay(const Check& check, const fs::path& input) {
    const test::RunningCase running(input.string(), kMostSeconds);
    check.run(content(input));
}

class HostileInput : public ::testing::TestWithParam<Check> {};

TEST_P(HostileInput, LeavesThePropertiesAsTheyAre) {
    const auto& check = GetParam();
    const auto seeds = inputsIn(kRoot / "corpus" / check.name);
    ASSERT_FALSE(seeds.empty()) << "tools/make_fuzz_seeds makes them";
    replay(check, "/dev/null");
    for (const auto& path : seeds) replay(check, path);
    for (const auto& path : inputsIn(kRoot / "findings" / check.name)) replay(check, path);
}

INSTANTIATE_TEST_SUITE_P(Fuzz, HostileInput, ::testing::ValuesIn(checks().begin(), checks().end()),
                         [](const auto& check) { return std::string(check.param.name); });

TEST(HostileInputLists, EveryTargetIsACheckAndEveryInputHasOne) {
    std::vector<std::string> names;
    for (const auto& check : checks()) names.emplace_back(check.name);
    EXPECT_THAT(checksIn(kRoot / "targets"), UnorderedElementsAreArray(names));
    EXPECT_THAT(checksIn(kRoot / "corpus"), UnorderedElementsAreArray(names));
    EXPECT_THAT(checksIn(kRoot / "findings"), IsSubsetOf(names));
}

TEST(HostileInputDeathTest, NamesTheInputThatEndsTheProgram) {
    const Check check{"none", [](std::string_view) { require(false, "anything"); }};
    EXPECT_DEATH(replay(check, "/dev/null"), "/dev/null\nveloran: not so: anything");
}

TEST(HostileInputDeathTest, AnInputThatNeverEndsEndsTheProgram) {
    EXPECT_DEATH(
        {
            const test::RunningCase running("endless", 1);
            while (true) pause();
        },
        "endless\nveloran: the case above takes too long");
}

}  // namespace
}  // namespace veloran::fuzz
