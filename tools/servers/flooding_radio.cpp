#include "servers/flooding_radio.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <random>
#include <string_view>

namespace veloran {
namespace {

constexpr int kLookMilliseconds = 20;  // how long a wait may be before it is seen that it is over
constexpr std::size_t kPiece = 64 * 1024;

bool isReady(int socket, short what) {
    pollfd wanted{socket, what, 0};
    return ::poll(&wanted, 1, kLookMilliseconds) > 0;
}

/// Whole patterns, of a piece's size at least.
std::string repeated(const std::string& pattern) {
    std::string bytes = pattern;
    while (bytes.size() < kPiece) bytes += pattern;
    return bytes;
}

}  // namespace

FloodingRadio::Flood FloodingRadio::lineFeeds() {
    return {"\n", 2e6};
}

FloodingRadio::Flood FloodingRadio::endlessLine() {
    return {"x", 0};
}

FloodingRadio::Flood FloodingRadio::binary() {
    std::mt19937 random(1);
    std::string bytes(1'000'003, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random() & 0xFF);
    return {bytes, 0};
}

FloodingRadio::~FloodingRadio() {
    isEnding_ = true;
    if (thread_.joinable()) thread_.join();
    if (listener_ >= 0) ::close(listener_);
}

bool FloodingRadio::start() {
    listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listener_, any, size) != 0 || ::listen(listener_, 1) != 0 ||
        ::getsockname(listener_, any, &size) != 0) {
        return false;
    }
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { serve(); });
    return true;
}

void FloodingRadio::serve() {
    while (!isEnding_) {
        if (!isReady(listener_, POLLIN)) continue;
        const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (client < 0) continue;
        serveClient(client);
        ::close(client);
    }
}

void FloodingRadio::serveClient(int client) {
    if (answerUntilArmed(client)) flood(client);
}

/// False when the client is gone before.
bool FloodingRadio::answerUntilArmed(int client) const {
    std::string heard;
    while (!isEnding_) {
        if (!isReady(client, POLLIN)) continue;
        std::array<char, 1024> bytes{};
        const auto count = ::recv(client, bytes.data(), bytes.size(), 0);
        if (count <= 0) return false;
        heard.append(bytes.data(), static_cast<std::size_t>(count));
        for (auto end = heard.find('\n'); end != std::string::npos; end = heard.find('\n')) {
            const auto line = heard.substr(0, end);
            heard.erase(0, end + 1);
            if (!sendAll(client, line == "\\sat_caps" ? "SAT_PROTO=1\nRPRT 0\n" : "RPRT 0\n")) {
                return false;
            }
            if (line.starts_with("\\sat_aos")) return true;
        }
    }
    return false;
}

void FloodingRadio::flood(int client) {
    using Clock = std::chrono::steady_clock;
    const auto bytes = repeated(flood_.pattern);
    const auto begun = Clock::now();
    std::array<char, 4096> heard{};
    double sentHere = 0;
    std::size_t ofReply = 0;
    while (!isEnding_) {
        while (::recv(client, heard.data(), heard.size(), 0) > 0) {
        }
        const std::chrono::duration<double> passed = Clock::now() - begun;
        if (flood_.bytesPerSecond > 0 && sentHere > flood_.bytesPerSecond * passed.count()) {
            isReady(client, POLLIN);
            continue;
        }
        const auto begin = ofReply % flood_.pattern.size();
        const auto piece = std::string_view(bytes).substr(begin, kPiece);
        if (!sendAll(client, piece)) return;
        sent_ += piece.size();
        sentHere += static_cast<double>(piece.size());
        ofReply += piece.size();
        if (ofReply < kReply) continue;
        ofReply = 0;
        if (!sendAll(client, "\nRPRT 0\n")) return;
    }
}

bool FloodingRadio::sendAll(int client, std::string_view bytes) const {
    while (!bytes.empty()) {
        if (isEnding_) return false;
        const auto count = ::send(client, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            isReady(client, POLLOUT);
        } else {
            return false;
        }
    }
    return true;
}

}  // namespace veloran
