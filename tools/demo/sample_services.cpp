#include "demo/sample_services.h"

#include <boost/json.hpp>

namespace veloran {

std::string serviceRecords(const std::vector<Transmitter>& channels) {
    boost::json::array records;
    for (const auto& channel : channels) {
        const std::string link = channel.direction == "up" ? "uplink" : "downlink";
        const auto low = channel.freq ? channel.freq : channel.freqLow;
        boost::json::object record{{"description", channel.description},
                                   {"alive", true},
                                   {"mode", channel.mode},
                                   {"invert", channel.inverting}};
        if (low) record[link + "_low"] = *low;
        if (!channel.freq && channel.freqHigh) record[link + "_high"] = *channel.freqHigh;
        records.push_back(std::move(record));
    }
    return boost::json::serialize(records);
}

std::string threeLineText(const std::vector<TLEData>& sets) {
    std::string text;
    for (const auto& set : sets) text += set.name + "\n" + set.line1 + "\n" + set.line2 + "\n";
    return text;
}

}  // namespace veloran
