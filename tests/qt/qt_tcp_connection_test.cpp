#include "qt/qt_tcp_connection.h"

#include <gmock/gmock.h>
#include <linux/filter.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <algorithm>
#include <string>
#include <vector>

#include "qt/qt_main_loop.h"
#include "qt/qt_tcp_network.h"
#include "qt/spin.h"

namespace veloran {
namespace {

using test::spinUntil;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Events = std::vector<std::string>;

std::string nameOf(TcpState state) {
    constexpr const char* kNames[] = {"setup", "preparing", "waiting",
                                      "ready", "failed",    "cancelled"};
    return kNames[static_cast<std::size_t>(state)];
}

class QtTcpConnectionTest : public ::testing::Test {
  protected:
    QtTcpConnectionTest() { EXPECT_TRUE(server.listen(QHostAddress::LocalHost)); }

    void makeConnection(const std::string& host, std::uint16_t port) {
        connection = network.makeConnection(host, port);
        connection->setStateHandler([this](TcpState state) { note(nameOf(state)); });
    }
    void connectToServer() {
        makeConnection("127.0.0.1", server.serverPort());
        connection->start();
        ASSERT_TRUE(spinUntil([&] { return saw("ready") && server.hasPendingConnections(); }));
        peer.reset(server.nextPendingConnection());
        events.clear();
    }
    void note(const std::string& event) {
        EXPECT_FALSE(insideCall) << event << " came from inside a call";
        events.push_back(event);
    }
    bool saw(const std::string& event) const {
        return std::ranges::find(events, event) != events.end();
    }
    template <class Call>
    void calling(Call call) {
        insideCall = true;
        call();
        insideCall = false;
    }
    void send(const std::string& bytes) {
        calling(
            [&] { connection->send(bytes, [this](bool ok) { note(ok ? "sent" : "not sent"); }); });
    }
    void receive(std::size_t minimum = 1, std::size_t maximum = 4096) {
        calling([&] {
            connection->receive(minimum, maximum, [this](const TcpReceived& received) {
                note("received " + received.data + (received.isComplete ? " (end)" : "") +
                     (received.failed ? " (failed)" : ""));
            });
        });
    }
    /// Closes without a goodbye: the other side sees a reset.
    void resetByPeer() {
        const linger noGoodbye{1, 0};
        ::setsockopt(static_cast<int>(peer->socketDescriptor()), SOL_SOCKET, SO_LINGER, &noGoodbye,
                     sizeof noGoodbye);
        peer->abort();
    }

    /// From now on the peer's system hears nothing and says nothing, as if its cable were cut: it
    /// drops every packet of this connection before TCP sees it.
    void cutOffPeer() {
        sock_filter dropAll = BPF_STMT(BPF_RET | BPF_K, 0);
        const sock_fprog program{1, &dropAll};
        ASSERT_EQ(::setsockopt(static_cast<int>(peer->socketDescriptor()), SOL_SOCKET,
                               SO_ATTACH_FILTER, &program, sizeof program),
                  0);
    }
    /// Our end of the connection, found among the open descriptors.
    int ownSocket() const {
        for (int descriptor = 0; descriptor < 1024; ++descriptor) {
            sockaddr_in other{};
            socklen_t size = sizeof other;
            if (::getpeername(descriptor, reinterpret_cast<sockaddr*>(&other), &size) == 0 &&
                other.sin_family == AF_INET && ntohs(other.sin_port) == server.serverPort()) {
                return descriptor;
            }
        }
        return -1;
    }
    int ownOption(int level, int option) const {
        int value = -1;
        socklen_t size = sizeof value;
        ::getsockopt(ownSocket(), level, option, &value, &size);
        return value;
    }

    QTcpServer server;
    QtMainLoop loop;
    QtTcpNetwork network{loop};
    std::shared_ptr<TcpConnection> connection;
    std::unique_ptr<QTcpSocket> peer;
    Events events;
    bool insideCall = false;
};

// --- coming up

TEST_F(QtTcpConnectionTest, NothingHappensBeforeTheStart) {
    makeConnection("127.0.0.1", server.serverPort());
    test::spinFor(20);
    EXPECT_THAT(events, IsEmpty());
    EXPECT_FALSE(server.hasPendingConnections());
}

TEST_F(QtTcpConnectionTest, AServerThatListensMakesItReady) {
    makeConnection("127.0.0.1", server.serverPort());
    calling([&] { connection->start(); });
    ASSERT_TRUE(spinUntil([&] { return saw("ready"); }));
    connection->start();
    test::spinFor(20);
    EXPECT_THAT(events, ElementsAre("preparing", "ready"));
}

TEST_F(QtTcpConnectionTest, ARefusedConnectionWaitsAndComesUpWithTheServer) {
    const auto port = server.serverPort();
    server.close();
    makeConnection("127.0.0.1", port);
    connection->start();
    ASSERT_TRUE(spinUntil([&] { return saw("waiting"); }));
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, port));
    ASSERT_TRUE(spinUntil([&] { return saw("ready"); }));
    EXPECT_THAT(events, ElementsAre("preparing", "waiting", "ready"));
}

