#pragma once

#include <QPainter>

#include "ui/scene/scene.h"

namespace veloran {

/// Draws any scene in the colours of the theme, at the painter's origin.
class ScenePainter {
  public:
    explicit ScenePainter(QPainter& painter) : painter_(painter) {}

    void draw(const scene::Scene& scene);

  private:
    void operator()(const scene::Disc& disc);
    void operator()(const scene::Ring& ring);
    void operator()(const scene::Line& line);
    void operator()(const scene::Polyline& polyline);
    void use(const scene::Stroke& stroke);

    QPainter& painter_;
};

}  // namespace veloran
