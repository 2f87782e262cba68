#include "ui/widgets/selectable_value.h"

#include <QEvent>
#include <QFontMetrics>

#include "ui/theme.h"

namespace veloran {

namespace {
// What a line edit adds left and right of its text, and its cursor.
constexpr int kInnerMargins = 6;
}  // namespace

SelectableValue::SelectableValue(const TextStyle& style, const QString& sample, QWidget* parent)
    : QLineEdit(parent), style_(style) {
    setReadOnly(true);
    setFrame(false);
    setTextMargins(-2, 0, 0, 0);
    setFont(Theme::mono(style.pixels, style.weight));
    setFixedHeight(QFontMetrics(font()).height());
    fitWidth(sample);
    applyColors();
}

void SelectableValue::setValue(std::string_view utf8) {
    const QString value = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    if (value == text()) return;
    const auto all = static_cast<int>(text().size());
    const int start = selectionStart();
    const int length = selectionLength();
    const bool backwards = start >= 0 && cursorPosition() == start;
    fitWidth(value);
    setText(value);
    setCursorPosition(0);
    if (start < 0) return;
    const auto size = static_cast<int>(value.size());
    const int from = length == all ? 0 : std::min(start, size);
    const int to = length == all ? size : std::min(start + length, size);
    setSelection(backwards ? to : from, backwards ? from - to : to - from);
}

void SelectableValue::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) applyColors();
}

void SelectableValue::applyColors() {
    QPalette colors = palette();
    colors.setColor(QPalette::Text, Theme::text(style_.ink, style_.opacity));
    colors.setColor(QPalette::Base, Qt::transparent);
    setPalette(colors);
}

void SelectableValue::fitWidth(const QString& text) {
    const int needed = QFontMetrics(font()).horizontalAdvance(text) + kInnerMargins;
    if (needed > minimumWidth()) setFixedWidth(needed);
}

}  // namespace veloran
