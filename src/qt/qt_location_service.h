#pragma once

#include <memory>

#include "platform/location_service.h"
#include "platform/main_loop.h"

namespace veloran {

/// The place that the desktop's location service (GeoClue, on Linux) last knew or finds soon.
/// Ending the service drops the completions that are still to come.
class QtLocationService final : public LocationService {
  public:
    /// How long a place is waited for.
    static constexpr double kPatienceSeconds = 15;

    /// `loop` has to outlive the service.
    explicit QtLocationService(MainLoop& loop, double patienceSeconds = kPatienceSeconds);
    ~QtLocationService() override;

    void locate(Completion completion) override;

  private:
    class Search;
    MainLoop& loop_;
    double patienceSeconds_;
    std::shared_ptr<Search> search_;
};

}  // namespace veloran
