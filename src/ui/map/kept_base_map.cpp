#include "ui/map/kept_base_map.h"

#include <algorithm>

#include "ui/map/base_map.h"
#include "ui/theme.h"

namespace veloran {

const QPixmap& KeptBaseMap::pixmap(const View& view, const QImage& earth, bool isMoving) {
    const bool isKept = !kept_.isNull() && view == view_ && themeRevision_ == Theme::revision();
    if (isKept && (isMoving || !isCoarse_)) return kept_;

    isCoarse_ = isMoving && fullMilliseconds_ > kSlowMilliseconds;
    const double scale = isCoarse_ ? std::max(view.scale / 2, 0.5) : view.scale;
    QElapsedTimer taken;
    taken.start();
    QImage picture = baseMap(view.style, view.camera, view.size, scale, earth, baseMapColors());
    if (!isCoarse_) fullMilliseconds_ = taken.elapsed();
    kept_ = QPixmap::fromImage(std::move(picture));
    view_ = view;
    themeRevision_ = Theme::revision();
    ++drawings_;
    return kept_;
}

}  // namespace veloran
