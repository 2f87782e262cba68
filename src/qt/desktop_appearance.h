#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>

namespace veloran {

/// Whether the desktop prefers dark windows, as its XDG settings portal tells it. Asks without
/// waiting; where there is no bus, no portal or no such setting, nothing is ever told.
class DesktopAppearance final : public QObject {
    Q_OBJECT

  public:
    explicit DesktopAppearance(QDBusConnection bus = QDBusConnection::sessionBus(),
                               QObject* parent = nullptr);

  Q_SIGNALS:
    /// The first preference, and each change of it. A desktop that states none counts as not dark,
    /// but is told only when it had stated one before.
    void changed(bool dark);

  private Q_SLOTS:
    void onSettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

  private:
    void ask();
    void learn(const QVariant& value);

    QDBusConnection bus_;
    uint told_ = 0;
};

}  // namespace veloran
