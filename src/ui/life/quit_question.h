#pragma once

#include <QPointer>
#include <functional>

#include "core/duty.h"

class QMessageBox;
class QWidget;

namespace veloran {

/// Asks whether to quit amid a session or with a queue; closed by any way but "Quit", the program
/// goes on. One question at a time: asked again, the open one comes forward.
class QuitQuestion {
  public:
    ~QuitQuestion();

    /// Over `window` if that is to be seen, else by itself.
    void ask(const Duty& duty, QWidget& window, std::function<void()> onQuit);

  private:
    QPointer<QMessageBox> box_;
};

}  // namespace veloran
