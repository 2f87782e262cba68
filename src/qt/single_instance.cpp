#include "qt/single_instance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>
#include <cerrno>

namespace veloran {

namespace {

constexpr int kBetweenTriesMs = 50;
constexpr int kAnswerMs = 2000;
constexpr qint64 kLongestCall = 4096;
constexpr auto kDone = "shown\n";

}  // namespace

SingleInstance::SingleInstance(const QString& name, const QString& directory, int patienceMs)
    : socket_(directory + '/' + name + ".socket") {
    if (directory.isEmpty()) return;
    const QDeadlineTimer deadline(patienceMs);
    // Again and again: one that is about to end holds the lock, but answers no more.
    while (!lock(directory + '/' + name + ".lock")) {
        role_ = Role::second;
        if (call()) return;
        role_ = Role::unanswered;
        if (deadline.hasExpired()) return;
        QThread::msleep(kBetweenTriesMs);
    }
    role_ = Role::first;
    listen();
}

SingleInstance::~SingleInstance() {
    server_.close();
    if (lock_ >= 0) close(lock_);
}

QString SingleInstance::runtimeDirectory() {
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
}

/// False only while another process has the lock.
bool SingleInstance::lock(const QString& file) {
    constexpr mode_t kOwnerOnly = 0600;
    lock_ = open(QFile::encodeName(file).constData(), O_RDWR | O_CREAT | O_CLOEXEC, kOwnerOnly);
    if (lock_ < 0 || flock(lock_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return true;
    close(lock_);
    lock_ = -1;
    return false;
}

/// Whose lock it is, whose socket it is: one that lies there is a dead one's.
void SingleInstance::listen() {
    if (lock_ < 0) return;
    QLocalServer::removeServer(socket_);
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    server_.listen(socket_);
    connect(&server_, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* caller = server_.nextPendingConnection()) {
            connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
            connect(caller, &QLocalSocket::readyRead, this, [this, caller] { answer(*caller); });
            answer(*caller);
        }
    });
}

/// One line: the caller's token.
void SingleInstance::answer(QLocalSocket& caller) {
    if (!caller.canReadLine()) {
        if (caller.bytesAvailable() > kLongestCall) caller.abort();
        return;
    }
    const QByteArray token = caller.readLine(kLongestCall).trimmed();
    Q_EMIT called(token);
    caller.write(kDone);
    caller.disconnectFromServer();
}

bool SingleInstance::call() const {
    QLocalSocket first;
    first.connectToServer(socket_);
    if (!first.waitForConnected(kAnswerMs)) return false;
    first.write(qgetenv("XDG_ACTIVATION_TOKEN") + '\n');
    while (!first.canReadLine()) {
        if (!first.waitForReadyRead(kAnswerMs)) return false;
    }
    return first.readLine() == kDone;
}

}  // namespace veloran
