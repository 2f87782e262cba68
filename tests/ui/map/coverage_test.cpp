#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>
#include <random>

#include "core/default_satellites.h"
#include "map_bodies.h"
#include "projection_support.h"
#include "ui/map/map_layers.h"
#include "ui/map/map_scene.h"

namespace veloran::test {
namespace {

// What the map tints, against spherical trigonometry: a place sees a body that stands `altitude`
// over a point when it is no farther from that point than the angle whose cosine is
// R / (R + altitude).

constexpr double kRadians = std::numbers::pi / 180;
constexpr double kEarthRadius = 6378.137;  // km

struct Direction {
    double x, y, z;
};

Direction directionOf(double lat, double lon) {
    return {std::cos(lat * kRadians) * std::cos(lon * kRadians),
            std::cos(lat * kRadians) * std::sin(lon * kRadians), std::sin(lat * kRadians)};
}

/// Where a body stood, and how far from there it was seen.
struct Sight {
    Direction below;
    double radius;  // radians
    double cosine;
};

std::vector<Sight> sightsOf(const Satellite& body, Instant from, Instant to) {
    constexpr double kStep = 10;  // seconds: a low satellite moves by 0.7 degrees
    std::vector<Sight> sights;
    const auto add = [&](Instant at) {
        const auto point = body.currentSubPoint(at);
        if (!point || !(point->altitudeKm > 0)) return;
        const double cosine = kEarthRadius / (kEarthRadius + point->altitudeKm);
        sights.push_back(
            {directionOf(point->latitudeDeg, point->longitudeDeg), std::acos(cosine), cosine});
    };
    for (Instant at = from; at < to; at = at + kStep) add(at);
    add(to);
    return sights;
}

/// Degrees by which a place lies inside what was seen best; negative outside.
double depthOf(const std::vector<Sight>& sights, const GeoPoint& place) {
    const Direction at = directionOf(place.lat, place.lon);
    double most = -std::numbers::pi;
    for (const Sight& sight : sights) {
        const double cosine = at.x * sight.below.x + at.y * sight.below.y + at.z * sight.below.z;
        // The angle itself only where it can be more than the best so far.
        if (cosine < std::cos(std::min(sight.radius - most, std::numbers::pi))) continue;
        most = std::max(most, sight.radius - std::acos(std::clamp(cosine, -1.0, 1.0)));
    }
    return most / kRadians;
}

struct View {
    std::string name;
    MapStyle style;
    MapCamera camera;
};

const QSizeF kView(700, 420);

std::vector<View> views() {
    return {{"flat", MapStyle::standard, {{0, -84}, 5e7, 0}},
            {"flat, moved", MapStyle::standard, {{0, 171}, 5e7, 0}},
            {"flat, near", MapStyle::standard, {{40, -120}, 1.2e7, 0}},
            {"globe", MapStyle::imagery, {{20, -84}, 3e7, 0}},
            {"globe, turned", MapStyle::hybrid, {{-35, 100}, 3e7, 130}},
            {"globe, its pole", MapStyle::imagery, {{88, 10}, 5e7, 40}},
            {"globe, from below", MapStyle::hybrid, {{-75, -160}, 3e7, 250}},
            {"globe, near", MapStyle::imagery, {{45, -60}, 3e6, 20}}};
}

struct Body {
    std::string name;
    double inclination;
    double eccentricity;
    double argPerigee;
    double revolutionsPerDay;
};

SatellitePtr made(const Body& body, double meanAnomaly, double raan) {
    auto satellite = std::make_shared<Satellite>(body.name, 50000);
    TLEData tle = lowOrbit();
    tle.epochYear = 2026;
    tle.epochDays = 325;
    tle.bstar = 0;
    tle.inclination = body.inclination;
    tle.eccentricity = body.eccentricity;
    tle.argPerigee = body.argPerigee;
    tle.meanMotion = body.revolutionsPerDay;
    tle.meanAnomaly = meanAnomaly;
    tle.raan = raan;
    satellite->tle = tle;
    satellite->initOrbit();
    return satellite;
}

std::vector<SatellitePtr> bodies() {
    const std::vector<Body> kinds = {{"low", 51.6, 0.001, 90, 15.5},
                                     {"polar", 98.7, 0.001, 90, 14.2},
                                     {"polar, very low", 97.4, 0.001, 90, 16.1},
                                     {"navigation", 55, 0.005, 40, 2.0056},
                                     {"Molniya", 63.4, 0.72, 270, 2.006},
                                     {"transfer", 7, 0.73, 178, 2.26},
                                     {"transfer, inclined", 27, 0.72, 10, 2.27},
                                     {"geostationary", 0.03, 0.0002, 90, 1.0027},
                                     {"geosynchronous", 42, 0.07, 270, 1.0027}};
    std::vector<SatellitePtr> all;
    for (const Body& kind : kinds) {
        all.push_back(made(kind, 10, 100));
        all.push_back(made(kind, 200, 310));
    }
    for (const BodyKind kind : {BodyKind::sun, BodyKind::moon}) {
        all.push_back(std::make_shared<Satellite>(kind == BodyKind::sun ? "Sun" : "Moon", 1));
        all.back()->bodyKind = kind;
    }
    return all;
}

struct Site {
    double lat, lon;
};

/// Up to two passes over each of some places: whole ones, and those that the end of a day cuts.
std::vector<PassInfo> passesOf(const SatellitePtr& body) {
    std::vector<PassInfo> found;
    for (const Site site : {Site{33.87, -84.34}, Site{69.6, 18.9}, Site{-44, 170}}) {
        PassList passes =
            makePassPredictor(*body, site.lat, site.lon, 100).findPasses(kMapStart, 24, 2);
        if (passes.size() > 2) passes = {passes.front(), passes.back()};
        for (const PredictedPass& pass : passes) {
            found.push_back({.satellite = body, .pass = pass, .transmitter = std::nullopt});
        }
    }
    return found;
}

class Tint {
  public:
    Tint(const View& view, const MapLayers& layers, double opacity)
        : projection_(
              makeProjection(view.style, clampedCamera(view.style, view.camera, kView), kView)) {
        for (const scene::Shape& shape : mapScene(layers, *projection_)) {
            const auto* region = std::get_if<scene::Region>(&shape);
            if (!region || region->fill.opacity != opacity) continue;
            ++fills;
            rings_.insert(rings_.end(), region->rings.begin(), region->rings.end());
        }
    }

