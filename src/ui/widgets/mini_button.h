#pragma once

#include <QPushButton>

#include "ui/symbol_icon.h"
#include "ui/widgets/text_style.h"

namespace veloran {

/// A small bordered button: a symbol, a text, and perhaps a second text of less weight.
class MiniButton : public QPushButton {
    Q_OBJECT
  public:
    /// `text` is the name of the button for a screen reader too.
    MiniButton(Symbol symbol, int symbolSize, const QString& text, const TextStyle& style,
               int spacing, QWidget* parent = nullptr);

    void setSymbol(Symbol symbol);
    Symbol symbol() const { return symbol_; }
    void setRemark(const QString& remark, const TextStyle& style);
    const QString& remark() const { return remark_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    int remarkWidth() const;

    Symbol symbol_;
    int symbolSize_;
    TextStyle style_;
    int spacing_;
    QString remark_;
    TextStyle remarkStyle_;
};

}  // namespace veloran
