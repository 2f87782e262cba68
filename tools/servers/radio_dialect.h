#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veloran {

/// What a simulated radio says to the capability probe.
enum class CapsAnswer {
    satProtoV1,      ///< it speaks SAT_PROTO v1
    nothing,         ///< no byte: the client has to give up by itself
    invalidParam,    ///< "RPRT -1"
    notImplemented,  ///< "RPRT -4"
    positiveCode,    ///< "RPRT 1"
    plainText        ///< words, and no line that ends an answer
};

/// One channel as a SAT_PROTO client last set it.
struct SatChannel {
    double restHz = 0;
    double dopplerHz = 0;
    std::optional<double> rateHzS;

    double tunedHz() const { return restHz + dopplerHz; }
};

/// The radio behind a rigctld server, without its sockets: lines go in, replies come out. Clients
/// are told apart by numbers of the caller's choice.
class RadioDialect {
  public:
    using ClientId = std::uint64_t;

    static constexpr std::int64_t kAccepted = 0;
    static constexpr std::int64_t kInvalid = -1;
    static constexpr std::int64_t kUnavailable = -9;
    static constexpr std::int64_t kNotArmed = -11;

    explicit RadioDialect(CapsAnswer capsAnswer = CapsAnswer::satProtoV1)
        : capsAnswer_(capsAnswer) {}

    /// The bytes to send back for one line without its line end; may be empty.
    std::string reply(ClientId client, std::string_view line);
    /// A client that goes takes its arming along.
    void clientGone(ClientId client);

    /// Another client takes the radio: updates get -11 until someone arms it anew.
    void steal() { armedBy_.reset(); }
    /// Whether uplink updates get -9.
    void refuseUplink(bool refuse) { refuseUplink_ = refuse; }

    bool isArmed() const { return armedBy_.has_value(); }
    const std::string& armedName() const { return armedName_; }  ///< of the latest arming
    std::int64_t frequency() const { return frequency_; }        ///< Hz, set by "F"
    const std::string& mode() const { return mode_; }
    std::int64_t passband() const { return passband_; }
    const std::optional<SatChannel>& downlink() const { return downlink_; }
    const std::optional<SatChannel>& uplink() const { return uplink_; }

  private:
    std::string capabilities() const;
    std::string satellite(ClientId client, std::string_view command, std::string_view arguments);
    std::string update(ClientId client, std::optional<SatChannel>& channel,
                       std::string_view arguments);

    CapsAnswer capsAnswer_;
    bool refuseUplink_ = false;
    std::optional<ClientId> armedBy_;
    std::string armedName_;
    std::int64_t frequency_ = 145000000;
    std::string mode_ = "FM";
    std::int64_t passband_ = 15000;
    std::optional<SatChannel> downlink_;
    std::optional<SatChannel> uplink_;
};

}  // namespace veloran
