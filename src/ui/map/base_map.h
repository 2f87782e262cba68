#pragma once

#include <QImage>
#include <QSize>

#include "ui/map/map_camera.h"

namespace veloran {

/// What the world is drawn with; the theme decides.
struct BaseMapColors {
    QRgb beyond;  ///< beside the world
    QRgb water, land, coast, border, graticule;
    QRgb air;  ///< a thin rim about the globe

    bool operator==(const BaseMapColors&) const = default;
};
BaseMapColors baseMapColors();

/// The world below all layers: pure, the same picture for the same arguments, `scale` device pixels
/// a logical pixel. `earth` is an equirectangular picture of the whole Earth (north up, from 180
/// degrees west) for the styles "Satellite" and "Hybrid"; null draws their globe from the
/// coastlines, filled.
QImage baseMap(MapStyle style, const MapCamera& camera, QSize size, double scale,
               const QImage& earth, const BaseMapColors& colors);

}  // namespace veloran
