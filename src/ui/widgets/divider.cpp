#include "ui/widgets/divider.h"

#include <QPainter>

#include "ui/theme.h"

namespace veloran {

Divider::Divider(Qt::Orientation orientation, QWidget* parent) : QWidget(parent) {
    if (orientation == Qt::Horizontal) {
        setFixedHeight(1);
    } else {
        setFixedWidth(1);
    }
}

void Divider::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Theme::color(Ink::separator));
}

}  // namespace veloran
