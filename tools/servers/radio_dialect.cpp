#include "servers/radio_dialect.h"

#include <fmt/format.h>

#include "base/text.h"

namespace veloran {
namespace {

std::string report(std::int64_t code) {
    return fmt::format("RPRT {}\n", code);
}

/// "<rest> <doppler>" or "<rest> <doppler> <rate>".
std::optional<SatChannel> readChannel(std::string_view arguments) {
    const auto fields = split(arguments, ' ');
    if (fields.size() != 2 && fields.size() != 3) return {};
    const auto rest = parseDouble(fields[0]);
    const auto doppler = parseDouble(fields[1]);
    if (!rest || !doppler) return {};
    SatChannel channel{.restHz = *rest, .dopplerHz = *doppler, .rateHzS = {}};
    if (fields.size() == 3) {
        channel.rateHzS = parseDouble(fields[2]);
        if (!channel.rateHzS) return {};
    }
    return channel;
}

}  // namespace

std::string RadioDialect::reply(ClientId client, std::string_view line) {
    const auto text = trimmed(line, Blanks::withNewlines);
    const auto blank = text.find(' ');
    const auto command = text.substr(0, blank);
    const auto arguments = blank == std::string_view::npos ? "" : text.substr(blank + 1);

    if (command.empty()) return "";
    if (command == "\\sat_caps") return capabilities();
    if (command.starts_with("\\sat_")) return satellite(client, command, arguments);
    if (command == "f") return fmt::format("{}\n", frequency_);
    if (command == "m") return fmt::format("{}\n{}\n", mode_, passband_);
    if (command == "F") {
        const auto hz = parseInt64(arguments);
        if (!hz) return report(kInvalid);
        frequency_ = *hz;
        return report(kAccepted);
    }
    if (command == "M") {
        const auto fields = split(arguments, ' ');
        const auto hz = fields.size() == 2 ? parseInt64(fields[1]) : std::nullopt;
        if (!hz) return report(kInvalid);
        mode_ = fields[0];
        passband_ = *hz;
        return report(kAccepted);
    }
    return report(kInvalid);
}

void RadioDialect::clientGone(ClientId client) {
    if (armedBy_ == client) armedBy_.reset();
}

std::string RadioDialect::capabilities() const {
    switch (capsAnswer_) {
        case CapsAnswer::satProtoV1:
            return "SAT_PROTO=1\nMODEL=Simulated radio\nEND\n" + report(kAccepted);
        case CapsAnswer::nothing:
            return "";
        case CapsAnswer::invalidParam:
            return report(-1);
        case CapsAnswer::notImplemented:
            return report(-4);
        case CapsAnswer::positiveCode:
            return report(1);
        case CapsAnswer::plainText:
            return "Command not found\n";
    }
    return "";
}

std::string RadioDialect::satellite(ClientId client, std::string_view command,
                                    std::string_view arguments) {
    if (capsAnswer_ != CapsAnswer::satProtoV1) return report(kInvalid);
    if (command == "\\sat_aos") {
        if (arguments.empty()) return report(kInvalid);
        armedBy_ = client;
        armedName_ = arguments;
        return report(kAccepted);
    }
    if (command == "\\sat_los") {
        if (armedBy_ != client) return report(kNotArmed);
        armedBy_.reset();
        return report(kAccepted);
    }
    if (command == "\\sat_dl") return update(client, downlink_, arguments);
    if (command == "\\sat_ul") {
        return refuseUplink_ ? report(kUnavailable) : update(client, uplink_, arguments);
    }
    return report(kInvalid);
}

std::string RadioDialect::update(ClientId client, std::optional<SatChannel>& channel,
                                 std::string_view arguments) {
    const auto values = readChannel(arguments);
    if (!values) return report(kInvalid);
    if (armedBy_ != client) return report(kNotArmed);
    channel = values;
    return report(kAccepted);
}

}  // namespace veloran
