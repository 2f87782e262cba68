#include "rig/rig_protocol_mode.h"

#include <algorithm>

#include "base/text.h"

namespace veloran {
namespace {

constexpr std::string_view kVersionKey = "SAT_PROTO=";

/// The version announced by the first line that has the key; later ones do not count.
std::optional<std::int64_t> announcedVersion(const ReplyLines& lines) {
    const auto found = std::ranges::find_if(
        lines, [](const std::string& line) { return line.starts_with(kVersionKey); });
    if (found == lines.end()) return std::nullopt;
    return parseInt64(std::string_view(*found).substr(kVersionKey.size()));
}

}  // namespace

std::string_view rawValue(RigProtocolMode mode) {
    switch (mode) {
        case RigProtocolMode::classic:
            return "Classic";
        case RigProtocolMode::satProtoV1:
            return "SAT_PROTO v1";
        case RigProtocolMode::unknown:
            break;
    }
    return "—";
}

std::optional<RigProtocolMode> rigProtocolModeFrom(std::string_view text) {
    for (const auto mode :
         {RigProtocolMode::unknown, RigProtocolMode::classic, RigProtocolMode::satProtoV1}) {
        if (text == rawValue(mode)) return mode;
    }
    return std::nullopt;
}

RigProtocolMode modeFromCapabilities(std::int64_t code, const ReplyLines& lines) {
    const bool speaksExtension = code == 0 && announcedVersion(lines).value_or(0) >= 1;
    return speaksExtension ? RigProtocolMode::satProtoV1 : RigProtocolMode::classic;
}

}  // namespace veloran
