#pragma once

#include <QObject>

#include "base/published.h"
#include "ui/loop_timer.h"

namespace veloran {

/// Turns the many notifications of the state into few refreshes of the views: the first one marks
/// the state as changed, and one `refresh` follows in a later turn of the event loop, at most one
/// per display frame. A notification comes before its change, so views must not read inside it.
class StateRefresher : public QObject {
    Q_OBJECT
  public:
    static constexpr double kFrameSeconds = 0.016;

    StateRefresher(ChangeNotifier& objectWillChange, MainLoop& loop, QObject* parent = nullptr);

  signals:
    void refresh();

  private:
    void markChanged();
    void run();

    bool isChanged_ = false;
    LoopTimer frame_;  // runs since the last refresh
    ChangeNotifier::Subscription subscription_;
};

}  // namespace veloran
