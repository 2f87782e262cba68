#include "ui/map/map_layers.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "orbit/angles.h"
#include "ui/map/map_texts.h"

namespace veloran {

namespace {

constexpr RgbColor kAmber = {1, 0.85, 0.25};
constexpr RgbColor kWhite = {1, 1, 1};

bool isOnEarth(const GeoPoint& point) {
    return std::abs(point.lat) <= 90 && std::isfinite(point.lon);
}

/// Draws the step between two segments of a track, from both sides as far as the date line.
void leadToDateLine(GeoRing& before, GeoRing& after) {
    const GeoPoint from = before.back();
    const GeoPoint to = after.front();
    const double edge = from.lon > 0 ? 180 : -180;
    const double way = withinHalfTurn(to.lon - from.lon, 360);
    const double lat =
        way == 0 ? from.lat : from.lat + (edge - from.lon) / way * (to.lat - from.lat);
    before.push_back({lat, edge});
    after.insert(after.begin(), {lat, -edge});
}

class Layers {
  public:
    explicit Layers(MapStyle style) : style_(style) {}
    MapLayers take() { return std::move(layers_); }

    void site(const MapSite& site) {
        if (!isOnEarth(site.at)) return;
        MapSite shown = site;
        shown.at.lon = withinHalfTurn(shown.at.lon, 360);
        shown.onPicture = !isFlat(style_);
        layers_.push_back(std::move(shown));
    }

    void coverage(const PassTrackCache& cache) {
        area(cache.cachedCoverage, {kAmber, 0.18});
        lines(cache.cachedCoverageArcs, {kAmber, 0.9, 1.5});
    }

    void track(std::vector<GeoRing> segments, const scene::Stroke& stroke) {
        for (std::size_t i = 1; i < segments.size(); ++i) {
            leadToDateLine(segments[i - 1], segments[i]);
        }
        lines(segments, stroke);
    }

    void footprint(const SubSatellitePoint& point, const Paint& paint) {
        const GroundRegion region = footprintRegion(point);
        area(region, {paint, 0.08});
        for (const GeoRing& ring : region.rings) {
            lines(splitPolygonArcsAtAntimeridian(ring), {paint, 0.9, 1.5, 3, 3});
        }
    }

    void satellite(const SubSatellitePoint& point, const std::string& name, const Paint& paint) {
        layers_.push_back(MapSatellite{{point.latitudeDeg, point.longitudeDeg}, name, paint});
    }

  private:
    void area(const GroundRegion& region, const scene::Fill& fill) {
        const auto isOutline = [](const GeoRing& ring) {
            return ring.size() >= 3 && std::ranges::all_of(ring, isOnEarth);
        };
        if (!region.isEmpty() && std::ranges::all_of(region.rings, isOutline)) {
            layers_.push_back(MapArea{region, fill});
        }
    }
    void lines(const std::vector<GeoRing>& list, const scene::Stroke& stroke) {
        for (const GeoRing& points : list) line(points, stroke);
    }
    void line(const GeoRing& points, const scene::Stroke& stroke) {
        if (points.size() >= 2 && std::ranges::all_of(points, isOnEarth)) {
            layers_.push_back(MapLine{points, stroke});
        }
    }

    MapStyle style_;
    MapLayers layers_;
};

}  // namespace

MapSite homeSite(GeoPoint at, std::string_view name) {
    return {at, observerAnnotation(name), Symbol::antenna, Ink::cyan};
}

MapSite secondSite(GeoPoint at, std::string_view name) {
    return {at, std::string(name), Symbol::pin, Ink::orange};
}

MapLayers mapLayers(const MapContent& content, const PassTrackCache& cache, Instant now) {
    Layers layers(content.style);
    layers.site(content.home);
    if (content.second) layers.site(*content.second);
    if (!content.selectedPass) return layers.take();

    const Satellite& satellite = *content.selectedPass->satellite;
    const Paint satColor = SatelliteColorPalette::color(satellite.id);
    layers.coverage(cache);
    if (content.extendedTrackHours > 0) {
        layers.track(extendedTrackSegments(satellite, now, content.extendedTrackHours),
                     {kWhite, 0.85, 1.5, 4, 4});
    }
    layers.track(passTrackSegments(cache), {satColor, 0.95, 2.5});
    if (const auto point = currentSubSatellitePoint(content.selectedPass, now)) {
        layers.footprint(*point, satColor);
        layers.satellite(*point, satellite.name, satColor);
    }
    return layers.take();
}

std::optional<SubSatellitePoint> currentSubSatellitePoint(const std::optional<PassInfo>& selected,
                                                          Instant now) {
    return selected ? selected->satellite->currentSubPoint(now) : std::nullopt;
}

}  // namespace veloran
