#include "qt/qt_tcp_connection.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <QNetworkProxy>
#include <QTcpSocket>
#include <algorithm>
#include <utility>

namespace veloran {
namespace {

void setOption(qintptr socket, int level, int option, int value) {
    ::setsockopt(static_cast<int>(socket), level, option, &value, sizeof value);
}

/// Without these the system tries for fifteen minutes to deliver, and for ever when there is
/// nothing to deliver.
void noticeSilentEnd(qintptr socket) {
    using Connection = QtTcpConnection;
    setOption(socket, IPPROTO_TCP, TCP_USER_TIMEOUT, Connection::kUnansweredMilliseconds);
    setOption(socket, SOL_SOCKET, SO_KEEPALIVE, 1);
    setOption(socket, IPPROTO_TCP, TCP_KEEPIDLE, Connection::kIdleSeconds);
    setOption(socket, IPPROTO_TCP, TCP_KEEPINTVL, Connection::kProbeSeconds);
}

/// Whether the other end said goodbye, in order or by a reset.
bool isClosedByPeer(const QTcpSocket& socket) {
    return socket.error() == QAbstractSocket::RemoteHostClosedError;
}

}  // namespace

QtTcpConnection::QtTcpConnection(MainLoop& loop, std::string host, std::uint16_t port)
    : loop_(loop), host_(std::move(host)), port_(port) {}

QtTcpConnection::~QtTcpConnection() {
    closeSocket();
}

// --- states

void QtTcpConnection::setStateHandler(std::function<void(TcpState)> handler) {
    handler_ = std::move(handler);
}

void QtTcpConnection::enter(TcpState state) {
    if (state == state_) return;
    state_ = state;
    // Holds the connection, so that its last state arrives also when the owner has let go of it.
    loop_.post([self = shared_from_this(), state] {
        if (const auto handler = self->handler_) handler(state);
    });
}

void QtTcpConnection::end(TcpState state) {
    closeSocket();
    for (auto& send : std::exchange(sends_, {})) {
        loop_.post([completion = std::move(send.completion)] { completion(false); });
    }
    for (auto& receive : std::exchange(receives_, {})) {
        loop_.post([completion = std::move(receive.completion)] {
            completion({.data = {}, .failed = true});
        });
    }
    backlog_ = 0;
    early_.clear();
    incoming_.clear();
    enter(state);
}

void QtTcpConnection::start() {
    if (state_ != TcpState::setup) return;
    enter(TcpState::preparing);
    attempt();
}

void QtTcpConnection::cancel() {
    if (!isOver()) end(TcpState::cancelled);
}

// --- attempts

void QtTcpConnection::attempt() {
    closeSocket();
    ++attempts_;
    socket_ = std::make_unique<QTcpSocket>();
    socket_->setProxy(QNetworkProxy::NoProxy);
    socket_->setReadBufferSize(static_cast<qint64>(kReadBuffer));

    auto* socket = socket_.get();
    // A socket must not be destroyed in its own signal, so its end is looked at later.
    const auto onEnd = [this] {
        loop_.post([weak = weak_from_this(), attempts = attempts_] {
            const auto self = weak.lock();
            if (!self || self->isOver() || self->attempts_ != attempts || !self->socket_) return;
            if (self->state_ != TcpState::ready) {
                self->onAttemptFailed();
            } else if (isClosedByPeer(*self->socket_)) {
                self->onClosed();
            } else {
                self->end(TcpState::failed);
            }
        });
    };
    QObject::connect(socket, &QTcpSocket::connected, socket, [this] { onConnected(); });
    QObject::connect(socket, &QTcpSocket::errorOccurred, socket, onEnd);
    QObject::connect(socket, &QTcpSocket::readyRead, socket, [this] { serveReceives(); });
    QObject::connect(socket, &QTcpSocket::bytesWritten, socket,
                     [this](qint64 count) { onWritten(static_cast<std::size_t>(count)); });
    socket->connectToHost(QString::fromStdString(host_), port_);
}

void QtTcpConnection::onAttemptFailed() {
    closeSocket();
    enter(TcpState::waiting);
    loop_.after(kRetrySeconds, [weak = weak_from_this(), attempts = attempts_] {
        const auto self = weak.lock();
        if (self && !self->isOver() && self->attempts_ == attempts) self->attempt();
    });
}

void QtTcpConnection::onConnected() {
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    noticeSilentEnd(socket_->socketDescriptor());
    enter(TcpState::ready);
    write(std::exchange(early_, {}));
}

void QtTcpConnection::onClosed() {
    incoming_ += socket_->readAll().toStdString();
    closeSocket();
    peerClosed_ = true;
    serveReceives();
    if (!sends_.empty()) end(TcpState::failed);
}

void QtTcpConnection::closeSocket() {
    if (!socket_) return;
    socket_->disconnect();
    socket_->abort();
    socket_.reset();
}

// --- bytes out

void QtTcpConnection::send(std::string bytes, std::function<void(bool ok)> completion) {
    sends_.push_back({bytes.size(), std::move(completion)});
    backlog_ += bytes.size();
    if (isOver()) return end(state_);
    if (peerClosed_ || backlog_ > kLargestBacklog) return end(TcpState::failed);
    if (state_ == TcpState::ready) {
        write(bytes);
    } else {
        early_ += bytes;
    }
}

void QtTcpConnection::write(const std::string& bytes) {
    // If the socket has just ended, that is about to be looked at and will fail what was sent.
    if (socket_->state() != QAbstractSocket::ConnectedState) return;
    socket_->write(bytes.data(), static_cast<qint64>(bytes.size()));
    socket_->flush();
    onWritten(0);  // for a send without bytes, of which the socket tells nothing
}

void QtTcpConnection::onWritten(std::size_t count) {
    backlog_ -= count;
    while (!sends_.empty()) {
        auto& oldest = sends_.front();
        const auto part = std::min(count, oldest.unsent);
        oldest.unsent -= part;
        count -= part;
        if (oldest.unsent > 0) return;
        loop_.post([completion = std::move(oldest.completion)] { completion(true); });
        sends_.pop_front();
    }
}

// --- bytes in

void QtTcpConnection::receive(std::size_t minimum, std::size_t maximum,
                              std::function<void(TcpReceived)> completion) {
    // More than the buffer holds would never come together.
    minimum = std::clamp<std::size_t>(minimum, 1, kReadBuffer);
    receives_.push_back({minimum, std::max<std::size_t>(maximum, 1), std::move(completion)});
    if (isOver()) return end(state_);
    serveReceives();
}

void QtTcpConnection::serveReceives() {
    while (!receives_.empty()) {
        // The socket is always emptied: from a half full buffer it would not read on.
        if (socket_ && incoming_.size() < receives_.front().minimum) {
            incoming_ += socket_->readAll().toStdString();
        }
        if (incoming_.size() < receives_.front().minimum && !peerClosed_) return;
        const auto receive = std::move(receives_.front());
        receives_.pop_front();
        TcpReceived received;
        received.data = incoming_.substr(0, receive.maximum);
        incoming_.erase(0, received.data.size());
        received.isComplete = peerClosed_ && incoming_.empty();
        loop_.post([completion = receive.completion, received = std::move(received)]() mutable {
            completion(std::move(received));
        });
    }
}

}  // namespace veloran
