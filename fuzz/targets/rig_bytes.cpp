// Bytes of a radio server, through framer, reply queue and client. The input is a script of one
// letter for each step; '<' is followed by a length byte and that many bytes of the server.

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "checks.h"
#include "require.h"
#include "rig/rigctld_client.h"
#include "support/simulated_machine.h"

namespace veloran::fuzz {

namespace {

class Steps {
  public:
    explicit Steps(std::string_view bytes) : rest_(bytes) {}
    bool atEnd() const { return rest_.empty(); }
    char next() {
        const char c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }
    std::string_view received() {
        const std::size_t length = rest_.empty() ? 0 : static_cast<unsigned char>(next());
        const auto bytes = rest_.substr(0, length);
        rest_.remove_prefix(bytes.size());
        return bytes;
    }

  private:
    std::string_view rest_;
};

/// What the framer has to make of all the bytes, however they were cut.
std::vector<std::string> expectedLines(std::string_view bytes) {
    std::vector<std::string> lines;
    for (auto end = bytes.find('\n'); end != std::string_view::npos; end = bytes.find('\n')) {
        const auto line = bytes.substr(0, end);
        lines.emplace_back(isValidUtf8(line) ? trimmed(line, Blanks::withNewlines) : "");
        bytes.remove_prefix(end + 1);
    }
    return lines;
}

/// Framer and queue alone: 'a' expects a reply, 'X' flushes, '<' brings bytes.
void checkMatching(std::string_view bytes) {
    LineFramer framer;
    ReplyQueue queue;
    std::string all;
    std::vector<std::string> lines;
    std::deque<int> waiting;
    int issued = 0;
    const auto expectOldest = [&](const ReplyQueue::Answer& answer) {
        require(!waiting.empty(), "an answer has a command");
        answer.completion(answer.code, answer.lines);
    };
    for (Steps steps(bytes); !steps.atEnd();) {
        const char step = steps.next();
        if (step == 'a') {
            waiting.push_back(issued);
            queue.expect([&waiting, tag = issued](std::int64_t, const ReplyLines&) {
                require(waiting.front() == tag, "a reply goes to the oldest command");
                waiting.pop_front();
            });
            ++issued;
        } else if (step == 'X') {
            for (const auto& completion : queue.flush()) {
                expectOldest({completion, ReplyQueue::kConnectionGone, {}});
            }
            require(waiting.empty(), "a flush leaves nothing");
        } else if (step == '<') {
            const auto piece = steps.received();
            all += piece;
            for (auto rest = piece; auto line = framer.takeLine(rest);) {
                lines.emplace_back(line->text);
                const bool ends = line->startsWith("RPRT ") && !waiting.empty();
                const auto answer = queue.dispatch(*line);
                require(answer.has_value() == ends, "a report ends a command, nothing else does");
                if (answer) expectOldest(*answer);
            }
        }
        require(queue.size() == waiting.size(), "as many wait as were not answered");
    }
    require(lines == expectedLines(all), "lines do not depend on how bytes are cut");
    require(framer.buffered() == all.substr(all.rfind('\n') + 1), "the rest of a line waits");
}

/// The client with the network of the simulated machine. Every command that waits for a reply has a
/// number; those that report prove that all before them were answered too, and none behind.
class ClientWorld {
  public:
    ClientWorld() {
        client_->onArmedChange = [this](bool) { ++told_; };
        client_->onModeChange = [this](RigProtocolMode) { ++told_; };
        client_->onSatModeLost = [this] { ++told_; };
    }

    void play(Steps& steps) {
        const char step = steps.next();
        if (step == '<') {
            const std::string bytes(steps.received());
            if (auto* server = connection()) server->deliver(bytes);
        } else if (!playServer(step)) {
            playClient(step);
        }
        if (step == '.' || step == 't' || step == 'T') requireToldOfAnswered();
        require(!client_->satModeArmed() || client_->lastArmedName(), "an armed radio has a name");
    }

    void finish() {
        machine_.loop.runPosted();
        client_->disconnect();
        machine_.loop.runPosted();
        require(waiting_.empty(), "every command is answered when its connection ends");
        require(client_->pendingResponses() == 0, "nothing waits without a connection");
        require(!client_->isConnected() && !client_->satModeArmed(), "an end is an end");
        requireWholeLines();
    }

  private:
    test::ScriptedConnection* connection() {
        auto& made = machine_.tcp.connections;
        return made.empty() ? nullptr : made[made.size() - 1 - back_ % made.size()].get();
    }

    /// False for steps of the client.
    bool playServer(char step) {
        auto* server = connection();
        const auto report = [server](TcpState state) {
            if (server) server->report(state);
        };
        if (step >= '0' && step <= '9') return back_ = static_cast<std::size_t>(step - '0'), true;
        if (step == '.') return machine_.loop.runPosted(), true;
        if (step == 't') return machine_.loop.advance(0.5), true;
        if (step == 'T') return machine_.loop.advance(2.5), true;
        if (step == 'j') return machine_.loop.jumpClock(-60), true;
        if (step == 'e') return machine_.tcp.failLatestSend(), true;
        if (step == 'p') return report(TcpState::preparing), true;
        if (step == 'r') return reportReady(server), true;
        if (step == 'w') return report(TcpState::waiting), true;
        if (step == 'f') return report(TcpState::failed), true;
        if (step == 'x') return report(TcpState::cancelled), true;
        if (step == 'q' && server) return server->closeByPeer(), true;
        return false;
    }

