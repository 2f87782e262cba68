#pragma once

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/simulated_machine.h"

namespace veloran::test {

/// A radio server that answers each line at once; tests replace single answers.
struct RadioServer {
    bool satProto = true;
    /// An answer in place of the usual one, or nothing.
    std::function<std::optional<std::string>(const std::string& line)> special;
    std::vector<std::string> heard;

    std::string answer(const std::string& line) {
        heard.push_back(line);
        if (special) {
            if (const auto text = special(line)) return *text;
        }
        if (line.starts_with("\\") && !satProto) return "RPRT -4\n";
        if (line == "\\sat_caps\n") return "SAT_PROTO=1\nMODEL=Scripted\nEND\nRPRT 0\n";
        return "RPRT 0\n";
    }
    std::size_t countOf(std::string_view command) const {
        return static_cast<std::size_t>(
            std::count_if(heard.begin(), heard.end(),
                          [command](const auto& line) { return line.starts_with(command); }));
    }
};

/// The server at the other end of a simulated network: accepts, answers and fails. `serve` is to be
/// called whenever time has passed.
class RadioLink {
  public:
    explicit RadioLink(SimulatedMachine& machine) : machine_(machine) {}

    RadioServer server;
    bool reachable = true;  ///< what is refused is `waiting`, and not retried by itself
    bool silent = false;    ///< hears, and answers nothing
    std::size_t misdirected() const { return misdirected_; }  ///< lines to what was not connected

    void serve() {
        if (machine_.tcp.connections.empty()) return;
        meetNewest();
        if (!ready_ && !refused_ && !closed_) {
            (reachable ? ready_ : refused_) = true;
            report(reachable ? TcpState::ready : TcpState::waiting);
        }
        answerAll();
    }
    /// The connection breaks.
    void fail() {
        meetNewest();
        if (!ready_) return;
        answerAll();
        ready_ = false;
        closed_ = true;
        report(TcpState::failed);
        answerAll();
    }
    /// The peer closes; the next send tells it.
    void close() {
        meetNewest();
        if (!ready_) return;
        machine_.tcp.newest().closeByPeer();
        machine_.loop.runPosted();
        closed_ = true;
    }
    /// Another client claims the radio, until it is armed again.
    void steal() {
        server.special = [stolen = true](const std::string& line) mutable {
            if (line.starts_with("\\sat_aos")) stolen = false;
            const bool lost = stolen && line.starts_with("\\sat_");
            return lost ? std::optional<std::string>("RPRT -11\n") : std::nullopt;
        };
    }

  private:
    void meetNewest() {
        const auto count = machine_.tcp.connections.size();
        if (count == known_) return;
        known_ = count;
        read_ = 0;
        ready_ = refused_ = closed_ = false;
    }
    void report(TcpState state) {
        machine_.tcp.newest().report(state);
        machine_.loop.runPosted();
    }
    void answerAll() {
        auto& connection = machine_.tcp.newest();
        while (read_ < connection.sent.size()) {
            if (closed_ || !ready_) return dropAll(connection);
            const auto line = connection.sent[read_++];
            if (silent) continue;
            connection.deliver(server.answer(line));
            machine_.loop.runPosted();
        }
    }
    /// What came before the client could know is lost; what comes after goes astray.
    void dropAll(ScriptedConnection& connection) {
        if (!ready_) misdirected_ += connection.sent.size() - read_;
        read_ = connection.sent.size();
        if (!ready_) return;
        ready_ = false;
        connection.failLatestSend();
        report(TcpState::failed);
    }

    SimulatedMachine& machine_;
    std::size_t known_ = 0;  // connections made so far
    std::size_t read_ = 0;   // lines of the newest one
    bool ready_ = false;
    bool refused_ = false;
    bool closed_ = false;
    std::size_t misdirected_ = 0;
};

}  // namespace veloran::test
