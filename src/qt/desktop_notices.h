#pragma once

#include <QDBusConnection>
#include <QObject>

#include "platform/notices.h"

namespace veloran {

/// Notices of the desktop's notification service, asked without waiting.
class DesktopNotices final : public QObject, public Notices {
    Q_OBJECT

  public:
    explicit DesktopNotices(QDBusConnection bus = QDBusConnection::sessionBus(),
                            QObject* parent = nullptr);

    void show(const Notice& notice, std::function<void()> onChosen) override;
    void withdraw() override;
    /// Whether the desktop has taken it.
    bool isShown() const { return shown_ != 0; }

  private Q_SLOTS:
    void onActionInvoked(uint id, const QString& action);

  private:
    void close(uint id);

    QDBusConnection bus_;
    std::function<void()> onChosen_;
    uint shown_ = 0;     // the service's number of the notice; 0 without one
    uint requests_ = 0;  // tells the answer to the latest call from earlier ones
};

}  // namespace veloran
