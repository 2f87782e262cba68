#include "ui/widgets/symbol_button.h"

namespace veloran {

SymbolButton::SymbolButton(Symbol symbol, int size, const QString& help, Ink ink, QWidget* parent)
    : QToolButton(parent) {
    setIcon(symbolIcon(symbol, ink));
    setIconSize({size, size});
    setAutoRaise(true);
    setFocusPolicy(Qt::StrongFocus);
    setToolTip(help);
    setAccessibleName(help);
}

}  // namespace veloran