    void playClient(char step) {
        if (step == 'c') client_->connect("radio.test", 4532, [this](bool) { ++told_; });
        if (step == 'X') client_->disconnect();
        if (step == 'D') {
            expectEntry(client_->isConnected() && !client_->forceClassic,
                        [this] { client_->detectCapabilities(); });
        }
        if (step == 'C') client_->forceClassic = !client_->forceClassic;
        if (step == 'F') client_->setFrequency(145'800'000.5);
        if (step == 'M') client_->setMode("USB", 2400);
        if (step == 'G') askFrequency();
        if (step == 'd') {
            expectEntry(isArmed(), [this] { client_->satDL(145'800'000, 3000.25, -20.5); });
        }
        if (step == 'u') {
            expectEntry(isArmed() && !client_->ulUnsupported(),
                        [this] { client_->satUL(435'000'000, -3000.25, std::nullopt); });
        }
        if (step == 'a') issue([&](auto done) { client_->satAOS("ISS (ZARYA)", std::move(done)); });
        if (step == 'l') issue([&](auto done) { client_->satLOS(std::move(done)); });
    }

    bool speaks() const {
        return client_->isConnected() && client_->protocolMode() == RigProtocolMode::satProtoV1;
    }
    bool isArmed() const { return speaks() && client_->satModeArmed(); }

    /// The command waits for a reply, or is not sent.
    template <class Command>
    void expectEntry(bool expected, Command command) {
        const auto before = client_->pendingResponses();
        command();
        noteEntries(before, expected);
    }
    void noteEntries(std::size_t before, bool expected) {
        const std::size_t more = expected ? 1 : 0;
        require(client_->pendingResponses() == before + more,
                "a command waits for its reply where it is sent, and only there");
        entered_ += more;
    }
    /// A connection that becomes ready is probed at once: the tasks before and behind the report
    /// see whether the probe waits.
    void reportReady(test::ScriptedConnection* server) {
        if (!server) return;
        const auto before = std::make_shared<std::size_t>(0);
        machine_.loop.post([this, before] { *before = client_->pendingResponses(); });
        server->report(TcpState::ready);
        machine_.loop.post([this, before] { noteEntries(*before, !client_->forceClassic); });
    }
    std::size_t answered() const { return entered_ - client_->pendingResponses(); }

    void requireToldOfAnswered() const {
        require(waiting_.empty() || waiting_.front() > answered(), "an answered command is told");
    }

    /// Passes by the queue: bytes that come in go to it or to the framer.
    void askFrequency() {
        const auto answers = std::make_shared<int>(0);
        const bool connected = client_->isConnected();
        client_->getFrequency([answers, connected](std::optional<double> hz) {
            require(++*answers == 1, "a frequency is told once");
            require(connected || !hz, "no frequency comes without a connection");
        });
        require(*answers == (connected ? 0 : 1), "a frequency is told inside the call if absent");
    }

    template <class Command>
    void issue(Command command) {
        const auto number = entered_ + 1;
        insideCall_ = true;
        refused_ = false;
        waiting_.push_back(number);
        expectEntry(speaks(), [&] { command(completionOf(number)); });
        insideCall_ = false;
        require(refused_ == !speaks(), "a command is sent where the server knows it");
    }

    std::function<void(std::int64_t)> completionOf(std::size_t number) {
        return [this, number](std::int64_t code) {
            if (insideCall_) {
                require(code == -1 && waiting_.back() == number, "a command not sent says so");
                waiting_.pop_back();
                refused_ = true;
                return;
            }
            require(!waiting_.empty() && waiting_.front() == number && number <= answered(),
                    "replies are matched first in, first out, and once");
            waiting_.pop_front();
        };
    }

    void requireWholeLines() const {
        for (const auto& made : machine_.tcp.connections) {
            for (const auto& text : made->sent) {
                require(text.find('\n') == text.size() - 1, "each message is one line");
            }
        }
    }

    test::SimulatedMachine machine_;
    std::shared_ptr<RigctldClient> client_ = RigctldClient::create(machine_.tcp, machine_.loop);
    std::size_t entered_ = 0;          // commands and probes that waited for a reply so far
    std::deque<std::size_t> waiting_;  // those of them that report
    int told_ = 0;
    bool insideCall_ = false;
    bool refused_ = false;  // the latest command, inside its call
    std::size_t back_ = 0;  // connections before the newest one
};

}  // namespace

void checkRigBytes(std::string_view bytes) {
    checkMatching(bytes);
    ClientWorld world;
    for (Steps steps(bytes); !steps.atEnd();) world.play(steps);
    world.finish();
}

}  // namespace veloran::fuzz
