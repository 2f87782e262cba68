#include "support/vectors.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "base/json.h"

namespace veloran::test {

std::filesystem::path vectorsDirectory() {
    const char* given = std::getenv("VELORAN_VECTORS");
    return given && *given ? std::filesystem::path(given)
                           : std::filesystem::path(VELORAN_SOURCE_DIR) / "tests" / "vectors";
}

boost::json::object loadVectors(std::string_view name) {
    const auto path = vectorsDirectory() / name;
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read golden file " + path.string());
    std::stringstream content;
    content << file.rdbuf();
    const auto value = parseJson(content.str());
    if (!value || !value->is_object()) {
        throw std::runtime_error("golden file is no JSON object: " + path.string());
    }
    return value->get_object();
}

void expectKnownMembers(const boost::json::object& object,
                        std::initializer_list<std::string_view> known, const std::string& where) {
    for (const auto& member : object) {
        const std::string_view key = member.key();
        EXPECT_NE(std::find(known.begin(), known.end(), key), known.end())
            << where << ": nothing checks the member \"" << key << "\"";
    }
}

void forEachCase(const boost::json::object& file, std::string_view fileName, std::string_view array,
                 const std::function<void(const boost::json::object& testCase)>& check) {
    const auto* member = file.if_contains(array);
    ASSERT_TRUE(member && member->is_array()) << fileName << " has no array \"" << array << "\"";
    const auto& cases = member->get_array();
    ASSERT_FALSE(cases.empty()) << fileName << ": \"" << array << "\" is empty";
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const auto& testCase = cases[i].as_object();
        const auto* id = testCase.if_contains("id");
        const std::string label = id && id->is_string() ? std::string(id->get_string()) : "";
        SCOPED_TRACE(std::string(fileName) + " " + std::string(array) + "[" + std::to_string(i) +
                     "] " + label);
        check(testCase);
    }
}

double number(const boost::json::value& value) {
    return value.to_number<double>();
}

std::string fromHex(std::string_view hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16));
    }
    return bytes;
}

::testing::AssertionResult closeTo(double actual, double expected, double relative) {
    if (actual == expected) return ::testing::AssertionSuccess();
    const double scale = std::max(std::abs(actual), std::abs(expected));
    if (std::abs(actual - expected) <= relative * scale) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << ::testing::PrintToString(actual) << " is not within a relative " << relative
           << " of the expected " << ::testing::PrintToString(expected);
}

}  // namespace veloran::test
