#pragma once

#include <QLineEdit>
#include <string_view>

#include "ui/widgets/text_style.h"

namespace veloran {

/// A number that the user may select and copy, by mouse, keyboard and context menu, while it
/// changes: an update keeps the cursor and what is selected, also in the middle of a drag, and
/// "all" stays all.
class SelectableValue : public QLineEdit {
    Q_OBJECT
  public:
    /// Wide enough for `sample`.
    SelectableValue(const TextStyle& style, const QString& sample, QWidget* parent = nullptr);

    void setValue(std::string_view utf8);
    /// Takes the width that the layout gives; a longer value moves below the cursor.
    void setElastic();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void applyColors();
    void fitWidth(const QString& text);

    TextStyle style_;
    bool elastic_ = false;
};

}  // namespace veloran
