#include "ui/main_window.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QMessageBox>

#include "ui/application_version.h"
#include "ui/browser/satellite_browser.h"
#include "ui/commands.h"
#include "ui/content_view.h"
#include "ui/formats.h"
#include "ui/quick_list/satellite_list_view.h"
#include "ui/settings/settings_view.h"
#include "ui/state_refresher.h"
#include "ui/symbol_icon.h"
#include "ui/text_direction.h"

namespace veloran {

namespace {

void showInFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

}  // namespace

MainWindow::MainWindow(std::shared_ptr<AppState> state, QWidget* parent)
    : QMainWindow(parent),
      state_(std::move(state)),
      refresher_(new StateRefresher(state_->objectWillChange, state_->loop(), this)) {
    new LeftToRight(this);
    setObjectName("mainWindow");
    setWindowTitle("Veloran");
    setWindowIcon(applicationIcon());
    makeFileMenu();
    makeTrackingMenu();
    makeViewMenu();
    makeWindowMenu();
    makeHelpMenu();
    letMenusActFromEveryWindow();
    resize(1200, 800);

    auto* content = new ContentView(state_, *refresher_);
    connect(content, &ContentView::browserRequested, this, &MainWindow::openBrowser);
    setCentralWidget(content);
    connect(refresher_, &StateRefresher::refresh, this, &MainWindow::refresh);
    refresh();
}

MainWindow::~MainWindow() = default;

void MainWindow::makeFileMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&File"));
    QAction* quit =
        menu->addAction(tr("&Quit"), Qt::CTRL | Qt::Key_Q, this, &MainWindow::quitRequested);
    quit->setObjectName("quitAction");
    quit->setMenuRole(QAction::QuitRole);
}

void MainWindow::makeTrackingMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Tracking"));
    startTracking_ = menu->addAction(tr("Start Tracking"), Qt::CTRL | Qt::Key_T, this,
                                     [this] { startTrackingSelectedPass(*state_); });
    startTracking_->setObjectName("startTrackingAction");
    stopTracking_ = menu->addAction(tr("Stop Tracking"), Qt::CTRL | Qt::SHIFT | Qt::Key_T, this,
                                    [this] { state_->stopTracking(); });
    stopTracking_->setObjectName("stopTrackingAction");
    menu->addSeparator();
    menu->addAction(tr("Refresh TLEs && Passes"), Qt::CTRL | Qt::Key_R, this,
                    [this] { refreshPasses(*state_); })
        ->setObjectName("refreshPassesAction");
}

void MainWindow::makeViewMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&View"));
    toggleSatelliteList_ =
        menu->addAction(tr("Satellite List (Quick)"), Qt::CTRL | Qt::Key_L, this,
                        [this] { state_->showSatelliteList = !state_->showSatelliteList; });
    toggleSatelliteList_->setObjectName("satelliteListAction");
    toggleSettings_ = menu->addAction(tr("Settings"), Qt::CTRL | Qt::Key_Comma, this,
                                      [this] { state_->showSettings = !state_->showSettings; });
    toggleSettings_->setObjectName("settingsAction");
    toggleSettings_->setMenuRole(QAction::PreferencesRole);
    menu->addSeparator();
    QAction* in = menu->addAction(tr("Zoom In"), this, [this] { zoomIn(*state_); });
    in->setObjectName("zoomInAction");
    // Where the plus sign needs the shift key, the key alone does as well.
    in->setShortcuts({Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal});
    menu->addAction(tr("Zoom Out"), Qt::CTRL | Qt::Key_Minus, this, [this] { zoomOut(*state_); })
        ->setObjectName("zoomOutAction");
    menu->addAction(tr("Scroll to Now"), Qt::CTRL | Qt::Key_N, this,
                    [this] { scrollToNow(*state_); })
        ->setObjectName("scrollToNowAction");
}

void MainWindow::makeWindowMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Window"));
    menu->addAction(tr("Satellite Browser"), Qt::CTRL | Qt::Key_B, this, &MainWindow::openBrowser)
        ->setObjectName("browserAction");
}

void MainWindow::makeHelpMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Help"));
    QAction* about = menu->addAction(tr("&About Veloran"), this, &MainWindow::showAbout);
    about->setObjectName("aboutAction");
    about->setMenuRole(QAction::AboutRole);
}

/// The browser has no menu of its own. A sheet over this window keeps the shortcuts off all the
/// same, but for those that are given to it.
void MainWindow::letMenusActFromEveryWindow() {
    for (QAction* action : findChildren<QAction*>()) {
        action->setShortcutContext(Qt::ApplicationShortcut);
    }
}

void MainWindow::refresh() {
    startTracking_->setEnabled(state_->selectedPass->has_value());
    stopTracking_->setEnabled(state_->isTracking);
    showSheet(state_->showSettings, settings_, *toggleSettings_);
    showSheet(state_->showSatelliteList, satelliteList_, *toggleSatelliteList_);
}

/// A sheet closes by itself when it is no longer wanted; what opened it reaches it, to close it.
template <class T>
void MainWindow::showSheet(bool wanted, QPointer<T>& sheet, QAction& toggle) {
    if (!wanted || sheet) return;
    sheet = new T(state_, this);
    sheet->addAction(&toggle);
    connect(refresher_, &StateRefresher::refresh, sheet.data(), &T::refresh);
    sheet->present();
}

/// A session can be stopped from under whatever lies over this window.
bool MainWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowBlocked) {
        if (QWidget* above = QApplication::activeModalWidget()) above->addAction(stopTracking_);
    }
    return QMainWindow::event(event);
}

void MainWindow::openBrowser() {
    if (!browser_) browser_ = std::make_unique<SatelliteBrowser>(state_);
    showInFront(*browser_);
}

void MainWindow::bringForward() {
    showInFront(*this);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (browser_) browser_->close();
    QMainWindow::closeEvent(event);
    emit closed();
}

void MainWindow::showAbout() {
    QMessageBox::about(this, tr("About Veloran"),
                       tr("<h3>Veloran %1</h3><p>Satellite tracker and radio controller for radio "
                          "amateurs.</p>")
                           .arg(QString::fromStdString(versionText(applicationVersion()))));
}

}  // namespace veloran
