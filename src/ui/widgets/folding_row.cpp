#include "ui/widgets/folding_row.h"

#include <QEvent>
#include <algorithm>

namespace veloran {

FoldingRow::FoldingRow(int spacing, int foldedSpacing, QWidget* parent)
    : QWidget(parent),
      spacing_(spacing),
      foldedSpacing_(foldedSpacing),
      groups_(new QBoxLayout(QBoxLayout::LeftToRight, this)),
      first_(new QHBoxLayout),
      second_(new QHBoxLayout) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    groups_->setContentsMargins(0, 0, 0, 0);
    groups_->setSpacing(spacing);
    first_->setSpacing(spacing);
    second_->setSpacing(spacing);
    groups_->addLayout(first_);
    groups_->addLayout(second_, 1);
}

bool FoldingRow::isFolded() const {
    return groups_->direction() == QBoxLayout::TopToBottom;
}

QSize FoldingRow::minimumSizeHint() const {
    return {std::max(first_->minimumSize().width(), second_->minimumSize().width()),
            groups_->minimumSize().height()};
}

void FoldingRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fold();
}

bool FoldingRow::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) fold();
    return QWidget::event(event);
}

void FoldingRow::fold() {
    const int natural = first_->sizeHint().width() + spacing_ + second_->sizeHint().width();
    const bool folded = natural > width();
    if (folded == isFolded()) return;
    groups_->setDirection(folded ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    groups_->setSpacing(folded ? foldedSpacing_ : spacing_);
    updateGeometry();
}

}  // namespace veloran
