#include "ui/map/map_scene.h"

#include <QFontMetricsF>
#include <cmath>

#include "ui/theme.h"

namespace veloran {

namespace {

constexpr double kSiteRadius = 10;
constexpr double kSiteSymbol = 10;
constexpr double kSatelliteRadius = 8;
constexpr double kSatelliteSymbol = 9;
constexpr double kTagGap = 2;
constexpr RgbColor kWhite = {1, 1, 1};

/// The name of a place, its plate above or below the place.
scene::Tag nameTag(const scene::Point& at, const std::string& name, double away) {
    constexpr int kPixels = 9;
    constexpr double kVerticalPadding = 1;
    const double half =
        QFontMetricsF(Theme::face(kPixels, QFont::DemiBold)).height() / 2 + kVerticalPadding;
    return {.center = {at.x, at.y + away + std::copysign(kTagGap + half, away)},
            .text = name,
            .pixels = kPixels,
            .weight = QFont::DemiBold,
            .horizontalPadding = 4,
            .verticalPadding = kVerticalPadding,
            .cornerRadius = 3};
}

/// A white line on the bright ground of the light theme shows by its dark edges.
scene::Polyline shadow(const ScreenLine& piece, const scene::Stroke& stroke) {
    constexpr RgbColor kBlack = {0, 0, 0};
    return {piece, {kBlack, 0.3, stroke.width + 1, stroke.dash, stroke.gap}};
}

class Projected {
  public:
    explicit Projected(const MapProjection& projection) : projection_(projection) {}
    scene::Scene take() {
        drawLabels();
        return std::move(scene_);
    }

    void operator()(const MapArea& area) {
        std::vector<ScreenLine> rings = projection_.region(area.region);
        if (!rings.empty()) scene_.push_back(scene::Region{std::move(rings), area.fill});
    }
    void operator()(const MapLine& line) {
        for (ScreenLine& piece : projection_.line(line.points)) {
            if (line.stroke.paint == Paint(kWhite)) scene_.push_back(shadow(piece, line.stroke));
            scene_.push_back(scene::Polyline{std::move(piece), line.stroke});
        }
    }
    void operator()(const MapSite& site) {
        for (const scene::Point& at : projection_.toScreen(site.at)) {
            if (site.onPicture) scene_.push_back(scene::Disc{at, kSiteRadius, {Ink::window, 0.7}});
            scene_.push_back(scene::Disc{at, kSiteRadius, {site.paint, 0.3}});
            scene_.push_back(scene::Icon{at, kSiteSymbol, site.symbol, site.paint});
            if (!site.label.empty()) labels_.push_back(nameTag(at, site.label, kSiteRadius));
        }
    }
    void operator()(const MapSatellite& satellite) {
        drawLabels();
        for (const scene::Point& at : projection_.toScreen(satellite.at)) {
            scene_.push_back(nameTag(at, satellite.name, -kSatelliteRadius));
            scene_.push_back(scene::Disc{at, kSatelliteRadius, {satellite.paint}});
            scene_.push_back(scene::Icon{at, kSatelliteSymbol, Symbol::satellite, kWhite});
        }
    }

  private:
    /// The names of sites lie above all lines, which would make them illegible.
    void drawLabels() {
        scene_.insert(scene_.end(), labels_.begin(), labels_.end());
        labels_.clear();
    }

    const MapProjection& projection_;
    scene::Scene scene_;
    scene::Scene labels_;
};

}  // namespace

scene::Scene mapScene(const MapLayers& layers, const MapProjection& projection) {
    Projected projected(projection);
    for (const MapLayer& layer : layers) std::visit(projected, layer);
    return projected.take();
}

}  // namespace veloran
