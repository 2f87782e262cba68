#include "ui/widgets/color_dot.h"

#include <QPainter>

#include "ui/theme.h"

namespace veloran {

ColorDot::ColorDot(int diameter, QWidget* parent) : QWidget(parent) {
    setFixedSize(diameter, diameter);
}

void ColorDot::setInk(Ink ink) {
    if (ink == ink_ && !color_.isValid()) return;
    ink_ = ink;
    color_ = QColor();
    update();
}

void ColorDot::setColor(const QColor& color) {
    if (color == color_) return;
    color_ = color;
    update();
}

QColor ColorDot::color() const {
    return color_.isValid() ? color_ : Theme::color(ink_);
}

void ColorDot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color());
    painter.drawEllipse(rect());
}

}  // namespace veloran
