#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace veloran::test {

/// What a seed can do to the program. Each counts only when it has really struck: a refusal when an
/// attempt was refused, a full disk when a file did not fit.
enum class Fault {
    refused,
    unanswered,
    reset,
    halfOpen,
    stalled,
    late,
    doubled,
    missing,
    split,
    garbage,
    endless,
    error,
    uplinkRefused,
    stolen,
    otherDialect,
    webFailed,
    webLate,
    webGarbage,
    webCut,
    webHuge,
    clockForward,
    clockBack,
    diskFull,
    diskReadOnly,
    settingsReadOnly,
    restarted,
    count
};

inline constexpr auto kFaults = static_cast<std::size_t>(Fault::count);

inline constexpr std::array<std::string_view, kFaults> kFaultNames{"connection refused",
                                                                   "connection unanswered",
                                                                   "connection reset",
                                                                   "connection half open",
                                                                   "connection stalled",
                                                                   "reply late",
                                                                   "reply doubled",
                                                                   "reply missing",
                                                                   "reply split at every byte",
                                                                   "reply garbage",
                                                                   "reply endless",
                                                                   "reply an error",
                                                                   "uplink refused",
                                                                   "radio stolen",
                                                                   "radio speaks another dialect",
                                                                   "web answer failed",
                                                                   "web answer late",
                                                                   "web answer garbage",
                                                                   "web answer cut",
                                                                   "web answer huge",
                                                                   "clock forward an hour",
                                                                   "clock back a minute",
                                                                   "disk full",
                                                                   "disk read-only",
                                                                   "settings store read-only",
                                                                   "program started anew"};

class FaultTally {
  public:
    void add(Fault fault) { ++counts_[static_cast<std::size_t>(fault)]; }
    std::size_t of(Fault fault) const { return counts_[static_cast<std::size_t>(fault)]; }
    std::size_t of(std::size_t fault) const { return counts_[fault]; }

  private:
    std::array<std::size_t, kFaults> counts_{};
};

}  // namespace veloran::test
