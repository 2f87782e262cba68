#include "rig/rig_protocol_mode.h"

#include "base/text.h"

namespace veloran {
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
    // The first line that announces a version decides; later ones do not count.
    const auto version = parseInt64(lines.announcement().value_or(""));
    const bool speaksExtension = code == 0 && version.value_or(0) >= 1;
    return speaksExtension ? RigProtocolMode::satProtoV1 : RigProtocolMode::classic;
}

}  // namespace veloran
