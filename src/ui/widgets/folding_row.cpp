#include "ui/widgets/folding_row.h"

#include <QEvent>
#include <algorithm>

namespace veloran {

FoldingRow::FoldingRow(int spacing, int foldedSpacing, QWidget* parent)
    : QWidget(parent), spacing_(spacing), foldedSpacing_(foldedSpacing) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    for (Group& group : groups_) {
        group.area = new QWidget(this);
        group.controls = new QHBoxLayout(group.area);
        group.controls->setContentsMargins(0, 0, 0, 0);
        group.controls->setSpacing(spacing);
    }
}

QSize FoldingRow::sizeHint() const {
    int width = 0;
    int height = 0;
    for (const Group& group : groups_) {
        if (group.isEmpty()) continue;
        const QSize hint = group.controls->sizeHint();
        width += (width > 0 ? spacing_ : 0) + hint.width();
        height = std::max(height, hint.height());
    }
    return {width, std::max(height, height_)};
}

QSize FoldingRow::minimumSizeHint() const {
    int width = 0;
    for (const Group& group : groups_) {
        if (!group.isEmpty()) width = std::max(width, group.controls->minimumSize().width());
    }
    return {width, sizeHint().height()};
}

void FoldingRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fold();
}

bool FoldingRow::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        fold();
        updateGeometry();
    }
    return QWidget::event(event);
}

void FoldingRow::fold() {
    int x = 0;
    int top = 0;
    int bottom = 0;
    for (const Group& group : groups_) {
        if (group.isEmpty()) continue;
        const QSize hint = group.controls->sizeHint();
        if (x > 0 && x + spacing_ + hint.width() > width()) {
            x = 0;
            top = bottom + foldedSpacing_;
        } else if (x > 0) {
            x += spacing_;
        }
        group.area->setGeometry(x, top, std::min(hint.width(), width() - x), hint.height());
        x += hint.width();
        bottom = std::max(bottom, top + hint.height());
    }
    if (bottom == height_) return;
    height_ = bottom;
    updateGeometry();
}

}  // namespace veloran
