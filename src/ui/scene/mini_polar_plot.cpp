#include "ui/scene/mini_polar_plot.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace veloran {

scene::Point polarPoint(double azimuth, double elevation, scene::Point center, double radius) {
    const double r = radius * (1 - elevation / 90);
    const double a = azimuth * std::numbers::pi / 180;
    return {center.x + r * std::sin(a), center.y - r * std::cos(a)};
}

scene::Scene miniPolarPlotScene(const PredictedPass& pass, double width, double height) {
    const scene::Point c{width / 2, height / 2};
    const double r = std::min(width, height) / 2 - 2;
    const scene::Stroke cross{Ink::gray, 0.15, 0.5};

    scene::Scene scene;
    scene.push_back(scene::Ring{c, r, {Ink::gray, 0.3, 0.5}});
    scene.push_back(scene::Line{{c.x, c.y - r}, {c.x, c.y + r}, cross});
    scene.push_back(scene::Line{{c.x - r, c.y}, {c.x + r, c.y}, cross});
    if (pass.trackPoints.size() < 2) return scene;

    std::vector<scene::Point> track;
    track.reserve(pass.trackPoints.size());
    for (const PassPoint& p : pass.trackPoints) {
        track.push_back(polarPoint(p.azimuth, p.elevation, c, r));
    }
    const scene::Point rise = track.front();
    const scene::Point set = track.back();
    scene.push_back(scene::Polyline{std::move(track), {Ink::cyan, 1, 1.5}});
    scene.push_back(scene::Disc{rise, 2.5, {Ink::green}});
    scene.push_back(scene::Disc{set, 2.5, {Ink::red}});
    return scene;
}

}  // namespace veloran
