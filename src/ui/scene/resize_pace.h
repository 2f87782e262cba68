#pragma once

#include <QWidget>
#include <optional>

#include "platform/clock.h"
#include "ui/loop_timer.h"

namespace veloran {

/// While a hand drags the edge of a window, there is no time to draw everything anew for each size
/// on the way. Says when a kept picture, stretched, will do: not for the few changes of size that a
/// layout makes, and not for long.
class ResizePace {
  public:
    /// Updates `widget` when its size has come to rest.
    ResizePace(QWidget& widget, MainLoop& loop, const Clock& clock);

    void resized();
    void drawnAnew() { drawn_ = clock_.now(); }
    bool mayStretch() const;

    static constexpr double kSeconds = 0.15;  ///< until rest, and between two new drawings
    static constexpr int kDrag = 5;           ///< so many changes in a row are a drag

  private:
    bool isRecent(const std::optional<Instant>& time) const;

    const Clock& clock_;
    std::optional<Instant> resized_;
    std::optional<Instant> drawn_;
    LoopTimer rest_;
    int changes_ = 0;  // in a row
};

}  // namespace veloran
