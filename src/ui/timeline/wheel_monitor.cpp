#include "ui/timeline/wheel_monitor.h"

#include <QApplication>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

namespace veloran {

WheelMonitor::WheelMonitor(QWidget& area) : QObject(&area), area_(area) {}

void WheelMonitor::start() {
    qApp->installEventFilter(this);
}

void WheelMonitor::stop() {
    qApp->removeEventFilter(this);
}

double WheelMonitor::scrollingDeltaY(const QWheelEvent& event) {
    constexpr double kUnitsPerLine = 40;  // a notch of 120 units is three lines
    if (!event.pixelDelta().isNull()) return event.pixelDelta().y();
    return event.angleDelta().y() / kUnitsPerLine;
}

bool WheelMonitor::eventFilter(QObject* watched, QEvent* event) {
    // The window hears of each turn once, before its widgets do, one after the other.
    if (event->type() != QEvent::Wheel || watched != area_.window()->windowHandle()) return false;
    const auto& wheel = *static_cast<QWheelEvent*>(event);
    const QPointF at = area_.mapFromGlobal(wheel.globalPosition());
    if (QRectF(area_.rect()).contains(at)) emit scrolled(scrollingDeltaY(wheel));
    return false;
}

}  // namespace veloran
