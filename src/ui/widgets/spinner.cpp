#include "ui/widgets/spinner.h"

#include <QPainter>

#include "ui/theme.h"

namespace veloran {

namespace {

constexpr double kStepSeconds = 0.08;
constexpr int kSteps = 12;  // of a turn

}  // namespace

Spinner::Spinner(MainLoop& loop, int diameter, QWidget* parent)
    : QWidget(parent), timer_(loop, kStepSeconds) {
    setFixedSize(diameter, diameter);
    connect(&timer_, &LoopTimer::timeout, this, &Spinner::turn);
}

void Spinner::paintEvent(QPaintEvent*) {
    constexpr int kSixteenths = 16;  // Qt counts angles in sixteenths of a degree
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Theme::color(Ink::secondary), 1.5, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(rect()).adjusted(1, 1, -1, -1), -step_ * 360 / kSteps * kSixteenths,
                    270 * kSixteenths);
}

void Spinner::showEvent(QShowEvent*) {
    timer_.start();
}

void Spinner::hideEvent(QHideEvent*) {
    timer_.stop();
}

void Spinner::turn() {
    step_ = (step_ + 1) % kSteps;
    update();
}

}  // namespace veloran
