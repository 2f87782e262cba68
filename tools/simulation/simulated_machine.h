#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/machine.h"

namespace veloran {

/// Simulated clock and main loop in one: time passes only in `advance`, and everything runs on the
/// calling thread in exact order (posts first in first out, timers by time, then by age).
class SimulatedLoop final : public MainLoop, public Clock {
  public:
    explicit SimulatedLoop(Instant start) : now_(start) {}

    Instant now() const override { return now_; }
    void post(Task task) override;
    void after(double seconds, Task task) override;
    [[nodiscard]] std::unique_ptr<Timer> every(double seconds, Task task) override;

    /// Runs everything that is posted, until nothing is left.
    void runPosted();
    /// Lets time pass: runs timers in order of time and what they post, up to now + seconds.
    void advance(double seconds);
    /// Sets the clock without running timers: a laptop that slept, a clock set by NTP. Timers keep
    /// their remaining waits.
    void jumpClock(double seconds);
    /// Seconds that timers have counted so far, whatever the clock was set to meanwhile.
    double elapsed() const { return elapsed_; }
    std::size_t timerCount() const;

  private:
    struct Entry;
    Instant now_;
    double elapsed_ = 0;  // monotonic seconds, what timers count by
    std::uint64_t nextAge_ = 0;
    std::deque<Task> posted_;
    std::vector<std::shared_ptr<Entry>> entries_;
};

/// Work of the pool, run as posted tasks of the simulated loop: later, and in order.
class SimulatedWorkers final : public WorkerPool {
  public:
    explicit SimulatedWorkers(MainLoop& loop) : loop_(loop) {}
    using WorkerPool::run;
    void run(MainLoop::Task task, Priority priority) override;
    /// Holds tasks back until released, to look at the time between.
    bool held = false;
    void release();
    /// Takes out what is held, to post it in another order.
    std::vector<MainLoop::Task> takeHeld();

  private:
    MainLoop& loop_;
    std::deque<MainLoop::Task> waiting_;
};

/// `values` are what the program remembers, `stored` what its next start will find.
class MemorySettings final : public SettingsStore {
  public:
    std::optional<SettingValue> value(std::string_view key) const override;
    void set(std::string_view key, SettingValue value) override;
    void remove(std::string_view key) override;
    std::vector<std::string> keys() const override;
    std::map<std::string, SettingValue, std::less<>> values;
    std::vector<std::string> writes;  ///< keys in the order they were written

    /// While not writable, changes are remembered and wait for the first one that can be written.
    bool writable = true;
    std::size_t refusedWrites = 0;
    const std::map<std::string, SettingValue, std::less<>>& stored() const { return stored_; }
    /// A new start of the program: what was never written is gone.
    void restart();

  private:
    void store();
    std::map<std::string, SettingValue, std::less<>> stored_;
};

class MemoryFiles final : public FileStore {
  public:
    std::filesystem::path homeDirectory() const override { return "/home/test"; }
    std::optional<std::string> read(const std::filesystem::path& path) const override;
    bool writeAtomically(const std::filesystem::path& path, std::string_view content) override;
    bool remove(const std::filesystem::path& path) override;
    bool exists(const std::filesystem::path& path) const override;
    PutAside putAside(const std::filesystem::path& path) override;
    void removeDirectory(const std::filesystem::path& path) override;
    std::map<std::filesystem::path, std::string> files;
    bool writable = true;  ///< a read-only disk neither writes nor removes
    /// Room for one more file of that size. A full disk still removes.
    std::optional<std::size_t> room;
    std::size_t refusedWrites = 0;
};

/// Answers by address; requests without a script fail. Answers come by post, or after a delay.
class ScriptedHttp final : public HttpClient {
  public:
    struct Answer {
        std::optional<std::string> body;
        double delaySeconds = 0;
        bool never = false;
        int status = 200;  ///< told with a body, and by itself where it is 304
    };
    explicit ScriptedHttp(MainLoop& loop) : loop_(loop) {}
    void get(const std::string& url, Completion completion) override;
    std::map<std::string, Answer> answers;
    /// An answer in place of the usual one, or nothing.
    std::function<std::optional<Answer>(const std::string& url, const Answer& usual)> special;
    std::vector<std::string> requests;

  private:
    MainLoop& loop_;
};

/// The connections that the code under test has made. Attempts never succeed by themselves: the
/// test reports states and hands over bytes.
class ScriptedConnection final : public TcpConnection {
  public:
    ScriptedConnection(MainLoop& loop, std::string toHost, std::uint16_t toPort)
        : host(std::move(toHost)), port(toPort), loop_(loop) {}
    void setStateHandler(std::function<void(TcpState)> handler) override;
    void start() override;
    void send(std::string bytes, std::function<void(bool ok)> completion) override;
    void receive(std::size_t minimum, std::size_t maximum,
                 std::function<void(TcpReceived)> completion) override;
    void cancel() override;

    void report(TcpState state);      ///< posts the state to the handler
    void deliver(std::string bytes);  ///< bytes from the server, in one piece up to `maximum`
    void closeByPeer();               ///< completes the receive with isComplete
    void failLatestSend();            ///< calls the latest send's completion with an error

    std::string host;
    std::uint16_t port = 0;
    bool started = false;
    bool cancelled = false;
    /// Whether cancel() makes the connection report `cancelled` by itself.
    bool reportsCancel = true;
    std::vector<std::string> sent;
    /// Called for each send, so that a network can tell the order across connections.
    std::function<void()> onSend;

  private:
    struct PendingReceive {
        std::size_t minimum, maximum;
        std::function<void(TcpReceived)> completion;
    };
    void serveReceives();
    MainLoop& loop_;
    std::function<void(TcpState)> handler_;
    std::function<void(bool)> latestSend_;
    std::deque<PendingReceive> receives_;
    std::string incoming_;
    bool peerClosed_ = false;
    bool ended_ = false;
};

class ScriptedNetwork final : public TcpNetwork {
  public:
    explicit ScriptedNetwork(MainLoop& loop) : loop_(loop) {}
    std::shared_ptr<TcpConnection> makeConnection(const std::string& host,
                                                  std::uint16_t port) override;
    ScriptedConnection& newest() { return *connections.back(); }
    /// The latest send of all connections reports an error.
    void failLatestSend();
    std::vector<std::shared_ptr<ScriptedConnection>> connections;
    bool reportsCancel = true;

  private:
    MainLoop& loop_;
    ScriptedConnection* latestSender_ = nullptr;
};

class ScriptedLocation final : public LocationService {
  public:
    explicit ScriptedLocation(MainLoop& loop) : loop_(loop) {}
    void locate(Completion completion) override;
    std::optional<Position> position;  ///< absent: there is no service

  private:
    MainLoop& loop_;
};

/// The whole machine, in memory.
struct SimulatedMachine {
    explicit SimulatedMachine(Instant start = Instant{817000000.0});  // late in 2026

    SimulatedLoop loop;
    SimulatedWorkers workers{loop};
    MemorySettings settings;
    MemoryFiles files;
    ScriptedHttp http{loop};
    ScriptedNetwork tcp{loop};
    ScriptedLocation location{loop};
    Machine machine{loop, loop, workers, settings, files, http, tcp, location};
};

}  // namespace veloran
