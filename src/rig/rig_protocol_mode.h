#pragma once

#include <optional>
#include <string_view>

#include "rig/reply_queue.h"

namespace veloran {

/// Dialect of the radio server.
enum class RigProtocolMode {
    unknown,    ///< not connected, or the probe has not ended
    classic,    ///< plain rigctld commands
    satProtoV1  ///< rest frequency, Doppler and rate as separate fields
};

/// The text shown to the user: "—", "Classic", "SAT_PROTO v1".
std::string_view rawValue(RigProtocolMode mode);
std::optional<RigProtocolMode> rigProtocolModeFrom(std::string_view rawValue);

/// What the answer to the capability probe says.
RigProtocolMode modeFromCapabilities(std::int64_t code, const ReplyLines& lines);

}  // namespace veloran
