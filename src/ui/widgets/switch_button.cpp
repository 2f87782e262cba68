#include "ui/widgets/switch_button.h"

#include <QPainter>

#include "ui/theme.h"

namespace veloran {

namespace {

constexpr int kWidth = 26;
constexpr int kHeight = 14;
constexpr int kFocusRoom = 2;

}  // namespace

SwitchButton::SwitchButton(QWidget* parent) : QAbstractButton(parent) {
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize SwitchButton::sizeHint() const {
    return pictureSize() + QSize(2 * kFocusRoom, 2 * kFocusRoom);
}

QSize SwitchButton::pictureSize() {
    return {kWidth, kHeight};
}

void SwitchButton::paintPicture(QPainter& painter, const QRect& area, bool on, bool enabled) {
    QRectF track{QPointF(), QSizeF(pictureSize())};
    track.moveCenter(QRectF(area).center());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(enabled ? 1 : 0.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(on ? Theme::color(Ink::green) : Theme::color(Ink::gray, 0.55));
    painter.drawRoundedRect(track, kHeight / 2.0, kHeight / 2.0);
    const double radius = kHeight / 2.0 - 2;
    const double x = on ? track.right() - 2 - radius : track.left() + 2 + radius;
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(x, track.center().y()), radius, radius);
    painter.restore();
}

void SwitchButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintPicture(painter, rect(), isChecked(), isEnabled());
    if (!hasFocus()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Theme::color(Ink::blue), 1.5));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kHeight / 2.0 + 1,
                            kHeight / 2.0 + 1);
}

}  // namespace veloran
