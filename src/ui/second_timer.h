#pragma once

#include <QElapsedTimer>
#include <QTimer>

namespace veloran {

/// Beats once a second, for what a view tells of the time. While a radio is steered the beat goes
/// behind a tick: what it draws is done before the next one falls due.
class SecondTimer : public QTimer {
    Q_OBJECT
  public:
    explicit SecondTimer(QObject* parent = nullptr);

    /// Called right after a tick of every `tickMilliseconds`. Puts the beat off once, by less than
    /// a second, unless it falls behind a tick already; whether it did.
    bool moveBehindTick(double tickMilliseconds);

  private:
    QElapsedTimer sinceMove_;
};

}  // namespace veloran
