#pragma once

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

#include "core/duty.h"

namespace veloran {

/// The program's symbol in the desktop's tray while it has no window: what it is at, and a menu.
class TraySymbol : public QObject {
    Q_OBJECT
  public:
    explicit TraySymbol(QObject* parent = nullptr);

    /// Whether the desktop has a tray.
    static bool isThereATray() { return QSystemTrayIcon::isSystemTrayAvailable(); }

    void tell(const Duty& duty);
    void show() { symbol_.show(); }
    void hide() { symbol_.hide(); }

    const QMenu& menu() const { return menu_; }

  signals:
    void showRequested();
    void stopRequested();
    void quitRequested();

  private:
    QMenu menu_;
    QAction* duty_;
    QAction* stop_;
    QSystemTrayIcon symbol_;  // before the menu that it shows
};

}  // namespace veloran
