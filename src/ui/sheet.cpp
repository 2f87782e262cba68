#include "ui/sheet.h"

#include <QPushButton>
#include <QScreen>

#include "ui/widgets/fitted_text.h"

namespace veloran {

namespace {

/// What the desktop draws around a window, as far as it can be told before there is one: as around
/// the window below.
QSize frameOf(const QWidget* window) {
    constexpr QSize kUsual{10, 40};
    const QSize known = window ? window->frameGeometry().size() - window->size() : QSize();
    return known.isEmpty() ? kUsual : known;
}

}  // namespace

Sheet::Sheet(const QString& title, QWidget* window) : QDialog(window) {
    setWindowTitle(readable(title));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
}

void Sheet::present() {
    const QWidget* window = parentWidget() ? parentWidget()->window() : nullptr;
    // Not adjustSize(), which leaves a third of the screen free.
    QSize wanted = sizeHint();
    if (const QScreen* display = window ? window->screen() : screen()) {
        wanted = wanted.boundedTo(display->availableSize() - frameOf(window));
    }
    resize(wanted);
    makeDefaultButtonKnown();
    open();
}

/// A dialog learns of its default button only from one that is set or moved within it, and takes
/// another when it knows of none.
void Sheet::makeDefaultButtonKnown() {
    for (auto* button : findChildren<QPushButton*>()) {
        if (!button->isDefault()) continue;
        button->setDefault(false);
        button->setDefault(true);
        return;
    }
}

}  // namespace veloran
