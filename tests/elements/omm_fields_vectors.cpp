#include <gtest/gtest.h>

#include "elements/element_records.h"
#include "elements/omm_lines.h"
#include "elements/omm_parser.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

using boost::json::value;

void expectEpoch(const value& input, const value& expected) {
    const auto epoch = omm_lines::parseEpoch(textOf(input));
    ASSERT_EQ(epoch.has_value(), !expected.is_null());
    if (!epoch) return;
    EXPECT_EQ(epoch->year, expected.at(0).to_number<std::int64_t>());
    EXPECT_TRUE(closeTo(epoch->days, number(expected.at(1))));
}

void expectField(const std::string& function, const value& input, const value& expected) {
    if (function == "checksum") {
        EXPECT_EQ(omm_lines::checksum(textOf(input)), expected.to_number<int>());
    } else if (function == "formatExponentNotation") {
        EXPECT_EQ(omm_lines::formatExponentNotation(number(input)), textOf(expected));
    } else if (function == "formatIntlDesignator") {
        EXPECT_EQ(omm_lines::formatIntlDesignator(textOf(input)), textOf(expected));
    } else if (function == "formatSignedDecimal") {
        EXPECT_EQ(omm_lines::formatSignedDecimal(number(input)), textOf(expected));
    } else if (function == "looksLikeJSON") {
        EXPECT_EQ(OMMParser::looksLikeJSON(textOf(input)), expected.as_bool());
    } else if (function == "padOrTruncate") {
        const auto width = input.at(1).to_number<std::size_t>();
        EXPECT_EQ(omm_lines::padOrTruncate(textOf(input.at(0)), width), textOf(expected));
    } else if (function == "parseEpoch") {
        expectEpoch(input, expected);
    } else {
        ADD_FAILURE() << "nothing checks the function " << function;
    }
}

TEST(OmmFieldsVectors, EveryFunctionGivesItsField) {
    constexpr const char* kFile = "data/omm_fields.json";
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& testCase) {
        expectKnownMembers(testCase, {"id", "note", "function", "input", "expected"}, "omm_fields");
        const std::string function = textOf(testCase.at("function"));
        SCOPED_TRACE(function);
        expectField(function, testCase.at("input"), testCase.at("expected"));
    });
}

}  // namespace
}  // namespace veloran::test
