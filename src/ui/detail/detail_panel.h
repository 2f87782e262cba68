#pragma once

#include <QWidget>
#include <memory>

#include "core/app_state.h"

namespace veloran {

/// The operator's console along the bottom of the main window: the pass, what the radio is told,
/// and the link to it.
class DetailPanel : public QWidget {
    Q_OBJECT
  public:
    static constexpr int kHeight = 240;
    static constexpr int kPassWidth = 400;
    static constexpr int kRigWidth = 320;
    static constexpr int kPadding = 10;

    explicit DetailPanel(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

  public slots:
    void refresh();

  signals:
    void refreshed();
};

}  // namespace veloran
