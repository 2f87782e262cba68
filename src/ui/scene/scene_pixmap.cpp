#include "ui/scene/scene_pixmap.h"

#include <QPainter>

#include "ui/scene/scene_painter.h"
#include "ui/theme.h"

namespace veloran {

void ScenePixmap::draw(QPainter& painter, QSize size,
                       const std::function<scene::Scene()>& makeScene) {
    const qreal scale = painter.device()->devicePixelRatioF();
    const QSize pixels(qRound(size.width() * scale), qRound(size.height() * scale));
    if (kept_.size() != pixels || kept_.devicePixelRatio() != scale ||
        themeRevision_ != Theme::revision()) {
        kept_ = QPixmap(pixels);
        kept_.setDevicePixelRatio(scale);
        kept_.fill(Qt::transparent);
        themeRevision_ = Theme::revision();
        QPainter onto(&kept_);
        ScenePainter(onto, ground_).draw(makeScene());
    }
    painter.drawPixmap(0, 0, kept_);
}

}  // namespace veloran
