#pragma once

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace veloran::test {

/// A server on a free port of this machine that answers a path with exactly the bytes it was
/// given, heads included, and closes. A path without an answer is never answered.
class RawHttpServer {
  public:
    RawHttpServer() {
        server_.listen(QHostAddress::LocalHost);
        QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
            while (auto* socket = server_.nextPendingConnection()) serve(*socket);
        });
    }

    std::string url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(server_.serverPort()) + path;
    }

    std::map<std::string, std::string> answers;
    /// Bytes that a path sends for ever, behind its answer.
    std::map<std::string, std::string> endless;
    std::vector<std::string> requests;  ///< heads, as received

  private:
    void serve(QTcpSocket& socket) {
        auto head = std::make_shared<std::string>();
        QObject::connect(&socket, &QTcpSocket::readyRead, &socket, [this, &socket, head] {
            *head += socket.readAll().toStdString();
            if (head->find("\r\n\r\n") != std::string::npos) answer(socket, *head);
        });
        QObject::connect(&socket, &QTcpSocket::disconnected, &socket, &QObject::deleteLater);
    }

    void answer(QTcpSocket& socket, const std::string& head) {
        requests.push_back(head);
        const auto begin = head.find(' ') + 1;
        const auto path = head.substr(begin, head.find(' ', begin) - begin);
        const auto found = answers.find(path);
        if (found == answers.end()) return;
        socket.write(QByteArray::fromStdString(found->second));
        if (const auto piece = endless.find(path); piece != endless.end()) {
            const auto more = [&socket, bytes = QByteArray::fromStdString(piece->second)] {
                if (socket.bytesToWrite() < bytes.size()) socket.write(bytes);
            };
            QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, more);
        } else {
            socket.disconnectFromHost();
        }
    }

    QTcpServer server_;
};

/// A whole answer with its length told.
inline std::string httpAnswer(const std::string& status, const std::string& body,
                              const std::string& moreHeads = "") {
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" +
           moreHeads + "\r\n" + body;
}

}  // namespace veloran::test
