#include "ui/widgets/mini_button.h"

#include <QFontMetrics>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

#include "ui/theme.h"

namespace veloran {

namespace {

constexpr int kPadding = 6;
constexpr int kHeight = 22;

int widthOf(const QString& text, const TextStyle& style) {
    return QFontMetrics(fontOf(style)).horizontalAdvance(text);
}

}  // namespace

MiniButton::MiniButton(Symbol symbol, int symbolSize, const QString& text, const TextStyle& style,
                       int spacing, QWidget* parent)
    : QPushButton(text, parent),
      symbol_(symbol),
      symbolSize_(symbolSize),
      style_(style),
      spacing_(spacing) {
    setFont(fontOf(style));
    setAccessibleName(text);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAutoDefault(false);
}

void MiniButton::setSymbol(Symbol symbol) {
    if (symbol == symbol_) return;
    symbol_ = symbol;
    update();
}

void MiniButton::setRemark(const QString& remark, const TextStyle& style) {
    if (remark == remark_) return;
    remark_ = remark;
    remarkStyle_ = style;
    updateGeometry();
    update();
}

int MiniButton::remarkWidth() const {
    return remark_.isEmpty() ? 0 : spacing_ + widthOf(remark_, remarkStyle_);
}

QSize MiniButton::sizeHint() const {
    return {2 * kPadding + symbolSize_ + spacing_ + widthOf(text(), style_) + remarkWidth(),
            kHeight};
}

void MiniButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);

    const QColor ground = palette().color(QPalette::Button);
    int x = (width() - sizeHint().width()) / 2 + kPadding;
    paintSymbol(painter, QRectF(x, (height() - symbolSize_) / 2.0, symbolSize_, symbolSize_),
                symbol_, Theme::text(style_.ink, style_.opacity, ground));
    x += symbolSize_ + spacing_;
    const auto draw = [&](const QString& text, const TextStyle& style) {
        painter.setFont(fontOf(style));
        painter.setPen(Theme::text(style.ink, style.opacity, ground));
        painter.drawText(QRect(x, 0, width() - x, height()), Qt::AlignLeft | Qt::AlignVCenter,
                         text);
        x += widthOf(text, style) + spacing_;
    };
    draw(text(), style_);
    if (!remark_.isEmpty()) draw(remark_, remarkStyle_);

    if (!hasFocus()) return;
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    focus.rect = style()->subElementRect(QStyle::SE_PushButtonFocusRect, &option, this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
}

}  // namespace veloran
