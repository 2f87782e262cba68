#pragma once

#include <QWidget>
#include <memory>

#include "core/app_state.h"

namespace veloran {

class StateRefresher;

/// The root of the main window: title bar, the panes, and the detail panel. When it is first on
/// screen it sets the timeline and starts the load, so that the window never waits for data.
class ContentView : public QWidget {
    Q_OBJECT
  public:
    ContentView(std::shared_ptr<AppState> state, const StateRefresher& refresher,
                QWidget* parent = nullptr);

  signals:
    /// The window to choose satellites in is wanted.
    void browserRequested();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QWidget* makePanes(const StateRefresher& refresher);
    QWidget* makeLeftPane(const StateRefresher& refresher);
    QWidget* makeRightPane(const StateRefresher& refresher);
    void firstAppearance();
    void keepSecondsBehindTicks();

    std::shared_ptr<AppState> state_;
    bool hasAppeared_ = false;
};

}  // namespace veloran
