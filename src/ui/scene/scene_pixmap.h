#pragma once

#include <QPixmap>
#include <functional>

#include "ui/scene/scene.h"

namespace veloran {

/// What of a picture does not move, painted once and kept until size, scale or theme changes or
/// `invalidate` says that the scene is another one.
class ScenePixmap {
  public:
    /// `ground`: see ScenePainter.
    explicit ScenePixmap(Ink ground = Ink::control) : ground_(ground) {}

    void invalidate() { kept_ = QPixmap(); }
    /// Draws at the painter's origin. `makeScene` is called when nothing fit is kept; a picture of
    /// another size is fit if it may be stretched.
    void draw(QPainter& painter, QSize size, const std::function<scene::Scene()>& makeScene,
              bool mayStretch = false);

  private:
    Ink ground_;
    QPixmap kept_;
    int themeRevision_ = 0;
};

}  // namespace veloran
