#include "core/tick.h"

#include "rig/sat_command.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

using boost::json::object;

std::optional<double> optionalNumber(const boost::json::value& value) {
    return value.is_null() ? std::nullopt : std::optional(number(value));
}

RigProtocolMode modeFrom(std::string_view name) {
    if (name == "satProtoV1") return RigProtocolMode::satProtoV1;
    return name == "classic" ? RigProtocolMode::classic : RigProtocolMode::unknown;
}

TickInput inputOf(const object& c) {
    TickInput input;
    input.rangeRate = number(c.at("range_rate"));
    input.rangeRateAhead = optionalNumber(c.at("ahead_rate"));
    input.downlinkCenterHz = optionalNumber(c.at("dl_center"));
    const auto& inverting = c.at("dl_inverting");
    input.downlinkInverting = inverting.is_bool() && inverting.as_bool();
    input.uplinkCenterHz = optionalNumber(c.at("ul_center"));
    input.offsets = {number(c.at("passband")), number(c.at("cal")), number(c.at("rit"))};
    input.mode = modeFrom(c.at("mode").as_string());
    input.pattern = satProtoRestPatternFrom(c.at("pattern").as_string()).value();
    input.connected = c.at("connected").as_bool();
    const auto& previous = c.at("previous").as_object();
    expectKnownMembers(
        previous,
        {"currentDopplerShift", "currentCorrectedFreq", "currentDopplerRate", "currentUplinkFreq"},
        "previous");
    input.previous = {
        number(previous.at("currentDopplerShift")), number(previous.at("currentCorrectedFreq")),
        number(previous.at("currentDopplerRate")), number(previous.at("currentUplinkFreq"))};
    return input;
}

struct CommandText {
    std::string operator()(const SetFrequency& f) const { return frequencyCommand(f.hz); }
    std::string operator()(const SatDownlink& d) const {
        return formatSatCommand("sat_dl", d.restHz, d.dopplerHz, d.rateHzS);
    }
    std::string operator()(const SatUplink& u) const {
        return formatSatCommand("sat_ul", u.restHz, u.dopplerHz, u.rateHzS);
    }
};

void checkFigures(const object& expected, const TickInput& input, const DopplerFigures& figures) {
    expectKnownMembers(expected,
                       {"currentDopplerShift", "currentCorrectedFreq", "currentDopplerRate",
                        "currentUplinkFreq", "restDL", "restUL"},
                       "expected");
    const auto check = [&expected](const char* field, double actual) {
        if (const auto* wanted = expected.if_contains(field); wanted && !wanted->is_null()) {
            EXPECT_TRUE(closeTo(actual, number(*wanted))) << field;
        }
    };
    check("currentDopplerShift", figures.dopplerShift);
    check("currentCorrectedFreq", figures.correctedFreq);
    check("currentDopplerRate", figures.dopplerRate);
    check("currentUplinkFreq", figures.uplinkFreq);
    if (input.downlinkCenterHz) {
        check("restDL",
              restDownlink(*input.downlinkCenterHz, input.offsets, input.mode, input.pattern));
    }
    if (input.uplinkCenterHz) {
        const bool inverting = input.downlinkCenterHz && input.downlinkInverting;
        check("restUL", restUplink(*input.uplinkCenterHz, input.offsets, input.mode, input.pattern,
                                   inverting));
    }
}

TEST(TickVectors, FiguresAndCommandLines) {
    const auto file = loadVectors("data/tick.json");
    forEachCase(file, "tick.json", "cases", [](const object& c) {
        expectKnownMembers(c,
                           {"id", "note", "mode", "pattern", "connected", "range_rate",
                            "ahead_rate", "dl_center", "dl_inverting", "ul_center", "passband",
                            "cal", "rit", "previous", "expected", "lines"},
                           "case");
        const TickInput input = inputOf(c);
        const TickOutput output = computeTick(input);
        checkFigures(c.at("expected").as_object(), input, output.figures);
        std::vector<std::string> lines;
        for (const auto& command : output.commands) {
            lines.push_back(std::visit(CommandText{}, command));
        }
        std::vector<std::string> wanted;
        for (const auto& line : c.at("lines").as_array()) wanted.emplace_back(line.as_string());
        EXPECT_EQ(lines, wanted);
    });
}

}  // namespace
}  // namespace veloran::test
