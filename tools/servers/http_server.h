#pragma once

#include <QTcpServer>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QTcpSocket;

namespace veloran {

struct HttpRequest {
    std::string method;
    std::string path;   ///< up to the "?", as sent
    std::string query;  ///< behind the "?", as sent

    std::string target() const { return query.empty() ? path : path + "?" + query; }
};

/// Ways in which a server lets its client down.
enum class HttpFault {
    none,
    cutBody,      ///< promises the whole body, sends half of it and hangs up
    slowBytes,    ///< head and body one byte every millisecond
    closeAtOnce,  ///< hangs up without a byte
    neverAnswer   ///< keeps the connection and says nothing
};

struct HttpAnswer {
    int status = 200;
    std::vector<std::pair<std::string, std::string>> headers{};
    std::string body{};
    HttpFault fault = HttpFault::none;
};

/// A small HTTP/1.1 server on the loopback address, for tests and the demo. It answers GET and HEAD
/// by handler, keeps connections open, and lives on the thread that made it.
class HttpServer {
  public:
    using Handler = std::function<HttpAnswer(const HttpRequest&)>;

    /// A request head beyond this ends the connection.
    static constexpr std::size_t kLargestHead = 64 * 1024;

    HttpServer();
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    /// Listens on 127.0.0.1; port 0 picks a free one. False when the port cannot be had.
    [[nodiscard]] bool start(std::uint16_t port = 0);
    /// Stops listening and drops every connection. start(port()) takes up the same address again.
    void stop();

    std::uint16_t port() const { return port_; }
    std::string base() const;  ///< "http://127.0.0.1:<port>", without a slash at its end

    /// `target` is a path with or without a query. The whole target of a request is looked up
    /// first, then its path alone; neither gives 404.
    void route(std::string target, Handler handler);
    void serve(std::string target, HttpAnswer answer);

    const std::vector<HttpRequest>& requests() const { return requests_; }
    std::size_t requestCount(std::string_view target) const;

  private:
    struct Connection;

    void accept();
    void read(QTcpSocket* socket, Connection& connection);
    HttpAnswer answerTo(const HttpRequest& request) const;

    QTcpServer server_;
    std::uint16_t port_ = 0;
    std::map<std::string, Handler, std::less<>> routes_;
    std::vector<HttpRequest> requests_;
};

}  // namespace veloran
