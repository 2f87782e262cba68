#pragma once

#include <QMainWindow>
#include <QPointer>
#include <memory>

#include "core/app_state.h"

class QAction;

namespace veloran {

class SatelliteBrowser;
class SatelliteListView;
class SettingsView;
class StateRefresher;

/// The main window, its menus and the sheets over it. It also opens the browser, which is a window
/// of its own but closes with it. Closing it does not end a session: that belongs to the state; nor
/// the program: see ProgramLife.
class MainWindow : public QMainWindow {
    Q_OBJECT
  public:
    explicit MainWindow(std::shared_ptr<AppState> state, QWidget* parent = nullptr);
    ~MainWindow() override;

    /// Opens the browser, or brings it forward.
    void openBrowser();
    /// Shows it as it was last seen, above other windows as far as the desktop lets it.
    void bringForward();

  signals:
    /// The user has closed it. Whether that ends the program is for others to say.
    void closed();
    void quitRequested();

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void makeFileMenu();
    void makeTrackingMenu();
    void makeViewMenu();
    void makeWindowMenu();
    void makeHelpMenu();
    void letMenusActFromEveryWindow();
    void refresh();
    template <class T>
    void showSheet(bool wanted, QPointer<T>& sheet, QAction& toggle);
    void showAbout();

    std::shared_ptr<AppState> state_;
    StateRefresher* refresher_;
    std::unique_ptr<SatelliteBrowser> browser_;  // from its first opening on
    QPointer<SettingsView> settings_;
    QPointer<SatelliteListView> satelliteList_;
    QAction* startTracking_;
    QAction* stopTracking_;
    QAction* toggleSettings_;
    QAction* toggleSatelliteList_;
};

}  // namespace veloran
