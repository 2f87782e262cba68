#pragma once

#include <boost/json.hpp>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "rig/rigctld_client.h"
#include "support/simulated_machine.h"

namespace veloran::test {

/// Plays the steps of the golden file rig_client.json on a client with a scripted connection, and
/// records what each of them leads to.
class RigScript {
  public:
    /// `reportsCancel`: whether a connection reports `cancelled` when the reconnect timer cancels
    /// it.
    explicit RigScript(bool reportsCancel);

    /// Runs one step until nothing is left to do. The entry has the form of the golden file.
    boost::json::object play(const boost::json::object& step);

  private:
    void act(std::string_view what, const boost::json::object& step);
    bool actAsServer(std::string_view what, const boost::json::object& step);
    RigctldClient::StatusObserver statusObserver();
    RigctldClient::CodeCompletion codeCompletion(const boost::json::value& tag);
    /// Adds an observer's call to `list`, unless that is null, and to the common order.
    void record(const char* list, const boost::json::value& entry, boost::json::array inOrder);
    void disconnect();
    boost::json::object state() const;
    boost::json::array newlySent();
    std::size_t cancelCount() const;

    SimulatedMachine machine_;
    std::shared_ptr<RigctldClient> client_;
    boost::json::object entry_;
    std::vector<std::size_t> sentBefore_;  // per connection
};

}  // namespace veloran::test
