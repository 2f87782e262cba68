#pragma once

#include "orbit/pass_predictor.h"
#include "ui/scene/scene.h"

namespace veloran {

/// Where a direction lies on a sky disc: north up, east to the right, the zenith in the centre and
/// the horizon on the rim; what is below the horizon falls outside. Degrees.
scene::Point polarPoint(double azimuth, double elevation, scene::Point center, double radius);

/// A pass as a thumbnail of the sky.
scene::Scene miniPolarPlotScene(const PredictedPass& pass, double width, double height);

}  // namespace veloran
