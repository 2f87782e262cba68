#include "ui/widgets/text_box.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "ui/theme.h"

namespace veloran {

namespace {

constexpr int kCornerRadius = 4;

}  // namespace

TextBox::TextBox(QWidget* content, Outline outline, QWidget* parent)
    : QWidget(parent), content_(content), outline_(outline) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    column->addWidget(content);
    setFocusProxy(content);
    content->installEventFilter(this);
}

bool TextBox::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();
    return QWidget::eventFilter(watched, event);
}

void TextBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (content_->hasFocus()) {
        painter.setPen(QPen(Theme::color(Ink::blue), 1));
    } else if (outline_ == Outline::always) {
        painter.setPen(QPen(Theme::color(Ink::gray, 0.3), 0.5));
    }
    painter.setBrush(Theme::color(Ink::control));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kCornerRadius,
                            kCornerRadius);
}

}  // namespace veloran