TEST_F(QtTcpConnectionTest, WaitingIsReportedOnceHoweverOftenItIsTried) {
    makeConnection("127.0.0.1", 0);
    connection->start();
    ASSERT_TRUE(spinUntil([&] { return saw("waiting"); }));
    test::spinFor(2500);
    EXPECT_THAT(events, ElementsAre("preparing", "waiting"));
}

TEST_F(QtTcpConnectionTest, OddAddressesWait) {
    const std::vector<std::pair<std::string, std::uint16_t>> addresses{
        {"", 4532},
        {"127.0.0.1", 0},
        {"no such host", 4532},
        {"radio.invalid", 4532},
        {"[::1", 4532},
        {"http://127.0.0.1", 4532},
        {std::string("127.0.0.1\0x", 11), 4532},
        {"\xff\xfe", 4532},
        {"xn--\n", 4532},
        {std::string(5000, 'a'), 4532}};
    for (const auto& [host, port] : addresses) {
        events.clear();
        makeConnection(host, port);
        calling([&] { connection->start(); });
        EXPECT_TRUE(spinUntil([&] { return saw("waiting"); })) << host;
        EXPECT_THAT(events, ElementsAre("preparing", "waiting")) << host;
    }
}

TEST_F(QtTcpConnectionTest, WhatIsSentBeforeItIsReadyGoesOutThen) {
    makeConnection("127.0.0.1", server.serverPort());
    send("one ");
    connection->start();
    send("");
    send("two ");
    ASSERT_TRUE(spinUntil([&] { return saw("ready"); }));
    send("three");
    ASSERT_TRUE(spinUntil([&] { return server.hasPendingConnections(); }));
    peer.reset(server.nextPendingConnection());
    ASSERT_TRUE(spinUntil([&] { return peer->bytesAvailable() == 13; }));
    EXPECT_EQ(peer->readAll(), "one two three");
    EXPECT_THAT(events, ElementsAre("preparing", "ready", "sent", "sent", "sent", "sent"));
}

// --- bytes

TEST_F(QtTcpConnectionTest, BytesGoOutInOrderAndEachSendCompletesOnce) {
    connectToServer();
    std::string expected;
    for (int i = 0; i < 200; ++i) {
        const auto line = "F " + std::to_string(145'000'000 + i) + "\n";
        expected += line;
        send(line);
    }
    ASSERT_TRUE(
        spinUntil([&] { return peer->bytesAvailable() == static_cast<qint64>(expected.size()); }));
    EXPECT_EQ(peer->readAll().toStdString(), expected);
    ASSERT_TRUE(spinUntil([&] { return events.size() >= 200; }));
    EXPECT_EQ(events, Events(200, "sent"));
}

TEST_F(QtTcpConnectionTest, ReceivesAreServedInOrderWithinTheirBounds) {
    connectToServer();
    receive(3, 4);
    receive(1, 2);
    receive(2, 100);
    peer->write("ab");
    peer->flush();
    test::spinFor(30);
    EXPECT_THAT(events, IsEmpty());
    peer->write("cdefgh");
    ASSERT_TRUE(spinUntil([&] { return events.size() == 3; }));
    EXPECT_THAT(events, ElementsAre("received abcd", "received ef", "received gh"));
}

TEST_F(QtTcpConnectionTest, BytesThatWaitedAreGivenToALaterReceive) {
    connectToServer();
    peer->write("RPRT 0\n");
    test::spinFor(30);
    receive();
    ASSERT_TRUE(spinUntil([&] { return !events.empty(); }));
    EXPECT_THAT(events, ElementsAre("received RPRT 0\n"));
}

TEST_F(QtTcpConnectionTest, LargePiecesComeThroughAFullBuffer) {
    connectToServer();
    constexpr std::size_t kPiece = QtTcpConnection::kReadBuffer * 3 / 4;
    peer->write(QByteArray(kPiece * 20, 'x'));
    test::spinFor(30);
    std::size_t received = 0;
    int pieces = 0;
    for (int i = 0; i < 20; ++i) {
        connection->receive(kPiece, kPiece, [&](const TcpReceived& piece) {
            received += piece.data.size();
            ++pieces;
        });
    }
    ASSERT_TRUE(spinUntil([&] { return pieces == 20; }));
    EXPECT_EQ(received, kPiece * 20);
}

