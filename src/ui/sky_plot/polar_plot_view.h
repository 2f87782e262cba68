#pragma once

#include <QWidget>
#include <memory>

#include "core/app_state.h"
#include "ui/second_timer.h"

namespace veloran {

class DiskView;
class LookAngleTable;

/// The sky above the observer, and a table of the pass and the look angles beside it.
class PolarPlotView : public QWidget {
    Q_OBJECT
  public:
    explicit PolarPlotView(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

    QSize sizeHint() const override { return {404, 204}; }
    QSize minimumSizeHint() const override;

  public slots:
    void refresh();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void arrange();
    void showSecond();

    DiskView* disk_;
    LookAngleTable* table_;
    SecondTimer everySecond_;
};

}  // namespace veloran
