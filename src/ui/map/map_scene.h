#pragma once

#include "ui/map/map_layers.h"
#include "ui/map/map_projection.h"

namespace veloran {

/// The layers as this projection shows them; what it hides is left out.
scene::Scene mapScene(const MapLayers& layers, const MapProjection& projection);

}  // namespace veloran
