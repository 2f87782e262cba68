#pragma once

#include <QBoxLayout>
#include <QWidget>
#include <array>

namespace veloran {

/// Groups of controls side by side on one line; a group that does not fit begins the next one.
class FoldingRow : public QWidget {
    Q_OBJECT
  public:
    FoldingRow(int spacing, int foldedSpacing, QWidget* parent = nullptr);

    /// Where to put the controls of the groups.
    QHBoxLayout* first() const { return groups_[0].controls; }
    QHBoxLayout* second() const { return groups_[1].controls; }
    QHBoxLayout* third() const { return groups_[2].controls; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

  private:
    struct Group {
        QWidget* area;
        QHBoxLayout* controls;
        bool isEmpty() const { return controls->isEmpty(); }
    };

    void fold();

    int spacing_;
    int foldedSpacing_;
    int height_ = 0;
    std::array<Group, 3> groups_;
};

}  // namespace veloran
