#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/pass_queue.h"

namespace veloran {

/// Every entry of the queue in words, a line each in order of rising: "14:32 SO-50: Will be tracked
/// when it rises". `nameOf` gives the name of a satellite, or nothing where it is unknown. Of a
/// long queue the last lines are counted only.
std::string queueHelp(const std::vector<QueueEntry>& entries,
                      const std::function<std::string(std::int64_t noradId)>& nameOf);

}  // namespace veloran
