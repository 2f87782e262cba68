#pragma once

#include <string_view>

#include "rig/rig_protocol_mode.h"

namespace veloran::test {

/// The name of a dialect as golden files write it.
inline std::string_view codeName(RigProtocolMode mode) {
    switch (mode) {
        case RigProtocolMode::classic:
            return "classic";
        case RigProtocolMode::satProtoV1:
            return "satProtoV1";
        case RigProtocolMode::unknown:
            break;
    }
    return "unknown";
}

}  // namespace veloran::test
