#pragma once

#include <QWidget>
#include <memory>

#include "core/app_state.h"

namespace veloran {

/// The coming passes of the favourites as arches over a time axis, and the list of favourites.
class SkyTrackView : public QWidget {
    Q_OBJECT
  public:
    explicit SkyTrackView(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

  public slots:
    void refresh();

  signals:
    void browserRequested();

  private:
    std::shared_ptr<AppState> state_;
};

}  // namespace veloran
