#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

namespace veloran {

/// While a hand drags the edge of a window, there is no time to draw everything anew for each size
/// on the way. Says when a kept picture, stretched, will do: not for the few changes of size that a
/// layout makes, and not for long.
class ResizePace {
  public:
    /// Updates `widget` when its size has come to rest.
    explicit ResizePace(QWidget& widget);

    void resized();
    void drawnAnew() { sinceDrawn_.start(); }
    bool mayStretch() const;

    static constexpr int kMilliseconds = 150;  ///< until rest, and between two new drawings
    static constexpr int kDrag = 5;            ///< so many changes in a row are a drag

  private:
    QElapsedTimer sinceResized_;
    QElapsedTimer sinceDrawn_;
    QTimer rest_;
    int changes_ = 0;  // in a row
};

}  // namespace veloran
