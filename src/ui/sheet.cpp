#include "ui/sheet.h"

#include <QScreen>

namespace veloran {

Sheet::Sheet(const QString& title, QWidget* window) : QDialog(window) {
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
}

void Sheet::present() {
    adjustSize();
    if (const QScreen* display = parentWidget() ? parentWidget()->screen() : screen()) {
        resize(size().boundedTo(display->availableSize()));
    }
    open();
}

}  // namespace veloran
