// Every seed and every input that ever failed, through its check. A check that does not hold ends
// the program; the input then stands in the line before.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include "checks.h"

namespace veloran::fuzz {

void PrintTo(const Check& check, std::ostream* out) {
    *out << check.name;
}

namespace {

namespace fs = std::filesystem;

std::string present;  // the input under check

void tellInput(int) {
    const auto written = write(STDERR_FILENO, present.data(), present.size());
    std::signal(SIGABRT, SIG_DFL);
    if (written >= 0) std::raise(SIGABRT);
}

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

class HostileInput : public ::testing::TestWithParam<Check> {};

TEST_P(HostileInput, LeavesThePropertiesAsTheyAre) {
    const fs::path root = fs::path(VELORAN_SOURCE_DIR) / "fuzz";
    const auto seeds = inputsIn(root / "corpus" / GetParam().name);
    ASSERT_FALSE(seeds.empty()) << "tools/make_fuzz_seeds makes them";
    const auto previous = std::signal(SIGABRT, tellInput);
    present = "input: none\n";
    GetParam().run({});
    for (const auto& directory : {"corpus", "findings"}) {
        for (const auto& path : inputsIn(root / directory / GetParam().name)) {
            present = "input: " + path.string() + "\n";
            GetParam().run(content(path));
        }
    }
    std::signal(SIGABRT, previous);
}

INSTANTIATE_TEST_SUITE_P(Fuzz, HostileInput, ::testing::ValuesIn(checks().begin(), checks().end()),
                         [](const auto& check) { return std::string(check.param.name); });

}  // namespace
}  // namespace veloran::fuzz
