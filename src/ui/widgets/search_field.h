#pragma once

#include <QWidget>

class QLineEdit;

namespace veloran {

class SymbolButton;

/// A line to search with: a glass in front, and a button that clears it while it is not empty.
class SearchField : public QWidget {
    Q_OBJECT
  public:
    explicit SearchField(const QString& placeholder, QWidget* parent = nullptr);

    QString text() const;
    void clear();

  signals:
    void textChanged(const QString& text);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QLineEdit* line_;
    SymbolButton* clear_;
};

}  // namespace veloran
