#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "core/app_state.h"

class QMessageBox;

namespace veloran {

/// Asks which of two clashing passes to keep, for as long as the state has that question open.
/// Closed by any way but "Replace", it keeps the pass that is in the queue.
class ConflictAlert {
  public:
    ConflictAlert(std::shared_ptr<AppState> state, QWidget& parent);

    /// Opens or closes the alert as the state wants it.
    void refresh();

  private:
    void open(const PassConflict& conflict);

    std::shared_ptr<AppState> state_;
    QWidget& parent_;
    QPointer<QMessageBox> box_;
};

}  // namespace veloran
