#include "qt/qt_location_service.h"

#include <QGeoPositionInfoSource>
#include <cmath>
#include <utility>
#include <vector>

namespace veloran {

namespace {

std::optional<LocationService::Position> positionOf(const QGeoPositionInfo& info) {
    const auto place = info.coordinate();
    if (!info.isValid() || !place.isValid()) return std::nullopt;
    LocationService::Position position{place.latitude(), place.longitude(), std::nullopt};
    if (std::isfinite(place.altitude())) position.altitude = place.altitude();
    return position;
}

}  // namespace

/// One source for the life of the service, made at the first question: asking for it may start
/// services of the desktop.
class QtLocationService::Search {
  public:
    explicit Search(double patienceSeconds)
        : patience_(static_cast<int>(patienceSeconds * 1000)),
          source_(QGeoPositionInfoSource::createDefaultSource(nullptr)) {
        if (!source_) return;
        const auto found = [this](const QGeoPositionInfo& info) { finish(positionOf(info)); };
        QObject::connect(source_.get(), &QGeoPositionInfoSource::positionUpdated, found);
        QObject::connect(source_.get(), &QGeoPositionInfoSource::errorOccurred,
                         [this] { finish(std::nullopt); });
    }

    void begin(Completion completion) {
        if (!source_) return completion(std::nullopt);
        if (const auto known = positionOf(source_->lastKnownPosition())) return completion(known);
        waiting_.push_back(std::move(completion));
        if (waiting_.size() > 1) return;
        source_->requestUpdate(patience_);
    }

  private:
    void finish(const std::optional<Position>& position) {
        for (const auto& completion : std::exchange(waiting_, {})) completion(position);
    }

    int patience_;  // milliseconds
    std::unique_ptr<QGeoPositionInfoSource> source_;
    std::vector<Completion> waiting_;
};

QtLocationService::QtLocationService(MainLoop& loop, double patienceSeconds)
    : loop_(loop), patienceSeconds_(patienceSeconds) {}
QtLocationService::~QtLocationService() = default;

void QtLocationService::locate(Completion completion) {
    if (!search_) search_ = std::make_shared<Search>(patienceSeconds_);
    loop_.post([search = std::weak_ptr(search_), completion = std::move(completion)]() mutable {
        if (const auto alive = search.lock()) alive->begin(std::move(completion));
    });
}

}  // namespace veloran
