#include "ui/widgets/bump_button.h"

#include <QFontMetrics>
#include <algorithm>

#include "ui/theme.h"

namespace veloran {

BumpButton::BumpButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
    setFont(Theme::mono(14));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAutoDefault(false);
}

QSize BumpButton::sizeHint() const {
    constexpr int kPadding = 3;
    const int width = QFontMetrics(font()).horizontalAdvance(text()) + 2 * kPadding;
    return {std::max(kLeastWidth, width), kHeight};
}

}  // namespace veloran
