#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "transmitters/satnogs_cache.h"

namespace veloran {

/// Gets the channels of satellites as they are named, from caches and service, a few at a time.
/// What is named before all is through belongs to one batch. Once the service has failed, the rest
/// of the batch is served by the caches alone, however old. Main thread only; nothing completes
/// once this has gone.
class SatNOGSBatch {
  public:
    /// Once for each that was added; empty when nothing could be had.
    using Completion = std::function<void(std::int64_t noradId, std::vector<Transmitter>)>;

    static constexpr std::size_t kMostAtOnce = 4;

    SatNOGSBatch(SatNOGSCache cache, Completion completion);

    /// What waits or is under way is not added again.
    void add(const std::vector<std::int64_t>& noradIds);

  private:
    struct State;
    std::shared_ptr<State> state_;
};

}  // namespace veloran
