#pragma once

#include <QAbstractButton>
#include <QButtonGroup>
#include <QStringList>
#include <QWidget>

namespace veloran {

/// One of a few choices as a row of buttons that looks like one control. The chosen button takes
/// the focus; the arrow keys choose its neighbours.
class SegmentedPicker : public QWidget {
    Q_OBJECT
  public:
    explicit SegmentedPicker(const QStringList& labels, QWidget* parent = nullptr);

    int chosen() const { return group_.checkedId(); }
    /// Tells nobody.
    void choose(int index);
    QAbstractButton& segment(int index) { return *group_.button(index); }

  signals:
    /// By the user.
    void picked(int index);

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void pick(int index);
    void offerChosenToTab();

    QButtonGroup group_;
};

}  // namespace veloran
