#include <gtest/gtest.h>

#include "rig/sat_command.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

namespace json = boost::json;

std::string text(const json::object& testCase, std::string_view key) {
    return std::string(testCase.at(key).as_string());
}

std::string commandOf(const json::object& testCase) {
    const auto function = text(testCase, "function");
    if (function == "number") return satNumber(number(testCase.at("value")));
    if (function == "setFrequency") return frequencyCommand(number(testCase.at("value")));
    if (function == "satAOS") return armCommand(text(testCase, "name"));
    if (function == "setMode") {
        return modeCommand(text(testCase, "mode"), testCase.at("passband").as_int64());
    }
    if (function == "line") {
        const auto& rate = testCase.at("rate");
        return formatSatCommand(text(testCase, "name"), number(testCase.at("rest")),
                                number(testCase.at("doppler")),
                                rate.is_null() ? std::nullopt : std::optional(number(rate)));
    }
    ADD_FAILURE() << "unknown function " << function;
    return {};
}

void checkCase(const json::object& testCase) {
    expectKnownMembers(testCase,
                       {"id", "note", "function", "value", "name", "rest", "doppler", "rate",
                        "mode", "passband", "expected"},
                       "case");
    EXPECT_EQ(commandOf(testCase), text(testCase, "expected")) << "expected";
}

TEST(SatCommandsVectors, AllCases) {
    forEachCase(loadVectors("data/sat_commands.json"), "data/sat_commands.json", "cases",
                checkCase);
}

}  // namespace
}  // namespace veloran::test
