#include "ui/widgets/value_label.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <algorithm>

#include "ui/theme.h"

namespace veloran {

namespace {

/// What a screen reader hears: the label's name, if it has one, and its text.
class AccessibleValueLabel final : public QAccessibleWidget {
  public:
    explicit AccessibleValueLabel(ValueLabel* label)
        : QAccessibleWidget(label, QAccessible::StaticText), label_(label) {}

    QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Name) return QAccessibleWidget::text(kind);
        const QString name = label_->accessibleName();
        return name.isEmpty() ? label_->text() : name + ' ' + label_->text();
    }

  private:
    ValueLabel* label_;
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* label = qobject_cast<ValueLabel*>(object);
    return label ? new AccessibleValueLabel(label) : nullptr;
}

}  // namespace

ValueLabel::ValueLabel(const TextStyle& style, const QString& text, QWidget* parent)
    : QWidget(parent), style_(style) {
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setText(text);
}

void ValueLabel::setText(const QString& text) {
    if (text == text_) return;
    const int hintBefore = sizeHint().width();
    text_ = text;
    textWidth_ = widthOf(text);
    if (sizeHint().width() != hintBefore) updateGeometry();
    if (QAccessible::isActive()) {
        QAccessibleEvent event(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
    update();
}

void ValueLabel::setTextStyle(const TextStyle& style) {
    if (style == style_) return;
    style_ = style;
    textWidth_ = widthOf(text_);
    updateGeometry();
    update();
}

void ValueLabel::reserve(const QString& sample) {
    reserved_ = widthOf(sample);
    updateGeometry();
}

void ValueLabel::setWidthRange(int least, int width) {
    reserved_ = width;
    fixedHint_ = true;
    setMinimumWidth(least);
    setMaximumWidth(width);
}

void ValueLabel::setElastic() {
    elastic_ = true;
    updateGeometry();
}

void ValueLabel::setAlignment(Qt::Alignment horizontal) {
    alignment_ = horizontal;
}

void ValueLabel::alignToFirstBaselineOf(const QFont& larger) {
    baselineFont_ = larger;
    updateGeometry();
}

QSize ValueLabel::sizeHint() const {
    const int height = QFontMetrics(baselineFont_.value_or(fontOf(style_))).height();
    const int reserved = reserved_.value_or(0);
    return {fixedHint_ ? reserved : std::max(reserved, textWidth_), height};
}

QSize ValueLabel::minimumSizeHint() const {
    const QSize hint = sizeHint();
    return {elastic_ ? 0 : hint.width(), hint.height()};
}

void ValueLabel::paintEvent(QPaintEvent*) {
    if (text_.isEmpty()) return;
    const FittedText drawn = fitted();
    const int textWidth = QFontMetrics(drawn.font).horizontalAdvance(drawn.text);
    const QFontMetrics lineMetrics(baselineFont_.value_or(fontOf(style_)));
    const int baseline = (height() - lineMetrics.height()) / 2 + lineMetrics.ascent();
    int x = 0;
    if (alignment_ & Qt::AlignRight) x = width() - textWidth;
    if (alignment_ & Qt::AlignHCenter) x = (width() - textWidth) / 2;

    QPainter painter(this);
    painter.setFont(drawn.font);
    painter.setPen(Theme::text(style_.ink, style_.opacity));
    painter.drawText(x, baseline, drawn.text);
}

bool ValueLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !toolTip().isEmpty() || !isCut()) {
        return QWidget::event(event);
    }
    showFullText(*static_cast<QHelpEvent*>(event), this, text_);
    return true;
}

bool ValueLabel::isCut() const {
    return fitted().text != text_;
}

FittedText ValueLabel::fitted() const {
    return fittedText(fontOf(style_), text_, width(), kSmallestPixels, cutAt_);
}

int ValueLabel::widthOf(const QString& text) const {
    return QFontMetrics(fontOf(style_)).horizontalAdvance(readable(text));
}

}  // namespace veloran