TEST_F(QtTcpConnectionTest, AReceiveThatAsksForMoreThanTheBufferIsServedFromAFullOne) {
    connectToServer();
    peer->write(QByteArray(300'000, 'x'));
    std::size_t received = 0;
    connection->receive(250'000, 300'000,
                        [&](const TcpReceived& piece) { received = piece.data.size(); });
    ASSERT_TRUE(spinUntil([&] { return received > 0; }));
    EXPECT_GE(received, QtTcpConnection::kReadBuffer);
}

TEST_F(QtTcpConnectionTest, AServerThatFloodsIsSlowedDownByTcp) {
    connectToServer();
    constexpr qint64 kFlood = 64'000'000;  // beyond what the system buffers for a connection
    peer->write(QByteArray(kFlood, 'x'));
    test::spinFor(200);
    EXPECT_GT(peer->bytesToWrite(), kFlood / 4);
}

TEST_F(QtTcpConnectionTest, AFloodDoesNotHoldUpTheLoop) {
    connectToServer();
    const QByteArray piece(1'000'000, '\n');
    const auto more = [&] {
        if (peer->bytesToWrite() < piece.size()) peer->write(piece);
    };
    QObject::connect(peer.get(), &QTcpSocket::bytesWritten, peer.get(), more);
    more();
    std::size_t received = 0;
    std::function<void()> receiveForEver = [&] {
        connection->receive(1, 4096, [&](const TcpReceived& bytes) {
            received += bytes.data.size();
            receiveForEver();
        });
    };
    receiveForEver();
    int ticks = 0;
    const auto timer = loop.every(0.02, [&] { ++ticks; });
    ASSERT_TRUE(spinUntil([&] { return ticks >= 10 && received > 1'000'000; }));
    connection->cancel();
    peer.reset();
}

TEST_F(QtTcpConnectionTest, AServerThatReadsNothingFailsTheSendInTheEnd) {
    connectToServer();
    peer->setReadBufferSize(1);
    const std::string piece(100'000, 'x');
    for (int i = 0; i < 1000 && !saw("failed"); ++i) {
        send(piece);
        QCoreApplication::processEvents();
    }
    ASSERT_TRUE(saw("failed"));
    EXPECT_EQ(events.back(), "failed");
    EXPECT_EQ(events[events.size() - 2], "not sent");
}

// --- the end

TEST_F(QtTcpConnectionTest, WhenThePeerClosesTheRestComesAndTheStateStaysUntilASendFails) {
    connectToServer();
    peer->write("last words");
    peer->disconnectFromHost();
    ASSERT_TRUE(spinUntil([&] { return peer->state() == QAbstractSocket::UnconnectedState; }));
    test::spinFor(30);
    receive(1, 5);
    receive(20, 4096);
    receive();
    ASSERT_TRUE(spinUntil([&] { return events.size() == 3; }));
    EXPECT_THAT(events, ElementsAre("received last ", "received words (end)", "received  (end)"));
    events.clear();
    send("F 1\n");
    ASSERT_TRUE(spinUntil([&] { return saw("failed"); }));
    EXPECT_THAT(events, ElementsAre("not sent", "failed"));
}

TEST_F(QtTcpConnectionTest, AWaitingReceiveHearsOfThePeersClose) {
    connectToServer();
    receive();
    peer->disconnectFromHost();
    ASSERT_TRUE(spinUntil([&] { return !events.empty(); }));
    test::spinFor(30);
    EXPECT_THAT(events, ElementsAre("received  (end)"));
}

TEST_F(QtTcpConnectionTest, AResetCountsAsThePeersClose) {
    connectToServer();
    receive();
    resetByPeer();
    ASSERT_TRUE(spinUntil([&] { return !events.empty(); }));
    test::spinFor(30);
    EXPECT_THAT(events, ElementsAre("received  (end)"));
    events.clear();
    send("F 1\n");
    send("F 2\n");
    ASSERT_TRUE(spinUntil([&] { return events.size() == 3; }));
    EXPECT_THAT(events, ElementsAre("not sent", "failed", "not sent"));
}

TEST_F(QtTcpConnectionTest, ASendRightAfterTheCloseFailsBehindTheReceive) {
    connectToServer();
    receive();
    peer->abort();
    for (int i = 0; i < 100'000 && !saw("failed"); ++i) {
        send("F 1\n");
        QCoreApplication::processEvents();
    }
    ASSERT_TRUE(saw("failed"));
    const auto end = std::ranges::find(events, "received  (end)");
    const auto firstFailed = std::ranges::find(events, "not sent");
    const auto failed = std::ranges::find(events, "failed");
    EXPECT_LT(end, firstFailed);
    EXPECT_EQ(firstFailed + 1, failed);
}

TEST_F(QtTcpConnectionTest, APeerGoneInSilenceFailsTheConnectionThoughNothingIsLeftToSend) {
    connectToServer();
    receive();
    cutOffPeer();
    send("F 145800000\n");
    ASSERT_TRUE(spinUntil([&] { return saw("failed"); }));
    EXPECT_THAT(events, ElementsAre("sent", "received  (failed)", "failed"));
}

TEST_F(QtTcpConnectionTest, TheSystemIsToldHowLongAPeerMayBeSilent) {
    connectToServer();
    EXPECT_EQ(ownOption(IPPROTO_TCP, TCP_USER_TIMEOUT), 4000);
    EXPECT_EQ(ownOption(SOL_SOCKET, SO_KEEPALIVE), 1);
    // The first question and the wait for its answer.
    EXPECT_LE(ownOption(IPPROTO_TCP, TCP_KEEPIDLE) + ownOption(IPPROTO_TCP, TCP_KEEPINTVL), 15);
}

TEST_F(QtTcpConnectionTest, CancelEndsWhatIsOutstandingAndIsReportedOnce) {
    connectToServer();
    receive();
    receive();
    calling([&] {
        connection->cancel();
        connection->cancel();
    });
    ASSERT_TRUE(spinUntil([&] { return saw("cancelled"); }));
    test::spinFor(20);
    EXPECT_THAT(events, ElementsAre("received  (failed)", "received  (failed)", "cancelled"));
    ASSERT_TRUE(spinUntil([&] { return peer->state() == QAbstractSocket::UnconnectedState; }));
}

TEST_F(QtTcpConnectionTest, AfterTheEndEverythingCompletesWithAnErrorAndNothingStarts) {
    makeConnection("127.0.0.1", server.serverPort());
    connection->cancel();
    connection->start();
    send("x");
    receive();
    ASSERT_TRUE(spinUntil([&] { return events.size() == 3; }));
    test::spinFor(20);
    EXPECT_THAT(events, ElementsAre("cancelled", "not sent", "received  (failed)"));
}

TEST_F(QtTcpConnectionTest, AFailedConnectionIsNotCancelledAnyMore) {
    connectToServer();
    resetByPeer();
    receive();
    ASSERT_TRUE(spinUntil([&] { return !events.empty(); }));
    send("x");
    connection->cancel();
    test::spinFor(20);
    EXPECT_THAT(events, ElementsAre("received  (end)", "not sent", "failed"));
}

TEST_F(QtTcpConnectionTest, CancelWhileWaitingEndsTheAttempts) {
    const auto port = server.serverPort();
    server.close();
    makeConnection("127.0.0.1", port);
    connection->start();
    ASSERT_TRUE(spinUntil([&] { return saw("waiting"); }));
    connection->cancel();
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost, port));
    test::spinFor(1500);
    EXPECT_FALSE(server.hasPendingConnections());
    EXPECT_EQ(events.back(), "cancelled");
}

TEST_F(QtTcpConnectionTest, AConnectionDroppedAfterItsCancelStillReportsIt) {
    connectToServer();
    const std::weak_ptr weak = connection;
    connection->cancel();
    connection.reset();
    ASSERT_TRUE(spinUntil([&] { return saw("cancelled"); }));
    EXPECT_TRUE(weak.expired());
}

TEST_F(QtTcpConnectionTest, ADroppedConnectionClosesInSilence) {
    connectToServer();
    receive();
    connection.reset();
    ASSERT_TRUE(spinUntil([&] { return peer->state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(QtTcpConnectionTest, AHandlerMayDropTheConnection) {
    makeConnection("127.0.0.1", server.serverPort());
    connection->setStateHandler([&](TcpState state) {
        if (state == TcpState::ready) connection.reset();
    });
    connection->start();
    ASSERT_TRUE(spinUntil([&] { return !connection && server.hasPendingConnections(); }));
    delete server.nextPendingConnection();

    connectToServer();
    connection->receive(1, 10, [&](const TcpReceived&) { connection.reset(); });
    peer->write("x");
    ASSERT_TRUE(spinUntil([&] { return !connection; }));

    connectToServer();
    connection->send("x", [&](bool) { connection.reset(); });
    ASSERT_TRUE(spinUntil([&] { return !connection; }));
}

TEST_F(QtTcpConnectionTest, AHandlerMayReplaceTheConnection) {
    connectToServer();
    connection->receive(1, 10, [&](const TcpReceived&) {
        connection->cancel();
        makeConnection("127.0.0.1", server.serverPort());
        connection->start();
    });
    peer->disconnectFromHost();
    ASSERT_TRUE(spinUntil([&] { return saw("ready"); }));
    EXPECT_THAT(events, ElementsAre("cancelled", "preparing", "ready"));
}

}  // namespace
}  // namespace veloran
