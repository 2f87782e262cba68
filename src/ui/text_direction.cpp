#include "ui/text_direction.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>

namespace veloran {

LeftToRight::LeftToRight(QObject* parent) : QObject(parent) {
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    QCoreApplication::instance()->installEventFilter(this);
}

bool LeftToRight::eventFilter(QObject* watched, QEvent* event) {
    const bool hasTurned = event->type() == QEvent::ApplicationLayoutDirectionChange &&
                           QGuiApplication::layoutDirection() != Qt::LeftToRight;
    // Later: the windows are just being told of the other direction.
    if (hasTurned) {
        QMetaObject::invokeMethod(
            this, [] { QGuiApplication::setLayoutDirection(Qt::LeftToRight); },
            Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace veloran
