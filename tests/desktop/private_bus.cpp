#include "desktop/private_bus.h"

#include <QFile>

namespace veloran::test {

namespace {

constexpr int kPatienceMs = 30'000;
// No directories of services: a question to one that is not there starts nothing.
constexpr auto kConfiguration = R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

}  // namespace

PrivateBus::PrivateBus() {
    QFile file(directory_.filePath("bus.conf"));
    if (!file.open(QIODevice::WriteOnly)) return;
    file.write(QString(kConfiguration).arg(directory_.path()).toUtf8());
    file.close();
    daemon_.setStandardErrorFile(QProcess::nullDevice());  // limits that a container has
    daemon_.start("dbus-daemon", {"--nofork", "--nopidfile", "--print-address=1",
                                  "--config-file=" + file.fileName()});
    while (!daemon_.canReadLine()) {
        if (!daemon_.waitForReadyRead(kPatienceMs)) return;
    }
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
}

PrivateBus::~PrivateBus() {
    for (const QString& name : names_) QDBusConnection::disconnectFromBus(name);
    if (daemon_.state() == QProcess::NotRunning) return;
    daemon_.terminate();
    daemon_.waitForFinished(kPatienceMs);
}

QDBusConnection PrivateBus::connect(const QString& name) {
    names_ << name;
    return QDBusConnection::connectToBus(address_, name);
}

}  // namespace veloran::test
