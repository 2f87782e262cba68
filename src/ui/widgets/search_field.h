#pragma once

#include <QWidget>

class QKeyEvent;
class QLineEdit;

namespace veloran {

class SymbolButton;

/// A line to search with: a glass in front, and a button that clears it while it is not empty.
/// Return in it presses no button of a sheet.
class SearchField : public QWidget {
    Q_OBJECT
  public:
    explicit SearchField(const QString& placeholder, QWidget* parent = nullptr);

    QString text() const;
    void clear();
    /// Takes the keyboard over and adds what was typed elsewhere; a backspace takes a letter away.
    void type(QKeyEvent& event);

  signals:
    void textChanged(const QString& text);
    /// Return, Enter or Down: on to what was found.
    void left();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QLineEdit* line_;
    SymbolButton* clear_;
};

}  // namespace veloran
