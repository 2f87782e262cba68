#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "repository/source_lines.h"

namespace veloran::test {
namespace {

/// What each folder of src/ may include from: the same graph as the link edges in src/*/CMakeLists.
const std::map<std::string, std::set<std::string>> kMayInclude{
    {"base", {}},
    {"platform", {"base"}},
    {"orbit", {"base"}},
    {"elements", {"orbit", "platform", "base"}},
    {"transmitters", {"platform", "base"}},
    {"rig", {"platform", "base"}},
    {"core", {"elements", "transmitters", "rig", "orbit", "platform", "base"}},
    {"ui", {"core", "elements", "transmitters", "rig", "orbit", "platform", "base"}},
    {"qt", {"platform", "base"}},
    {"app", {"ui", "qt", "core", "elements", "transmitters", "rig", "orbit", "platform", "base"}}};
const std::set<std::string> kMayUseQt{"ui", "qt", "app"};

struct Include {
    std::string target;
    bool isQuoted = false;
};

/// The target of an #include line; an empty one for any other line.
Include includeOf(const std::string& line) {
    const auto word = line.find("#include");
    if (word == std::string::npos || line.find_first_not_of(" \t") != word) return {};
    const auto open = line.find_first_of("<\"", word);
    if (open == std::string::npos) return {};
    const bool isQuoted = line[open] == '"';
    const auto close = line.find(isQuoted ? '"' : '>', open + 1);
    return {line.substr(open + 1, close - open - 1), isQuoted};
}

bool isQtHeader(const std::string& target) {
    return target.size() > 1 && target[0] == 'Q' && target[1] >= 'A' && target[1] <= 'Z' &&
           !target.ends_with(".h");
}

/// Why `folder` may not have this include; empty if it may.
std::string objection(const std::string& folder, const Include& include) {
    if (isQtHeader(include.target) || include.target.starts_with("Qt")) {
        return kMayUseQt.contains(folder) ? "" : folder + " may not use Qt";
    }
    const auto slash = include.target.find('/');
    if (!include.isQuoted || slash == std::string::npos) return "";
    const auto from = include.target.substr(0, slash);
    const bool isFine = from == folder || kMayInclude.at(folder).contains(from);
    return isFine ? "" : folder + " may not include from " + from;
}

TEST(IncludeGraph, EveryIncludeGoesDownward) {
    int includes = 0;
    forEachSourceLine("src", [&](const SourceLine& line) {
        const auto include = includeOf(line.text);
        if (include.target.empty()) return;
        ++includes;
        const auto folder = std::next(line.file.begin())->string();
        ASSERT_TRUE(kMayInclude.contains(folder)) << line << ": a folder the graph does not know";
        const auto reason = objection(folder, include);
        EXPECT_TRUE(reason.empty()) << line << ": " << reason << ": " << include.target;
    });
    EXPECT_GT(includes, 100) << "the sources were not found";
}

TEST(IncludeGraph, WrongIncludesWouldBeNoticed) {
    EXPECT_NE(objection("base", includeOf("#include \"core/tick.h\"")), "");
    EXPECT_NE(objection("qt", includeOf("#include \"core/tick.h\"")), "");
    EXPECT_NE(objection("core", includeOf("#include <QString>")), "");
    EXPECT_NE(objection("rig", includeOf("  #include <QtNetwork/QTcpSocket>")), "");
    EXPECT_EQ(objection("ui", includeOf("#include <QString>")), "");
    EXPECT_EQ(objection("core", includeOf("#include \"rig/sat_command.h\"")), "");
    EXPECT_EQ(objection("base", includeOf("#include <vector>")), "");
}

}  // namespace
}  // namespace veloran::test
