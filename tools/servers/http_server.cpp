#include "servers/http_server.h"

#include <fmt/format.h>

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>
#include <algorithm>
#include <memory>
#include <optional>

#include "base/text.h"

namespace veloran {
namespace {

std::string_view reason(int status) {
    switch (status) {
        case 200:
            return "OK";
        case 301:
            return "Moved Permanently";
        case 302:
            return "Found";
        case 403:
            return "Forbidden";
        case 404:
            return "Not Found";
        case 405:
            return "Method Not Allowed";
        case 500:
            return "Internal Server Error";
        case 503:
            return "Service Unavailable";
        default:
            return "Status";
    }
}

std::string head(const HttpAnswer& answer, bool keepOpen) {
    std::string text =
        fmt::format("HTTP/1.1 {} {}\r\nContent-Length: {}\r\nConnection: {}\r\n", answer.status,
                    reason(answer.status), answer.body.size(), keepOpen ? "keep-alive" : "close");
    for (const auto& [name, value] : answer.headers) text += name + ": " + value + "\r\n";
    return text + "\r\n";
}

struct ParsedHead {
    HttpRequest request;
    bool keepOpen = true;
};

std::optional<ParsedHead> parseHead(std::string_view text) {
    const auto lines = splitLines(text);
    const auto words = split(lines.front(), ' ');
    if (words.size() != 3 || words[1].empty() || !words[2].starts_with("HTTP/1.")) return {};
    ParsedHead parsed;
    parsed.request.method = words[0];
    const auto mark = words[1].find('?');
    parsed.request.path = words[1].substr(0, mark);
    if (mark != std::string_view::npos) parsed.request.query = words[1].substr(mark + 1);
    parsed.keepOpen = words[2] != "HTTP/1.0";
    for (const auto line : lines) {
        if (lowerCased(line) == "connection: close") parsed.keepOpen = false;
    }
    return parsed;
}

void write(QTcpSocket* socket, std::string_view bytes) {
    socket->write(bytes.data(), static_cast<qint64>(bytes.size()));
}

/// One byte every millisecond for as long as the socket lives. `whenDone` runs after the last.
void writeSlowly(QTcpSocket* socket, std::string bytes, std::function<void()> whenDone) {
    auto* timer = new QTimer(socket);
    timer->callOnTimeout(socket, [=, rest = std::move(bytes), at = std::size_t{0}]() mutable {
        if (at < rest.size()) {
            write(socket, std::string_view(rest).substr(at++, 1));
            return;
        }
        timer->stop();
        timer->deleteLater();
        whenDone();
    });
    timer->start(1);
}

}  // namespace

/// What one connection has received and whether an answer is under way on it.
struct HttpServer::Connection {
    std::string incoming;
    bool busy = false;
};

HttpServer::HttpServer() {
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { accept(); });
}

HttpServer::~HttpServer() {
    stop();
}

bool HttpServer::start(std::uint16_t port) {
    if (!server_.listen(QHostAddress::LocalHost, port)) return false;
    port_ = server_.serverPort();
    return true;
}

void HttpServer::stop() {
    server_.close();
    for (auto* socket : server_.findChildren<QTcpSocket*>()) {
        socket->disconnect();
        delete socket;
    }
}

std::string HttpServer::base() const {
    return fmt::format("http://127.0.0.1:{}", port_);
}

void HttpServer::route(std::string target, Handler handler) {
    routes_[std::move(target)] = std::move(handler);
}

void HttpServer::serve(std::string target, HttpAnswer answer) {
    route(std::move(target), [answer = std::move(answer)](const HttpRequest&) { return answer; });
}

std::size_t HttpServer::requestCount(std::string_view target) const {
    return static_cast<std::size_t>(std::ranges::count_if(
        requests_, [target](const HttpRequest& r) { return r.target() == target; }));
}

void HttpServer::accept() {
    while (auto* socket = server_.nextPendingConnection()) {
        auto connection = std::make_shared<Connection>();
        QObject::connect(socket, &QTcpSocket::readyRead, socket,
                         [this, socket, connection] { read(socket, *connection); });
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

HttpAnswer HttpServer::answerTo(const HttpRequest& request) const {
    if (request.method != "GET" && request.method != "HEAD") return {.status = 405};
    auto found = routes_.find(request.target());
    if (found == routes_.end()) found = routes_.find(request.path);
    if (found == routes_.end()) return {.status = 404, .body = "Not found\n"};
    return found->second(request);
}

void HttpServer::read(QTcpSocket* socket, Connection& connection) {
    connection.incoming += socket->readAll().toStdString();
    if (connection.busy) return;
    const auto end = connection.incoming.find("\r\n\r\n");
    if (end == std::string::npos) {
        if (connection.incoming.size() > kLargestHead) socket->abort();
        return;
    }
    const auto parsed = parseHead(std::string_view(connection.incoming).substr(0, end));
    connection.incoming.erase(0, end + 4);
    if (!parsed) return socket->abort();
    requests_.push_back(parsed->request);

    HttpAnswer answer = answerTo(parsed->request);
    std::string bytes = head(answer, parsed->keepOpen);
    if (parsed->request.method == "GET") bytes += answer.body;
    const auto finish = [this, socket, &connection, keepOpen = parsed->keepOpen] {
        connection.busy = false;
        if (!keepOpen) return socket->disconnectFromHost();
        if (!connection.incoming.empty()) read(socket, connection);
    };
    connection.busy = true;
    switch (answer.fault) {
        case HttpFault::none:
            write(socket, bytes);
            return finish();
        case HttpFault::slowBytes:
            return writeSlowly(socket, std::move(bytes), finish);
        case HttpFault::closeAtOnce:
            return socket->abort();
        case HttpFault::neverAnswer:
            return;
        case HttpFault::cutBody:
            write(socket, std::string_view(bytes).substr(0, bytes.size() - answer.body.size() / 2));
            return socket->disconnectFromHost();
    }
}

}  // namespace veloran
