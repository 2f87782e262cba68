#pragma once

#include <QWidget>
#include <memory>

#include "core/app_state.h"

class QStackedLayout;
class QVBoxLayout;

namespace veloran {

class ColorDot;
class TransponderPicker;
class ValueLabel;

/// The selected pass: its satellite, times, figures and transponder.
class PassColumn : public QWidget {
    Q_OBJECT
  public:
    explicit PassColumn(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

  public slots:
    void refresh();

  private:
    QWidget* makeDetails();
    void addHeader(QVBoxLayout& column);
    void addTimes(QVBoxLayout& column);
    void addFigures(QVBoxLayout& column);
    void display(const PassInfo& pass);

    std::shared_ptr<AppState> state_;
    std::optional<UniqueId> shown_;
    QStackedLayout* pages_;
    ColorDot* dot_;
    ValueLabel* name_;
    ValueLabel* norad_;
    ValueLabel* rise_;
    ValueLabel* peak_;
    ValueLabel* set_;
    ValueLabel* maxElevation_;
    ValueLabel* direction_;
    ValueLabel* duration_;
    TransponderPicker* picker_;
};

}  // namespace veloran
