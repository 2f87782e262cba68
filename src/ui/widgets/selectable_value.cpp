#include "ui/widgets/selectable_value.h"

#include <QEvent>
#include <QFontMetrics>
#include <algorithm>

#include "ui/q_text.h"
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
    setFont(fontOf(style));
    setFixedHeight(QFontMetrics(font()).height());
    fitWidth(sample);
    applyColors();
}

void SelectableValue::setValue(std::string_view utf8) {
    const QString value = qText(utf8);
    if (value == text()) return;
    const auto before = static_cast<int>(text().size());
    const auto size = static_cast<int>(value.size());
    const int cursor = cursorPosition();
    // A selection lies between the cursor and where it was begun, on either side.
    const int anchor = cursor == selectionStart() ? selectionEnd() : selectionStart();
    const bool all = selectionLength() == before;
    const auto moved = [&](int position) {
        return all && position == before ? size : std::min(position, size);
    };
    fitWidth(value);
    setText(value);
    if (anchor < 0 || moved(anchor) == moved(cursor)) {
        setCursorPosition(std::min(cursor, size));
    } else {
        setSelection(moved(anchor), moved(cursor) - moved(anchor));
    }
}

void SelectableValue::setElastic() {
    elastic_ = true;
    setMinimumWidth(0);
    setMaximumWidth(QWIDGETSIZE_MAX);
}

void SelectableValue::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) applyColors();
}

void SelectableValue::applyColors() {
    QPalette colors = palette();
    colors.setColor(QPalette::Text, Theme::text(style_.ink, style_.opacity));
    colors.setColor(QPalette::Base, Qt::transparent);
    setPalette(colors);
}

void SelectableValue::fitWidth(const QString& text) {
    if (elastic_) return;
    const int needed = QFontMetrics(font()).horizontalAdvance(text) + kInnerMargins;
    if (needed > minimumWidth()) setFixedWidth(needed);
}

}  // namespace veloran
