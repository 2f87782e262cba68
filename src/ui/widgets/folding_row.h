#pragma once

#include <QBoxLayout>
#include <QWidget>

namespace veloran {

/// Two groups of controls side by side where they fit, one above the other where they do not.
class FoldingRow : public QWidget {
    Q_OBJECT
  public:
    FoldingRow(int spacing, int foldedSpacing, QWidget* parent = nullptr);

    /// Where to put the controls of the two groups.
    QHBoxLayout* first() const { return first_; }
    QHBoxLayout* second() const { return second_; }
    bool isFolded() const;

    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void fold();

    int spacing_;
    int foldedSpacing_;
    QBoxLayout* groups_;
    QHBoxLayout* first_;
    QHBoxLayout* second_;
};

}  // namespace veloran
