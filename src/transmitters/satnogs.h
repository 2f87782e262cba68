#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/machine.h"
#include "transmitters/transmitter.h"

namespace veloran {

/// One record of the transmitter service.
struct SatNOGSTransmitter {
    std::string description;
    bool alive = false;
    std::optional<double> downlink_low, downlink_high, uplink_low, uplink_high;  // Hz
    std::optional<std::string> mode;
    std::optional<bool> invert;
    std::optional<std::int64_t> norad_cat_id;
};

/// Absent when the answer is not a list of records, down to a single bad one.
std::optional<std::vector<SatNOGSTransmitter>> decodeServiceAnswer(std::string_view json);
/// One or two channels, downlink first; none when the record has no low edge.
std::vector<Transmitter> convertTransmitterEntry(const SatNOGSTransmitter& entry);
/// The channels of the live records of one answer, in order; empty for what does not decode.
std::vector<Transmitter> channelsOfAnswer(std::string_view json);
/// The same, by catalogue number.
TransmitterMap channelsByNumber(std::string_view json);

/// What the service said of one satellite.
struct ServiceAnswer {
    std::vector<Transmitter> channels;
    bool hasFailed =
        false;  ///< no answer, or a status of 400 and above; there may be channels then
};

/// Talks to the transmitter service. `serviceBase` is scheme and host without a slash at its end.
class SatNOGSFetch {
  public:
    using Completion = std::function<void(std::vector<Transmitter>)>;

    SatNOGSFetch(const Machine& machine, std::string serviceBase);

    std::string baseURL() const;
    /// Empty when nothing could be had. Decoding runs on a worker.
    void fetchTransmitters(std::int64_t noradId, Completion completion) const;
    void ask(std::int64_t noradId, std::function<void(ServiceAnswer)> completion) const;
    void fetchAllActive(std::function<void(TransmitterMap)> completion) const;

  private:
    Machine machine_;
    std::string serviceBase_;
};

}  // namespace veloran
