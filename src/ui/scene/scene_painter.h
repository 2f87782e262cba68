#pragma once

#include <QPainter>

#include "ui/scene/scene.h"

namespace veloran {

/// Draws any scene in the colours of the theme, at the painter's origin. Text and tags are kept
/// legible on `ground`, the colour that they mostly lie on.
class ScenePainter {
  public:
    explicit ScenePainter(QPainter& painter, Ink ground = Ink::control)
        : painter_(painter), ground_(ground) {}

    void draw(const scene::Scene& scene);

  private:
    void operator()(const scene::Disc& disc);
    void operator()(const scene::Ring& ring);
    void operator()(const scene::Line& line);
    void operator()(const scene::Polyline& polyline);
    void operator()(const scene::Polygon& polygon);
    void operator()(const scene::Region& region);
    void operator()(const scene::Text& text);
    void operator()(const scene::Tag& tag);
    void operator()(const scene::Icon& icon);
    void use(const scene::Stroke& stroke);
    void use(const scene::Fill& fill);

    QPainter& painter_;
    Ink ground_;
};

}  // namespace veloran
