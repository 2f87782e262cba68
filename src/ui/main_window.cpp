#include "ui/main_window.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QMessageBox>

#include "ui/application_version.h"
#include "ui/commands.h"
#include "ui/content_view.h"
#include "ui/formats.h"
#include "ui/state_refresher.h"
#include "ui/symbol_icon.h"

namespace veloran {

MainWindow::MainWindow(std::shared_ptr<AppState> state, QWidget* parent)
    : QMainWindow(parent), state_(std::move(state)) {
    setObjectName("mainWindow");
    setWindowTitle("Veloran");
    setWindowIcon(applicationIcon());
    makeFileMenu();
    makeTrackingMenu();
    makeViewMenu();
    makeHelpMenu();
    resize(1200, 800);

    auto* refresher = new StateRefresher(state_->objectWillChange, this);
    setCentralWidget(new ContentView(state_, *refresher));
    connect(refresher, &StateRefresher::refresh, this, &MainWindow::refresh);
    refresh();
}

void MainWindow::makeFileMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&File"));
    QAction* quit =
        menu->addAction(tr("&Quit"), Qt::CTRL | Qt::Key_Q, qApp, &QApplication::closeAllWindows);
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

void MainWindow::makeHelpMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&Help"));
    QAction* about = menu->addAction(tr("&About Veloran"), this, &MainWindow::showAbout);
    about->setObjectName("aboutAction");
    about->setMenuRole(QAction::AboutRole);
}

void MainWindow::refresh() {
    startTracking_->setEnabled(state_->selectedPass->has_value());
    stopTracking_->setEnabled(state_->isTracking);
}

void MainWindow::showAbout() {
    QMessageBox::about(this, tr("About Veloran"),
                       tr("<h3>Veloran %1</h3><p>Satellite tracker and radio controller for radio "
                          "amateurs.</p>")
                           .arg(QString::fromStdString(versionText(applicationVersion()))));
}

}  // namespace veloran
