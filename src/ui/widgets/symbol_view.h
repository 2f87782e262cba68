#pragma once

#include <QWidget>

#include "ui/symbol_icon.h"

namespace veloran {

/// One of our symbols as a part of a row.
class SymbolView : public QWidget {
    Q_OBJECT
  public:
    SymbolView(Symbol symbol, int size, Ink ink, QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Symbol symbol_;
    Ink ink_;
};

}  // namespace veloran
