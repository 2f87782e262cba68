#include "ui/map/kept_base_map.h"

#include "ui/map/base_map.h"
#include "ui/theme.h"

namespace veloran {

const QPixmap& KeptBaseMap::pixmap(const View& view, const QImage& earth, bool isMoving,
                                   bool mayStretch, const Clock& clock) {
    const bool isOfTheme = !kept_.isNull() && themeRevision_ == Theme::revision();
    if (mayStretch && isOfTheme && view.style == view_.style) return kept_;
    const bool isKept = isOfTheme && view == view_;
    if (isKept && (isMoving || !isCoarse_)) return kept_;

    isCoarse_ = isMoving && fullSeconds_ > kSlow;
    QSize size = view.size;
    double scale = view.scale;
    if (isCoarse_ && scale > 1) {
        scale = 1;
    } else if (isCoarse_) {
        size = (size / 2).expandedTo(QSize(1, 1));  // a camera shows the same at every size
    }
    const Instant before = clock.now();
    QImage picture = baseMap(view.style, view.camera, size, scale, earth, baseMapColors());
    if (!isCoarse_) fullSeconds_ = clock.now() - before;
    picture.setDevicePixelRatio(1);  // drawn into the view's rectangle, whatever its scale
    kept_ = QPixmap::fromImage(std::move(picture));
    view_ = view;
    themeRevision_ = Theme::revision();
    ++drawings_;
    return kept_;
}

}  // namespace veloran