    /// Absent where the view does not show the place.
    std::optional<bool> at(const GeoPoint& place) const {
        for (const scene::Point& point : projection_->toScreen(place)) {
            if (point.x < 0 || point.y < 0) continue;
            if (point.x > kView.width() || point.y > kView.height()) continue;
            return isFilled(rings_, point);
        }
        return std::nullopt;
    }

    int fills = 0;

  private:
    std::unique_ptr<MapProjection> projection_;
    std::vector<ScreenLine> rings_;
};

class CoverageTest : public ::testing::Test {
  protected:
    static constexpr int kPlaces = 400;
    static constexpr double kCoverage = 0.18;
    static constexpr double kFootprint = 0.08;

    /// Evenly spread over the sphere.
    GeoPoint anyPlace() {
        std::uniform_real_distribution<double> sine(-1, 1);
        std::uniform_real_distribution<double> turn(-180, 180);
        return {std::asin(sine(random_)) / kRadians, turn(random_)};
    }

    void setPlaces(const std::vector<Sight>& sights) {
        places_.clear();
        depths_.clear();
        for (int i = 0; i < kPlaces; ++i) {
            places_.push_back(anyPlace());
            depths_.push_back(depthOf(sights, places_.back()));
        }
    }

    void compare(const Tint& tint, const std::string& what) {
        for (std::size_t i = 0; i < places_.size(); ++i) {
            const auto isTinted = tint.at(places_[i]);
            if (!isTinted) continue;
            ++compared_;
            const bool isSeen = depths_[i] >= 0;
            if (*isTinted == isSeen) continue;
            ++different_;
            EXPECT_LT(std::abs(depths_[i]), 0.5)
                << what << ": " << places_[i].lat << ' ' << places_[i].lon
                << (isSeen ? " is not tinted" : " is tinted");
        }
    }

    void expectAlmostAllAlike() {
        RecordProperty("compared", compared_);
        RecordProperty("different", different_);
        EXPECT_GT(compared_, 20000);
        EXPECT_LE(different_, compared_ / 200) << "of " << compared_;
    }

    std::mt19937 random_{20261122};
    std::vector<GeoPoint> places_;
    std::vector<double> depths_;
    int compared_ = 0;
    int different_ = 0;
};

TEST_F(CoverageTest, TintIsWhereTheBodyWasAboveTheHorizonAtSomeTimeOfThePass) {
    int passes = 0;
    for (const SatellitePtr& body : bodies()) {
        for (const PassInfo& info : passesOf(body)) {
            ++passes;
            setPlaces(sightsOf(*body, info.pass.riseTime, info.pass.setTime));
            PassTrackCache cache;
            cache.recomputePassCache(info);
            const Instant before = info.pass.riseTime;
            for (const View& view : views()) {
                MapContent content;
                content.style = view.style;
                content.selectedPass = info;
                const Tint tint(view, mapLayers(content, cache, before), kCoverage);
                EXPECT_LE(tint.fills, 1) << "nothing is tinted twice";
                compare(tint, body->name + " on " + view.name + " from " +
                                  std::to_string(before.secondsSinceReference));
            }
        }
    }
    EXPECT_GT(passes, 60);
    expectAlmostAllAlike();
}

TEST_F(CoverageTest, FootprintIsWhereTheBodyIsAboveTheHorizonNow) {
    for (const SatellitePtr& body : bodies()) {
        for (int hour = 0; hour < 24; hour += 5) {
            const Instant now = kMapStart + hour * 3600;
            setPlaces(sightsOf(*body, now, now));
            for (const View& view : views()) {
                MapContent content;
                content.style = view.style;
                content.selectedPass = passOf(body, now, 60);
                const Tint tint(view, mapLayers(content, PassTrackCache(), now), kFootprint);
                compare(tint, body->name + " on " + view.name + ", hour " + std::to_string(hour));
            }
        }
    }
    expectAlmostAllAlike();
}

}  // namespace
}  // namespace veloran::test
