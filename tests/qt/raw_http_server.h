#pragma once

#include <QHostAddress>
#include <QSslConfiguration>
#include <QSslServer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"

namespace veloran::test {

/// A server on a free port of this machine that answers a path with exactly the bytes it was
/// given, heads included, and closes. A path without an answer is never answered.
class RawHttpServer {
  public:
    RawHttpServer() : RawHttpServer(std::make_unique<QTcpServer>(), "http") {}
    /// Over https.
    explicit RawHttpServer(const QSslConfiguration& configuration)
        : RawHttpServer(encrypted(configuration), "https") {}

    std::string url(const std::string& path, const std::string& host = "127.0.0.1") const {
        return scheme_ + "://" + host + ":" + std::to_string(server_->serverPort()) + path;
    }

    std::map<std::string, std::string> answers;
    /// What a path says to a request without credentials, keeping the connection.
    std::map<std::string, std::string> demands;
    /// Bytes that a path sends for ever, behind its answer.
    std::map<std::string, std::string> endless;
    /// Bytes of which a path sends one after the other without end, behind its answer.
    std::map<std::string, std::string> dripping;
    std::size_t dripped = 0;
    std::vector<std::string> requests;  ///< heads, as received

  private:
    RawHttpServer(std::unique_ptr<QTcpServer> server, std::string scheme)
        : server_(std::move(server)), scheme_(std::move(scheme)) {
        server_->listen(QHostAddress::LocalHost);
        // Behind the handshake, where there is one.
        QObject::connect(server_.get(), &QTcpServer::pendingConnectionAvailable, server_.get(),
                         [this] {
                             while (auto* socket = server_->nextPendingConnection()) serve(*socket);
                         });
    }

    static std::unique_ptr<QTcpServer> encrypted(const QSslConfiguration& configuration) {
        auto server = std::make_unique<QSslServer>();
        server->setSslConfiguration(configuration);
        return server;
    }

    void serve(QTcpSocket& socket) {
        auto head = std::make_shared<std::string>();
        const auto read = [this, &socket, head] {
            *head += socket.readAll().toStdString();
            if (head->find("\r\n\r\n") != std::string::npos) {
                answer(socket, std::exchange(*head, {}));
            }
        };
        QObject::connect(&socket, &QTcpSocket::readyRead, &socket, read);
        QObject::connect(&socket, &QTcpSocket::disconnected, &socket, &QObject::deleteLater);
        if (socket.bytesAvailable() > 0) read();
    }

    void answer(QTcpSocket& socket, const std::string& head) {
        requests.push_back(head);
        const auto begin = head.find(' ') + 1;
        const auto path = head.substr(begin, head.find(' ', begin) - begin);
        const bool isKnown = lowerCased(head).find("\r\nauthorization:") != std::string::npos;
        const auto& said = !isKnown && demands.contains(path) ? demands : answers;
        const auto found = said.find(path);
        if (found == said.end()) return;
        socket.write(QByteArray::fromStdString(found->second));
        if (const auto piece = endless.find(path); piece != endless.end()) {
            const auto more = [&socket, bytes = QByteArray::fromStdString(piece->second)] {
                if (socket.bytesToWrite() < bytes.size()) socket.write(bytes);
            };
            QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, more);
        } else if (const auto drop = dripping.find(path); drop != dripping.end()) {
            auto* timer = new QTimer(&socket);
            timer->callOnTimeout(&socket, [this, &socket, byte = drop->second.front()] {
                socket.putChar(byte);
                ++dripped;
            });
            timer->start(2);
        } else if (&said != &demands) {
            socket.disconnectFromHost();
        }
    }

    std::unique_ptr<QTcpServer> server_;
    std::string scheme_;
};

/// A whole answer with its length told.
inline std::string httpAnswer(const std::string& status, const std::string& body,
                              const std::string& moreHeads = "") {
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" +
           moreHeads + "\r\n" + body;
}

}  // namespace veloran::test
