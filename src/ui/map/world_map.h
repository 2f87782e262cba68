#pragma once

#include <QByteArrayView>
#include <vector>

#include "orbit/ground_geometry.h"
#include "ui/map/sphere.h"

namespace veloran {

/// A coastline or border, and where on the globe it lies.
struct WorldLine {
    GeoRing points;
    SphereCap cap;
};

/// Coastlines and borders at one level of detail.
struct WorldLevel {
    double tolerance = 0;         ///< degrees that a line may be off
    std::vector<WorldLine> land;  ///< closed by themselves; a ring inside another is a lake
    std::vector<WorldLine>
        coasts;  ///< the outlines of the land as lines, without the source's cuts
    std::vector<WorldLine> borders;
};

/// The land of the Earth: Natural Earth at 1:50 million, made by tools/make_world_map, which tells
/// the form of the file. Rings may lie across the date line, and one goes round the south pole.
struct WorldMap {
    std::vector<WorldLevel> levels;  ///< the coarsest first

    /// The coarsest level that is no more off than this; the finest if none is.
    const WorldLevel& level(double toleranceDegrees) const;
};

/// An empty map if the bytes are not exactly such a file.
WorldMap decodedWorldMap(QByteArrayView bytes);

/// The map that is part of the program, decoded once.
const WorldMap& worldMap();

}  // namespace veloran
