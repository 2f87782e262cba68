#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/machine.h"
#include "transmitters/satnogs.h"
#include "transmitters/transmitter.h"

namespace veloran {

/// Channels of single satellites on disk, one file and one time stamp each.
class SatNOGSCache {
  public:
    using Completion = std::function<void(std::vector<Transmitter>)>;

    static constexpr double defaultMaxAgeHours = 168.0;

    SatNOGSCache(const Machine& machine, SatNOGSFetch fetch);

    std::filesystem::path directory() const;
    std::filesystem::path cacheFile(std::int64_t noradId) const;
    std::filesystem::path timestampFile(std::int64_t noradId) const;

    bool isCacheStale(std::int64_t noradId, double maxAgeHours = defaultMaxAgeHours) const;
    std::optional<std::vector<Transmitter>> loadCached(std::int64_t noradId) const;
    /// The time stamp is renewed even if the channels could not be written.
    void save(std::int64_t noradId, const std::vector<Transmitter>& transmitters);
    /// A fresh cache, else the service, else a stale cache, else nothing. Main thread only; the
    /// completion comes later, on the main thread; files are read and written on the workers.
    void fetchWithCache(std::int64_t noradId, Completion completion) const;
    /// The same, with whether the service was asked and failed.
    void fetch(std::int64_t noradId, std::function<void(ServiceAnswer)> completion) const;
    /// The cache, however old, else nothing; asks nobody. Otherwise as above.
    void fetchCached(std::int64_t noradId, Completion completion) const;
    /// Removes the directory. It is made at the first use only: until the program starts again,
    /// nothing is saved any more.
    void clearAll();

  private:
    Machine machine_;
    SatNOGSFetch fetch_;
    std::shared_ptr<std::atomic<bool>> cleared_ = std::make_shared<std::atomic<bool>>(false);
};

}  // namespace veloran
