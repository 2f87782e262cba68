#include "ui/scene/scene_pixmap.h"

#include <QPainter>

#include "ui/scene/scene_painter.h"
#include "ui/theme.h"

namespace veloran {

void ScenePixmap::draw(QPainter& painter, QSize size,
                       const std::function<scene::Scene()>& makeScene, bool mayStretch) {
    const qreal scale = painter.device()->devicePixelRatioF();
    const QSize pixels(qRound(size.width() * scale), qRound(size.height() * scale));
    const bool isFit =
        !kept_.isNull() && kept_.devicePixelRatio() == scale && themeRevision_ == Theme::revision();
    if (!isFit || (kept_.size() != pixels && !mayStretch)) {
        kept_ = QPixmap(pixels);
        kept_.setDevicePixelRatio(scale);
        kept_.fill(Qt::transparent);
        themeRevision_ = Theme::revision();
        QPainter onto(&kept_);
        ScenePainter(onto, ground_).draw(makeScene());
    }
    if (kept_.size() == pixels) return painter.drawPixmap(0, 0, kept_);
    painter.drawPixmap(QRect(QPoint(), size), kept_);
}

}  // namespace veloran
