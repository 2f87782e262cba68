#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace veloran::test {

/// A D-Bus daemon of a test's own, which knows no services but those that the test puts on it. The
/// user's buses are never touched.
class PrivateBus {
  public:
    /// Starts it; isUp() is false when that cannot be had.
    PrivateBus();
    ~PrivateBus();

    bool isUp() const { return !address_.isEmpty(); }
    QString address() const { return address_; }
    /// A connection of its own name, closed with this.
    QDBusConnection connect(const QString& name);

  private:
    QTemporaryDir directory_;
    QProcess daemon_;
    QString address_;
    QStringList names_;
};

}  // namespace veloran::test
