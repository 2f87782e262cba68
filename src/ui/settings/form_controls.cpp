#include "ui/settings/form_controls.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "ui/theme.h"
#include "ui/widgets/one_line.h"
#include "ui/widgets/switch_button.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

constexpr int kWrap = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;

void applyName(QWidget& control, const ControlName& name) {
    control.setObjectName(name.object);
    control.setAccessibleName(name.spoken);
}

/// A field of a fixed width asks for room all the same.
bool takesRoom(const QWidget& part) {
    return part.sizePolicy().expandingDirections() & Qt::Horizontal &&
           part.maximumWidth() == QWIDGETSIZE_MAX;
}

/// Keeps Return from the default button of the sheet.
class OnReturn final : public QObject {
  public:
    OnReturn(QLineEdit& field, std::function<void()> action)
        : QObject(&field), action_(std::move(action)) {
        field.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
        const auto& press = *static_cast<QKeyEvent*>(event);
        if (press.key() != Qt::Key_Return && press.key() != Qt::Key_Enter) return false;
        if (!press.isAutoRepeat()) action_();
        return true;
    }

  private:
    std::function<void()> action_;
};

QLabel* makeCaption(const QString& text, int pixels) {
    auto* caption = new QLabel(text);
    caption->setTextFormat(Qt::PlainText);
    caption->setFont(Theme::face(pixels));
    caption->setWordWrap(true);
    return caption;
}

}  // namespace

QLineEdit* makeField(const ControlName& name, const QString& placeholder, int width, int pixels) {
    auto* field = new QLineEdit;
    applyName(*field, name);
    field->setPlaceholderText(placeholder);
    field->setFont(Theme::mono(pixels));
    keepToOneLine(*field);
    if (width > 0) field->setFixedWidth(width);
    return field;
}

void actOnReturn(QLineEdit& field, std::function<void()> action) {
    new OnReturn(field, std::move(action));
}

QPushButton* makeButton(const ControlName& name, const QString& text, int pixels) {
    constexpr int kRoom = 10;
    auto* button = new QPushButton(text);
    applyName(*button, name);
    button->setFont(Theme::face(pixels));
    button->setAutoDefault(false);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    const QSize label = button->fontMetrics().size(0, text);
    button->setFixedSize(label.width() + 2 * kRoom, label.height() + kRoom);
    return button;
}

QLabel* makeNote(const QString& text, int pixels) {
    auto* note = makeCaption(text, pixels);
    note->setForegroundRole(QPalette::PlaceholderText);  // the palette's text of less weight
    return note;
}

QWidget* inRow(std::initializer_list<QWidget*> parts, int spacing) {
    auto* area = new QWidget;
    auto* row = new QHBoxLayout(area);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing);
    bool stretches = false;
    for (QWidget* part : parts) {
        row->addWidget(part);
        stretches = stretches || takesRoom(*part);
    }
    if (!stretches) row->addStretch();
    return area;
}

FormSlider::FormSlider(const ControlName& name, int lowest, int highest) : QSlider(Qt::Horizontal) {
    applyName(*this, name);
    setRange(lowest, highest);
    setFocusPolicy(Qt::StrongFocus);
}

void FormSlider::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QSlider::wheelEvent(event);
    } else {
        event->ignore();
    }
}

WrappingRadio::WrappingRadio(const QString& objectName, const QString& text) : QRadioButton(text) {
    setObjectName(objectName);
    setAccessibleName(text);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

int WrappingRadio::textLeft() const {
    return style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, this) +
           style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing, nullptr, this);
}

QRect WrappingRadio::textRect(int width) const {
    const int left = textLeft();
    const QRect room(left, 1, std::max(1, width - left - 2), 10000);
    return fontMetrics().boundingRect(room, kWrap, text());
}

int WrappingRadio::heightForWidth(int width) const {
    const int indicator = style()->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, nullptr, this);
    return std::max(indicator, textRect(width).height()) + 2;
}

QSize WrappingRadio::sizeHint() const {
    const int width = textLeft() + fontMetrics().horizontalAdvance(text()) + 2;
    return {width, heightForWidth(width)};
}

QSize WrappingRadio::minimumSizeHint() const {
    constexpr int kLeastWidth = 120;
    return {kLeastWidth, heightForWidth(std::max(kLeastWidth, width()))};
}

/// The ring of the style is hard to see on a dark ground.
void WrappingRadio::drawIndicator(QPainter& painter) const {
    constexpr double kRadius = 6.5;
    constexpr double kDotRadius = 3.5;
    const QPointF center(kRadius + 1, fontMetrics().height() / 2.0 + 1);
    painter.setPen(QPen(Theme::color(isChecked() ? Ink::blue : Ink::secondary), 1));
    painter.setBrush(Theme::color(isDown() ? Ink::separator : Ink::control));
    painter.drawEllipse(center, kRadius, kRadius);
    if (!isChecked()) return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::color(Ink::blue));
    painter.drawEllipse(center, kDotRadius, kDotRadius);
}

void WrappingRadio::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawIndicator(painter);
    painter.setRenderHint(QPainter::Antialiasing, false);

    QRect words = textRect(width());
    painter.drawItemText(words, kWrap, palette(), isEnabled(), text(), foregroundRole());
    if (!hasFocus()) return;
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    focus.rect = words.adjusted(-2, -1, 2, 1);
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}

SwitchRow::SwitchRow(const ControlName& name, int pixels)
    : SwitchRow(name, makeCaption(name.spoken, pixels)) {}

SwitchRow::SwitchRow(const ControlName& name, QWidget* caption) : button_(new SwitchButton) {
    applyName(*button_, name);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(button_);
    row->addWidget(caption, 1);
    connect(button_, &SwitchButton::toggled, this, &SwitchRow::switched);
}

void SwitchRow::display(bool on) {
    if (button_->isChecked() == on) return;
    const QSignalBlocker silent(button_);
    button_->setChecked(on);
}

void SwitchRow::setDetail(const QString& text) {
    if (!detail_) {
        if (text.isEmpty()) return;
        detail_ = new ValueLabel({10, QFont::Normal, Ink::secondary, 1, false});
        detail_->setObjectName(button_->objectName() + " detail");
        layout()->addWidget(detail_);
    }
    detail_->setText(text);
    button_->setAccessibleDescription(text);
}

void SwitchRow::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->pos())) button_->click();
}

}  // namespace veloran
