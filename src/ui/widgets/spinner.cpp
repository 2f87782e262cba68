#include "ui/widgets/spinner.h"

#include <QPainter>

#include "ui/theme.h"

namespace veloran {

Spinner::Spinner(int diameter, QWidget* parent) : QWidget(parent) {
    setFixedSize(diameter, diameter);
}

void Spinner::paintEvent(QPaintEvent*) {
    constexpr int kSixteenths = 16;  // Qt counts angles in sixteenths of a degree
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Theme::color(Ink::secondary), 1.5, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(rect()).adjusted(1, 1, -1, -1), -step_ * 30 * kSixteenths,
                    270 * kSixteenths);
}

void Spinner::showEvent(QShowEvent*) {
    timer_ = startTimer(80);
}

void Spinner::hideEvent(QHideEvent*) {
    killTimer(timer_);
}

void Spinner::timerEvent(QTimerEvent*) {
    step_ = (step_ + 1) % 12;
    update();
}

}  // namespace veloran
