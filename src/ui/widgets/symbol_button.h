#pragma once

#include <QToolButton>

#include "ui/symbol_icon.h"

namespace veloran {

/// A button without a border that shows one of our symbols; `help` is its tooltip and its name for
/// a screen reader.
class SymbolButton : public QToolButton {
    Q_OBJECT
  public:
    SymbolButton(Symbol symbol, int size, const QString& help, Ink ink = Ink::primary,
                 QWidget* parent = nullptr);
};

}  // namespace veloran
