#include "ui/sheet.h"

#include <QPushButton>
#include <QScreen>

#include "ui/widgets/fitted_text.h"

namespace veloran {

Sheet::Sheet(const QString& title, QWidget* window) : QDialog(window) {
    setWindowTitle(readable(title));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
}

void Sheet::present() {
    // Not adjustSize(), which leaves a third of the screen free.
    QSize wanted = sizeHint();
    if (const QScreen* display = parentWidget() ? parentWidget()->screen() : screen()) {
        wanted = wanted.boundedTo(display->availableSize());
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
