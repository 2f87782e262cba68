#include "rig_script.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "rig_names.h"
#include "support/vectors.h"

namespace veloran::test {

namespace json = boost::json;

namespace {

std::string text(const json::object& step, std::string_view key) {
    return std::string(step.at(key).as_string());
}

std::optional<double> numberOrAbsent(const json::value& value) {
    return value.is_null() ? std::nullopt : std::optional(number(value));
}

json::string_view modeName(RigProtocolMode mode) {
    return codeName(mode);
}

}  // namespace

RigScript::RigScript(bool reportsCancel)
    : client_(RigctldClient::create(machine_.tcp, machine_.loop)) {
    machine_.tcp.reportsCancel = reportsCancel;
    client_->onModeChange = [this](RigProtocolMode mode) {
        record("mode", modeName(mode), {"mode", modeName(mode)});
    };
    client_->onArmedChange = [this](bool armed) { record("armed", armed, {"armed", armed}); };
    client_->onSatModeLost = [this] {
        entry_["lost"] = entry_["lost"].as_int64() + 1;
        record(nullptr, nullptr, {"lost"});
    };
}

json::object RigScript::play(const json::object& step) {
    expectKnownMembers(step,
                       {"do", "hex", "seconds", "value", "name", "tag", "rest", "doppler", "rate",
                        "hz", "mode", "passband"},
                       "step");
    entry_ = {{"codes", json::array()},  {"mode", json::array()},
              {"armed", json::array()},  {"lost", 0},
              {"status", json::array()}, {"order", json::array()}};
    const auto attemptsBefore = machine_.tcp.connections.size();
    const auto cancelsBefore = cancelCount();
    const auto what = text(step, "do");
    if (!actAsServer(what, step)) act(what, step);
    machine_.loop.runPosted();
    entry_["sent"] = newlySent();
    entry_["attempts"] = machine_.tcp.connections.size() - attemptsBefore;
    entry_["cancels"] = cancelCount() - cancelsBefore;
    entry_["state"] = state();
    return entry_;
}

/// What the server and the network do, and the clock. False for steps of the client.
bool RigScript::actAsServer(std::string_view what, const json::object& step) {
    if (what == "advance") return machine_.loop.advance(number(step.at("seconds"))), true;
    if (what == "sendError") return machine_.tcp.failLatestSend(), true;
    if (machine_.tcp.connections.empty()) return false;
    auto& server = machine_.tcp.newest();
    if (what == "ready") return server.report(TcpState::ready), true;
    if (what == "waiting") return server.report(TcpState::waiting), true;
    if (what == "failed") return server.report(TcpState::failed), true;
    if (what == "cancelled") return server.report(TcpState::cancelled), true;
    if (what == "recv") return server.deliver(fromHex(text(step, "hex"))), true;
    return false;
}

void RigScript::act(std::string_view what, const json::object& step) {
    if (what == "connect") {
        client_->connect("radio.test", 4532, statusObserver());
    } else if (what == "disconnect") {
        disconnect();
    } else if (what == "forceClassic") {
        client_->forceClassic = step.at("value").as_bool();
    } else if (what == "detect") {
        client_->detectCapabilities();
    } else if (what == "satAOS") {
        client_->satAOS(text(step, "name"), codeCompletion(step.at("tag")));
    } else if (what == "satLOS") {
        client_->satLOS(codeCompletion(step.at("tag")));
    } else if (what == "satDL") {
        client_->satDL(number(step.at("rest")), number(step.at("doppler")),
                       numberOrAbsent(step.at("rate")));
    } else if (what == "satUL") {
        client_->satUL(number(step.at("rest")), number(step.at("doppler")),
                       numberOrAbsent(step.at("rate")));
    } else if (what == "setFrequency") {
        client_->setFrequency(number(step.at("hz")));
    } else if (what == "setMode") {
        client_->setMode(text(step, "mode"), step.at("passband").as_int64());
    } else {
        ADD_FAILURE() << "unknown step " << what;
    }
}

/// The dropped connection reports its end when everything else has been done.
void RigScript::disconnect() {
    const auto cancelsBefore = cancelCount();
    auto& connections = machine_.tcp.connections;
    if (!connections.empty()) connections.back()->reportsCancel = false;
    client_->disconnect();
    machine_.loop.runPosted();
    if (cancelCount() > cancelsBefore) connections.back()->report(TcpState::cancelled);
}

RigctldClient::StatusObserver RigScript::statusObserver() {
    return [this](bool connected) { record("status", connected, {"status", connected}); };
}

RigctldClient::CodeCompletion RigScript::codeCompletion(const json::value& tag) {
    if (tag.is_null()) return nullptr;
    return [this, tag](std::int64_t code) {
        record("codes", json::array{tag, code}, {"code", tag, code});
    };
}

void RigScript::record(const char* list, const json::value& entry, json::array inOrder) {
    if (list) entry_[list].as_array().push_back(entry);
    entry_["order"].as_array().emplace_back(std::move(inOrder));
}

json::object RigScript::state() const {
    const auto& armedName = client_->lastArmedName();
    return {{"isConnected", client_->isConnected()},
            {"protocolMode", modeName(client_->protocolMode())},
            {"satModeArmed", client_->satModeArmed()},
            {"lastArmedName", armedName ? json::value(*armedName) : json::value(nullptr)},
            {"ulUnsupported", client_->ulUnsupported()},
            {"pending", client_->pendingResponses()}};
}

json::array RigScript::newlySent() {
    json::array lines;
    const auto& connections = machine_.tcp.connections;
    sentBefore_.resize(connections.size());
    for (std::size_t i = 0; i < connections.size(); ++i) {
        const auto& sent = connections[i]->sent;
        for (auto& done = sentBefore_[i]; done < sent.size(); ++done) {
            lines.emplace_back(sent[done]);
        }
    }
    return lines;
}

std::size_t RigScript::cancelCount() const {
    return static_cast<std::size_t>(std::ranges::count_if(
        machine_.tcp.connections, [](const auto& c) { return c->cancelled; }));
}

}  // namespace veloran::test
