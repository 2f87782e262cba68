#pragma once

#include <QImage>

#include "ui/map/globe_projection.h"

namespace veloran {

/// Paints a picture of the whole Earth (equirectangular, north up, from 180 degrees west) on the
/// globe's disc: each pixel looks down its own ray. `canvas` is opaque 32-bit, `scale` device
/// pixels a logical pixel of the projection; pixels at the limb are mixed with what is there.
void paintEarth(QImage& canvas, const GlobeProjection& globe, double scale, const QImage& earth);

}  // namespace veloran
