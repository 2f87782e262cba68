#pragma once

#include <QMainWindow>
#include <memory>

#include "core/app_state.h"

class QAction;

namespace veloran {

/// The main window and its menus. Closing it does not end a session: that belongs to the state.
class MainWindow : public QMainWindow {
    Q_OBJECT
  public:
    explicit MainWindow(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

  private:
    void makeFileMenu();
    void makeTrackingMenu();
    void makeViewMenu();
    void makeHelpMenu();
    void refresh();
    void showAbout();

    std::shared_ptr<AppState> state_;
    QAction* startTracking_;
    QAction* stopTracking_;
};

}  // namespace veloran
