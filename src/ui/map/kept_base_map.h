#pragma once

#include <QImage>
#include <QPixmap>

#include "platform/clock.h"
#include "ui/map/map_camera.h"

namespace veloran {

/// The picture of the world below the layers, drawn anew only when style, camera, size, scale or
/// theme changes.
class KeptBaseMap {
  public:
    struct View {
        MapStyle style = MapStyle::standard;
        MapCamera camera;
        QSize size;
        double scale = 1;  ///< device pixels a logical pixel
        bool operator==(const View&) const = default;
    };

    /// A frame of a moving picture may be coarser when whole ones take too long. The picture may be
    /// of another size than the view, to be stretched, if `mayStretch`.
    const QPixmap& pixmap(const View& view, const QImage& earth, bool isMoving, bool mayStretch,
                          const Clock& clock);
    void invalidate() { kept_ = QPixmap(); }
    int drawings() const { return drawings_; }

  private:
    static constexpr double kSlow = 0.03;  // seconds

    QPixmap kept_;
    View view_;
    bool isCoarse_ = false;
    int themeRevision_ = 0;
    int drawings_ = 0;
    double fullSeconds_ = 0;  // what the last one at full scale took
};

}  // namespace veloran
