#include "support/faulty_radio.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

namespace veloran::test {
namespace {

constexpr double kRoundTrip = 0.004;
constexpr double kRetrySeconds = 1;
constexpr double kAttemptSeconds = 5;  // until an attempt that nobody answers is given up
constexpr double kProbeSeconds = 2;
constexpr std::size_t kLargestBacklog = 1024 * 1024;

}  // namespace

// ---- FaultyConnection

void FaultyConnection::setStateHandler(std::function<void(TcpState)> handler) {
    handler_ = std::move(handler);
}

void FaultyConnection::enter(TcpState state) {
    if (state == state_) return;
    state_ = state;
    radio_.loop_.post([self = shared_from_this(), state] {
        self->told_ = state;
        if (self->handler_) self->handler_(state);
    });
}

void FaultyConnection::start() {
    enter(TcpState::preparing);
    attempt();
}

void FaultyConnection::attempt() {
    const auto later = [this](double seconds, void (FaultyConnection::*step)()) {
        radio_.loop_.after(seconds, [weak = weak_from_this(), step] {
            const auto self = weak.lock();
            if (self && !self->isOver()) (self.get()->*step)();
        });
    };
    if (radio_.road == FaultyRadio::Road::open) {
        halfOpen_ = false;
        enter(TcpState::ready);
        return;
    }
    const bool refused = radio_.road == FaultyRadio::Road::refusing;
    radio_.tally_.add(refused ? Fault::refused : Fault::unanswered);
    if (refused) enter(TcpState::waiting);
    later(refused ? kRetrySeconds : kAttemptSeconds + kRetrySeconds, &FaultyConnection::attempt);
}

void FaultyConnection::end(TcpState state) {
    for (auto& send : std::exchange(unsent_, {})) {
        radio_.loop_.post([send = std::move(send)] { send(false); });
    }
    for (auto& receive : std::exchange(receives_, {})) {
        radio_.loop_.post([completion = std::move(receive.completion)] {
            completion({.data = {}, .failed = true});
        });
    }
    outgoing_.clear();
    unread_.clear();
    incoming_.clear();
    enter(state);
    radio_.ended();
}

void FaultyConnection::cancel() {
    if (!isOver()) end(TcpState::cancelled);
}

void FaultyConnection::close() {
    if (!isReady() || peerClosed_) return;
    peerClosed_ = true;
    outgoing_.clear();
    unread_.clear();
    serveReceives();
    if (!unsent_.empty()) end(TcpState::failed);
}

void FaultyConnection::send(std::string bytes, std::function<void(bool ok)> completion) {
    if (told_ != TcpState::ready) ++radio_.misdirected;
    if (isOver() || peerClosed_) {
        unsent_.push_back(std::move(completion));
        return end(isOver() ? state_ : TcpState::failed);
    }
    const auto number = radio_.lines_;
    radio_.sent(bytes);
    if (radio_.stalled && !halfOpen_) {
        radio_.tally_.add(Fault::stalled);
        backlog_ += bytes.size();
        unread_.push_back({number, std::move(bytes)});
        unsent_.push_back(std::move(completion));
        if (backlog_ > kLargestBacklog) end(TcpState::failed);
        return;
    }
    radio_.loop_.post([completion = std::move(completion)] { completion(true); });
    if (halfOpen_) {
        radio_.tally_.add(Fault::halfOpen);
        return;
    }
    radio_.answer(*this, number, bytes);
}

/// The server reads again.
void FaultyConnection::readAll() {
    backlog_ = 0;
    for (auto& send : std::exchange(unsent_, {})) {
        radio_.loop_.post([send = std::move(send)] { send(true); });
    }
    for (const auto& [number, line] : std::exchange(unread_, {}))
        radio_.answer(*this, number, line);
}

void FaultyConnection::receive(std::size_t minimum, std::size_t maximum,
                               std::function<void(TcpReceived)> completion) {
    receives_.push_back({minimum, maximum, std::move(completion)});
    if (isOver()) return end(state_);
    serveReceives();
}

void FaultyConnection::put(Piece piece) {
    if (!outgoing_.empty()) piece.due = std::max(piece.due, outgoing_.back().due);
    const double wait = piece.due - radio_.loop_.elapsed();
    outgoing_.push_back(std::move(piece));
    radio_.loop_.after(wait, [weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->deliverDue();
    });
}

void FaultyConnection::deliverDue() {
    constexpr double kRounding = 1e-9;
    while (!outgoing_.empty() && outgoing_.front().due <= radio_.loop_.elapsed() + kRounding) {
        auto piece = std::move(outgoing_.front());
        outgoing_.pop_front();
        incoming_ += piece.bytes;
        if (piece.delivered) piece.delivered();
    }
    serveReceives();
}

void FaultyConnection::serveReceives() {
    while (!receives_.empty()) {
        const auto next = receives_.front();
        if (incoming_.size() < next.minimum && !peerClosed_) return;
        receives_.pop_front();
        TcpReceived received;
        received.data = incoming_.substr(0, next.maximum);
        incoming_.erase(0, received.data.size());
        received.isComplete = peerClosed_ && incoming_.empty();
        radio_.loop_.post([completion = next.completion, received = std::move(received)] {
            completion(received);
        });
    }
}

// ---- FaultyRadio: faults

std::shared_ptr<TcpConnection> FaultyRadio::makeConnection(const std::string& /*host*/,
                                                           std::uint16_t /*port*/) {
    auto connection = std::make_shared<FaultyConnection>(*this);
    newest_ = connection;
    armed = false;  // the one before is gone, or about to go
    return connection;
}

void FaultyRadio::reset() {
    const auto connection = live();
    if (!connection || !connection->isReady() || connection->peerClosed_) return;
    tally_.add(Fault::reset);
    armed = false;
    connection->close();
}

void FaultyRadio::loseSilently() {
    const auto connection = live();
    if (!connection || !connection->isReady()) return;
    connection->halfOpen_ = true;
    connection->outgoing_.clear();
    armed = false;
}

void FaultyRadio::steal() {
    if (!armed) return;
    stolen_ = true;
    armed = false;
}

void FaultyRadio::restart(bool speaksExtension) {
    if (speaksExtension != satProto) tally_.add(Fault::otherDialect);
    satProto = speaksExtension;
    reset();
    armed = false;
}

void FaultyRadio::heal() {
    road = Road::open;
    replies.reset();
    stalled = false;
    const auto connection = live();
    if (!connection) return;
    // A network that is back answers what belongs to no connection any more.
    if (connection->halfOpen_) return connection->close();
    connection->readAll();
}

// ---- FaultyRadio: the server

/// Answers without an owner harm nobody: only commands of the extension wait for one.
void FaultyRadio::spoil(const std::string& line) {
    spoiled_ = spoiled_ || !entries_.empty() || line.starts_with("\\");
}

FaultyRadio::Reply FaultyRadio::replyTo(const std::string& line) {
    if (line.starts_with("\\")) {
        return satProto ? replyToExtension(line) : Reply{"RPRT -4\n", -4};
    }
    if (line.starts_with("F ")) ++frequencies;
    return {"RPRT 0\n", 0};
}

FaultyRadio::Reply FaultyRadio::replyToExtension(const std::string& line) {
    if (line.starts_with("\\sat_caps")) return {"SAT_PROTO=1\nMODEL=Faulty\nEND\nRPRT 0\n", 0};
    if (line.starts_with("\\sat_aos ")) {
        armed = true;
        stolen_ = false;
        armedName = line.substr(9, line.size() - 10);
        return {"RPRT 0\n", 0};
    }
    if (line.starts_with("\\sat_los")) {
        armed = false;
        return {"RPRT 0\n", 0};
    }
    if (!armed) {
        if (stolen_) tally_.add(Fault::stolen);
        return {"RPRT -11\n", -11};
    }
    if (line.starts_with("\\sat_dl")) {
        ++downlinks;
        return {"RPRT 0\n", 0};
    }
    ++uplinks;
    if (!strikes(Fault::uplinkRefused)) return {"RPRT 0\n", 0};
    everRefusedUplink = true;
    return {"RPRT -9\n", -9};
}

bool FaultyRadio::strikes(Fault fault) {
    if (replies != fault || uniform(1) >= share) return false;
    tally_.add(fault);
    return true;
}

void FaultyRadio::answer(FaultyConnection& connection, std::uint64_t number,
                         const std::string& line) {
    auto reply = replyTo(line);
    double due = loop_.elapsed() + kRoundTrip;
    if (strikes(Fault::missing)) return spoil(line);
    if (strikes(Fault::error)) {
        static constexpr std::array kErrors{-1, -5, -8, -11};
        reply.code = kErrors.at(pick(kErrors.size()));
        reply.text = fmt::format("RPRT {}\n", reply.code);
        const bool decides = line.starts_with("\\sat_caps") || line.starts_with("\\sat_aos");
        if (decides) spoil(line);
    }
    if (strikes(Fault::garbage)) {
        spoil(line);
        garbled_ = true;
        connection.put({due, garbage(), {}});
    }
    if (strikes(Fault::endless)) {
        spoil(line);
        garbled_ = true;
        connection.put({due, std::string(1 + pick(100'000), 'x'), {}});
    }
    if (strikes(Fault::late)) due += uniform(4);
    const auto delivered = [this, number, code = reply.code] { matched(number, code); };
    if (strikes(Fault::split)) {
        for (const char& byte : reply.text) {
            const bool isLast = &byte == &reply.text.back();
            connection.put(
                {due, std::string(1, byte), isLast ? std::function<void()>(delivered) : nullptr});
            due += 0.0005;
        }
        return;
    }
    connection.put({due, reply.text, delivered});
    if (strikes(Fault::doubled)) connection.put({due, reply.text, delivered});
}

std::string FaultyRadio::garbage() {
    static const std::vector<std::string> kKnown{"RPRT\n",
                                                 "RPRT abc\n",
                                                 "RPRT 99999999999999999999\n",
                                                 "END\n",
                                                 "\r\n",
                                                 "SAT_PROTO=1\n",
                                                 "RPRT 0 0\n",
                                                 "SAT_PROTO=\n",
                                                 "\xFF\xFE\n",
                                                 "RPRT -0x1\nRPR",
                                                 "get_freq:\n",
                                                 "145800000\nVFOA\n",
                                                 "T 0"};
    if (pick(2) == 0) return kKnown[pick(kKnown.size())];
    std::string bytes(1 + pick(300), '\0');
    for (char& byte : bytes) byte = static_cast<char>(pick(256));
    return bytes;
}

// ---- FaultyRadio: the books

std::optional<std::size_t> FaultyRadio::owed() const {
    return garbled_ ? std::nullopt : std::optional(entries_.size());
}

void FaultyRadio::sent(const std::string& line) {
    const auto number = lines_++;
    if (line.starts_with("\\")) {
        entries_.push_back({number, loop_.elapsed(), line.starts_with("\\sat_caps")});
    }
}

/// The program lets go of all that waits, whichever connection has ended.
void FaultyRadio::ended() {
    entries_.clear();
    spoiled_ = garbled_ = false;
}

void FaultyRadio::matched(std::uint64_t number, std::int64_t code) {
    if (entries_.empty()) return;
    const auto entry = entries_.front();
    entries_.pop_front();
    if (entry.number != number && code != 0) spoiled_ = true;
    if (entry.isProbe && loop_.elapsed() - entry.sentAt >= kProbeSeconds) spoiled_ = true;
}

}  // namespace veloran::test
