#include "servers/simulated_radio.h"

#include <QDateTime>
#include <QHostAddress>
#include <QTcpSocket>

#include "base/text.h"

namespace veloran {
namespace {

Instant present() {
    return Instant::fromUnixSeconds(static_cast<double>(QDateTime::currentMSecsSinceEpoch()) /
                                    1000.0);
}

}  // namespace

SimulatedRadio::SimulatedRadio(CapsAnswer capsAnswer) : radio_(capsAnswer) {
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { accept(); });
}

SimulatedRadio::~SimulatedRadio() {
    onLine = nullptr;
    stop();
}

bool SimulatedRadio::start(std::uint16_t port) {
    if (!server_.listen(QHostAddress::LocalHost, port)) return false;
    port_ = server_.serverPort();
    return true;
}

void SimulatedRadio::stop() {
    server_.close();
    closeAll();
}

void SimulatedRadio::closeAll() {
    for (auto* socket : server_.findChildren<QTcpSocket*>()) socket->abort();
}

void SimulatedRadio::steal() {
    radio_.steal();
    note(0, "claimed by another client");
}

void SimulatedRadio::refuseUplink(bool refuse) {
    radio_.refuseUplink(refuse);
    note(0, refuse ? "uplink refused from now on" : "uplink accepted from now on");
}

std::vector<std::string> SimulatedRadio::received(std::string_view prefix) const {
    std::vector<std::string> lines;
    for (const auto& line : log_.lines()) {
        if (line.kind == RadioLogLine::Kind::received && line.text.starts_with(prefix)) {
            lines.push_back(line.text);
        }
    }
    return lines;
}

void SimulatedRadio::accept() {
    while (auto* socket = server_.nextPendingConnection()) {
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        const auto client = ++lastClient_;
        note(client, "connected");
        QObject::connect(socket, &QTcpSocket::readyRead, &server_,
                         [this, socket, client] { read(socket, client); });
        QObject::connect(socket, &QTcpSocket::disconnected, &server_, [this, socket, client] {
            radio_.clientGone(client);
            note(client, "disconnected");
            socket->deleteLater();
        });
    }
}

void SimulatedRadio::read(QTcpSocket* socket, RadioDialect::ClientId client) {
    while (socket->canReadLine()) {
        const std::string raw = socket->readLine().toStdString();
        const std::string line(trimmed(raw, Blanks::withNewlines));
        write({present(), RadioLogLine::Kind::received, client, line});
        if (line == "q") return socket->disconnectFromHost();
        const std::string reply = radio_.reply(client, line);
        socket->write(reply.data(), static_cast<qint64>(reply.size()));
        for (const auto piece : split(reply, '\n')) {
            if (piece.empty()) continue;
            write({present(), RadioLogLine::Kind::sent, client, std::string(piece)});
        }
    }
    if (socket->bytesAvailable() > static_cast<qint64>(kLongestLine)) socket->abort();
}

void SimulatedRadio::note(RadioDialect::ClientId client, std::string text) {
    write({present(), RadioLogLine::Kind::note, client, std::move(text)});
}

void SimulatedRadio::write(RadioLogLine line) {
    const auto& kept = log_.add(std::move(line));
    if (onLine) onLine(kept);
}

}  // namespace veloran
