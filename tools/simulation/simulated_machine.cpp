#include "simulation/simulated_machine.h"

#include <algorithm>
#include <utility>

namespace veloran {

// ---- SimulatedLoop

struct SimulatedLoop::Entry {
    double due = 0;  // seconds of the loop's own count
    std::uint64_t age = 0;
    double interval = 0;  // 0: runs once
    Task task;
    bool cancelled = false;
};

namespace {

class SimulatedTimer final : public Timer {
  public:
    explicit SimulatedTimer(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    ~SimulatedTimer() override { cancel_(); }

  private:
    std::function<void()> cancel_;
};

}  // namespace

void SimulatedLoop::post(Task task) {
    posted_.push_back(std::move(task));
}

void SimulatedLoop::after(double seconds, Task task) {
    auto entry = std::make_shared<Entry>();
    entry->due = elapsed_ + seconds;
    entry->age = nextAge_++;
    entry->task = std::move(task);
    entries_.push_back(std::move(entry));
}

std::unique_ptr<Timer> SimulatedLoop::every(double seconds, Task task) {
    auto entry = std::make_shared<Entry>();
    entry->due = elapsed_ + seconds;
    entry->age = nextAge_++;
    entry->interval = seconds;
    entry->task = std::move(task);
    entries_.push_back(entry);
    return std::make_unique<SimulatedTimer>([entry] { entry->cancelled = true; });
}

void SimulatedLoop::runPosted() {
    while (!posted_.empty()) {
        auto task = std::move(posted_.front());
        posted_.pop_front();
        task();
    }
}

void SimulatedLoop::advance(double seconds) {
    const double end = elapsed_ + seconds;
    runPosted();
    for (;;) {
        std::erase_if(entries_, [](const auto& entry) { return entry->cancelled; });
        const auto next =
            std::min_element(entries_.begin(), entries_.end(), [](const auto& a, const auto& b) {
                return std::pair(a->due, a->age) < std::pair(b->due, b->age);
            });
        if (next == entries_.end() || (*next)->due > end) break;
        const auto entry = *next;  // keeps the task alive if it cancels itself
        if (entry->due > elapsed_) {
            now_ = now_ + (entry->due - elapsed_);
            elapsed_ = entry->due;
        }
        if (entry->interval > 0) {
            entry->due += entry->interval;
            entry->age = nextAge_++;
        } else {
            entry->cancelled = true;
        }
        entry->task();
        runPosted();
    }
    now_ = now_ + (end - elapsed_);
    elapsed_ = end;
}

void SimulatedLoop::jumpClock(double seconds) {
    now_ = now_ + seconds;
}

std::size_t SimulatedLoop::timerCount() const {
    return static_cast<std::size_t>(std::count_if(
        entries_.begin(), entries_.end(), [](const auto& entry) { return !entry->cancelled; }));
}

// ---- SimulatedWorkers

void SimulatedWorkers::run(MainLoop::Task task, Priority /*priority*/) {
    if (held) {
        waiting_.push_back(std::move(task));
    } else {
        loop_.post(std::move(task));
    }
}

void SimulatedWorkers::release() {
    held = false;
    for (auto& task : std::exchange(waiting_, {})) loop_.post(std::move(task));
}

std::vector<MainLoop::Task> SimulatedWorkers::takeHeld() {
    const auto taken = std::exchange(waiting_, {});
    return {taken.begin(), taken.end()};
}

// ---- MemorySettings

std::optional<SettingValue> MemorySettings::value(std::string_view key) const {
    const auto found = values.find(key);
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

void MemorySettings::set(std::string_view key, SettingValue value) {
    writes.emplace_back(key);
    values.insert_or_assign(std::string(key), std::move(value));
    store();
}

void MemorySettings::remove(std::string_view key) {
    if (const auto found = values.find(key); found != values.end()) values.erase(found);
    store();
}

void MemorySettings::restart() {
    values = stored_;
}

void MemorySettings::store() {
    if (writable) {
        stored_ = values;
    } else {
        ++refusedWrites;
    }
}

std::vector<std::string> MemorySettings::keys() const {
    std::vector<std::string> result;
    for (const auto& [key, value] : values) result.push_back(key);
    return result;
}

// ---- MemoryFiles

std::optional<std::string> MemoryFiles::read(const std::filesystem::path& path) const {
    const auto found = files.find(path);
    return found == files.end() ? std::nullopt : std::optional(found->second);
}

bool MemoryFiles::writeAtomically(const std::filesystem::path& path, std::string_view content) {
    if (!writable || (room && content.size() > *room)) {
        ++refusedWrites;
        return false;
    }
    files[path] = std::string(content);
    return true;
}

bool MemoryFiles::remove(const std::filesystem::path& path) {
    return writable && files.erase(path) > 0;
}

bool MemoryFiles::exists(const std::filesystem::path& path) const {
    return files.contains(path);
}

PutAside MemoryFiles::putAside(const std::filesystem::path& path) {
    const auto found = files.find(path);
    if (found == files.end()) return PutAside::nothingThere;
    if (!writable) return PutAside::failed;
    files[path.string() + ".unreadable"] = std::move(found->second);
    files.erase(found);
    return PutAside::moved;
}

void MemoryFiles::removeDirectory(const std::filesystem::path& path) {
    if (!writable) return;
    const std::string inside = path.string() + "/";
    std::erase_if(files,
                  [&inside](const auto& file) { return file.first.string().starts_with(inside); });
}

// ---- ScriptedHttp

void ScriptedHttp::get(const std::string& url, Completion completion) {
    requests.push_back(url);
    const auto found = answers.find(url);
    Answer answer = found == answers.end() ? Answer{} : found->second;
    if (special) {
        if (auto other = special(url, answer)) answer = std::move(*other);
    }
    if (answer.never) return;
    HttpResult result{answer.body, answer.status};
    if (answer.status == kNotModified) result.body.reset();
    if (!result.body && answer.status != kNotModified) result.status.reset();
    auto complete = [result, completion = std::move(completion)] { completion(result); };
    if (answer.delaySeconds > 0) {
        loop_.after(answer.delaySeconds, std::move(complete));
    } else {
        loop_.post(std::move(complete));
    }
}

// ---- ScriptedConnection

void ScriptedConnection::setStateHandler(std::function<void(TcpState)> handler) {
    handler_ = std::move(handler);
}

void ScriptedConnection::start() {
    started = true;
}

void ScriptedConnection::send(std::string bytes, std::function<void(bool ok)> completion) {
    sent.push_back(std::move(bytes));
    if (latestSend_) loop_.post([earlier = std::move(latestSend_)] { earlier(true); });
    latestSend_ = std::move(completion);
    if (onSend) onSend();
}

void ScriptedConnection::receive(std::size_t minimum, std::size_t maximum,
                                 std::function<void(TcpReceived)> completion) {
    receives_.push_back({minimum, maximum, std::move(completion)});
    serveReceives();
}

void ScriptedConnection::cancel() {
    cancelled = true;
    if (reportsCancel && !ended_) report(TcpState::cancelled);
}

void ScriptedConnection::report(TcpState state) {
    ended_ = ended_ || state == TcpState::failed || state == TcpState::cancelled;
    loop_.post([handler = handler_, state] {
        if (handler) handler(state);
    });
}

void ScriptedConnection::deliver(std::string bytes) {
    incoming_ += bytes;
    serveReceives();
}

void ScriptedConnection::closeByPeer() {
    peerClosed_ = true;
    serveReceives();
}

void ScriptedConnection::failLatestSend() {
    if (!latestSend_) return;
    loop_.post([completion = std::exchange(latestSend_, nullptr)] { completion(false); });
}

void ScriptedConnection::serveReceives() {
    while (!receives_.empty()) {
        const auto& next = receives_.front();
        if (incoming_.size() < next.minimum && !peerClosed_) return;
        TcpReceived received;
        received.data = incoming_.substr(0, next.maximum);
        incoming_.erase(0, received.data.size());
        received.isComplete = peerClosed_ && incoming_.empty();
        loop_.post([completion = next.completion, received] { completion(received); });
        receives_.pop_front();
    }
}

// ---- ScriptedNetwork

std::shared_ptr<TcpConnection> ScriptedNetwork::makeConnection(const std::string& host,
                                                               std::uint16_t port) {
    auto connection = std::make_shared<ScriptedConnection>(loop_, host, port);
    connection->reportsCancel = reportsCancel;
    connection->onSend = [this, sender = connection.get()] { latestSender_ = sender; };
    connections.push_back(connection);
    return connection;
}

void ScriptedNetwork::failLatestSend() {
    if (latestSender_) latestSender_->failLatestSend();
}

void ScriptedLocation::locate(Completion completion) {
    loop_.post([completion = std::move(completion), found = position] { completion(found); });
}

SimulatedMachine::SimulatedMachine(Instant start) : loop(start) {}

}  // namespace veloran
