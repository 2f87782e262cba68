#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include "base/published.h"

namespace veloran {

/// Turns the many notifications of the state into few refreshes of the views: the first one marks
/// the state as changed, and one `refresh` follows in a later turn of the event loop, at most one
/// per display frame. A notification comes before its change, so views must not read inside it.
class StateRefresher : public QObject {
    Q_OBJECT
  public:
    static constexpr int kFrameMilliseconds = 16;

    explicit StateRefresher(ChangeNotifier& objectWillChange, QObject* parent = nullptr);

  signals:
    void refresh();

  private:
    void markChanged();
    void run();

    QTimer timer_;
    QElapsedTimer sinceLast_;
    ChangeNotifier::Subscription subscription_;
};

}  // namespace veloran
