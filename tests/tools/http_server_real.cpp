#include "servers/http_server.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTcpSocket>

namespace veloran {
namespace {

/// What a raw client has got once the server hung up, or once `enough` bytes are there.
struct RawClient {
    QTcpSocket socket;
    std::string bytes;

    void ask(const HttpServer& server, const std::string& text) {
        socket.connectToHost("127.0.0.1", server.port());
        socket.write(QByteArray::fromStdString(text));
    }
    template <class Condition>
    bool waitFor(Condition condition) {
        for (QDeadlineTimer deadline(10000); !deadline.hasExpired();) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
            bytes += socket.readAll().toStdString();
            if (condition()) return true;
        }
        return false;
    }
    bool waitForBytes(std::string_view end) {
        return waitFor([&] { return bytes.ends_with(end); });
    }
    bool waitForHangUp() {
        return waitFor([&] { return socket.state() == QAbstractSocket::UnconnectedState; });
    }
};

std::string request(const std::string& target) {
    return "GET " + target + " HTTP/1.1\r\nHost: x\r\n\r\n";
}

class HttpServerOnLoopback : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(server.start()); }
    HttpServer server;
    RawClient client;
};

TEST_F(HttpServerOnLoopback, WholeTargetComesBeforeThePath) {
    server.serve("/gp?GROUP=a", {.body = "one"});
    server.serve("/gp", {.body = "any"});
    client.ask(server, request("/gp?GROUP=a") + request("/gp?GROUP=b"));
    ASSERT_TRUE(client.waitForBytes("any"));
    EXPECT_NE(client.bytes.find("\r\n\r\none"), std::string::npos);
    EXPECT_EQ(server.requestCount("/gp?GROUP=a"), 1u);
    EXPECT_EQ(server.requests().at(1).query, "GROUP=b");
}

TEST_F(HttpServerOnLoopback, UnknownPathIs404AndOtherMethods405) {
    client.ask(server, request("/none"));
    ASSERT_TRUE(client.waitForBytes("Not found\n"));
    EXPECT_TRUE(client.bytes.starts_with("HTTP/1.1 404 "));
    RawClient other;
    other.ask(server, "POST /none HTTP/1.1\r\n\r\n");
    ASSERT_TRUE(other.waitForBytes("\r\n\r\n"));
    EXPECT_TRUE(other.bytes.starts_with("HTTP/1.1 405 "));
}

TEST_F(HttpServerOnLoopback, HeadersAndStatusAreTheHandlers) {
    server.serve("/old", {.status = 302, .headers = {{"Location", "/new"}}});
    client.ask(server, request("/old"));
    ASSERT_TRUE(client.waitForBytes("\r\n\r\n"));
    EXPECT_TRUE(client.bytes.starts_with("HTTP/1.1 302 Found\r\n"));
    EXPECT_NE(client.bytes.find("\r\nLocation: /new\r\n"), std::string::npos);
}

TEST_F(HttpServerOnLoopback, CutBodyEndsHalfWay) {
    server.serve("/", {.body = "0123456789", .fault = HttpFault::cutBody});
    client.ask(server, request("/"));
    ASSERT_TRUE(client.waitForHangUp());
    EXPECT_NE(client.bytes.find("Content-Length: 10\r\n"), std::string::npos);
    EXPECT_TRUE(client.bytes.ends_with("\r\n\r\n01234"));
}

TEST_F(HttpServerOnLoopback, SlowBytesArriveWhole) {
    server.serve("/", {.body = "slow but whole", .fault = HttpFault::slowBytes});
    client.ask(server, request("/"));
    EXPECT_TRUE(client.waitForBytes("slow but whole"));
}

TEST_F(HttpServerOnLoopback, CloseAtOnceSendsNothing) {
    server.serve("/", {.body = "x", .fault = HttpFault::closeAtOnce});
    client.ask(server, request("/"));
    ASSERT_TRUE(client.waitForHangUp());
    EXPECT_EQ(client.bytes, "");
}

TEST_F(HttpServerOnLoopback, NeverAnswerLastsUntilTheServerStops) {
    server.serve("/", {.body = "x", .fault = HttpFault::neverAnswer});
    client.ask(server, request("/"));
    ASSERT_TRUE(client.waitFor([&] { return server.requestCount("/") == 1; }));
    EXPECT_EQ(client.socket.state(), QAbstractSocket::ConnectedState);
    server.stop();
    ASSERT_TRUE(client.waitForHangUp());
    EXPECT_EQ(client.bytes, "");
}

TEST_F(HttpServerOnLoopback, StartsAgainOnTheSamePort) {
    const auto port = server.port();
    server.serve("/", {.body = "back"});
    server.stop();
    ASSERT_TRUE(server.start(port));
    client.ask(server, request("/"));
    EXPECT_TRUE(client.waitForBytes("back"));
}

TEST_F(HttpServerOnLoopback, EndlessHeadIsCutOff) {
    client.ask(server, std::string(2 * HttpServer::kLargestHead, 'x'));
    EXPECT_TRUE(client.waitForHangUp());
    EXPECT_TRUE(server.requests().empty());
}

}  // namespace
}  // namespace veloran
