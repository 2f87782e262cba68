#pragma once

#include <QWidget>
#include <memory>

#include "core/app_state.h"

class QPushButton;

namespace veloran {

class Badge;
class ColorDot;
class ValueLabel;

/// The link to the radio, the start and the end of a session, and its look angles.
class RigColumn : public QWidget {
    Q_OBJECT
  public:
    explicit RigColumn(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

  public slots:
    void refresh();

  private:
    QWidget* makeLink();
    QWidget* makeButtons();
    QWidget* makeSession();

    std::shared_ptr<AppState> state_;
    ColorDot* linkDot_;
    ValueLabel* link_;
    Badge* protocol_;
    ValueLabel* rigStatus_;
    ValueLabel* endpoint_;
    QPushButton* track_;
    QPushButton* stop_;
    QWidget* session_;
    ValueLabel* azimuth_;
    ValueLabel* elevation_;
    ValueLabel* range_;
    ValueLabel* rate_;
    ValueLabel* update_;
};

}  // namespace veloran
