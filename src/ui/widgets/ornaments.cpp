#include "ui/widgets/ornaments.h"

#include <QFontMetrics>
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

Badge::Badge(const BadgeStyle& style, QWidget* parent) : QWidget(parent), style_(style) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Badge::display(const QString& text, Ink ink) {
    if (text == text_ && ink == ink_) return;
    if (text != text_) updateGeometry();
    text_ = text;
    ink_ = ink;
    setAccessibleName(text);
    update();
}

QSize Badge::sizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text_) + 2 * style_.horizontalPadding, metrics.height() + 2};
}

void Badge::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Theme::color(ink_, style_.outlineOpacity), 0.5));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), style_.cornerRadius,
                            style_.cornerRadius);
    painter.setFont(font());
    painter.setPen(Theme::text(ink_));
    painter.drawText(rect(), Qt::AlignCenter, text_);
}

QFont Badge::font() const {
    return Theme::mono(style_.pixels, QFont::Bold);
}

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
