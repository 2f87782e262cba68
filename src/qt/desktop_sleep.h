#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <memory>

#include "platform/sleep_inhibitor.h"

namespace veloran {

/// Sleep as the desktop rules it: held off through its portal or else through logind, whichever
/// answers first when asked in this order, and told of by logind. Nothing waits; where neither is
/// there, nothing happens. What is held is released with this, and by the desktop itself if the
/// program dies.
class DesktopSleep final : public QObject, public SleepInhibitor {
    Q_OBJECT

  public:
    explicit DesktopSleep(QDBusConnection session = QDBusConnection::sessionBus(),
                          QDBusConnection system = QDBusConnection::systemBus(),
                          QObject* parent = nullptr);
    ~DesktopSleep() override;

    void keepAwake(const std::optional<std::string>& why) override;
    /// Whether somebody has promised it, for the reason given last.
    bool isKeptAwake() const { return held_ && !asking_; }

  Q_SIGNALS:
    /// The machine is awake again.
    void resumed();

  private Q_SLOTS:
    void onPrepareForSleep(bool begins);
    void onPortalResponse(const QDBusMessage& response);

  private:
    struct Hold;
    void ask();
    void askPortal(const std::shared_ptr<Hold>& hold);
    void askLogind(const std::shared_ptr<Hold>& hold);
    void granted(const std::shared_ptr<Hold>& hold);

    QDBusConnection session_;
    QDBusConnection system_;
    QDBusServiceWatcher portal_;
    std::optional<std::string> why_;
    std::shared_ptr<Hold> asking_;  // not granted yet
    std::shared_ptr<Hold> held_;
};

}  // namespace veloran
