#pragma once

#include <QWidget>

namespace veloran {

/// A text widget in a rounded box of the text background, with an outline while it has the
/// keyboard. The widget itself should draw no background.
class TextBox : public QWidget {
    Q_OBJECT
  public:
    static constexpr int kPadding = 6;

    enum class Outline { always, whileFocused };

    /// Takes `content` over. Focus on the box is focus on the content.
    TextBox(QWidget* content, Outline outline, QWidget* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QWidget* content_;
    Outline outline_;
};

}  // namespace veloran
