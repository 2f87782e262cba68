#include "ui/widgets/symbol_view.h"

#include <QPainter>

namespace veloran {

SymbolView::SymbolView(Symbol symbol, int size, Ink ink, QWidget* parent)
    : QWidget(parent), symbol_(symbol), ink_(ink) {
    setFixedSize(size, size);
}

void SymbolView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    symbolIcon(symbol_, ink_).paint(&painter, rect());
}

}  // namespace veloran
